# The two commands people run: `make demo` and `make test`; `make viewer`
# opens a scene (SCENE=..., the studio by default) in a window under X.
.PHONY: all deps build demo viewer test test-asan package check-format bench bench-instructions fuzz fuzz-build soak clean

JOBS ?= $(shell nproc)
SCENE ?= examples/studio.json

all: build

deps:
	@scripts/install-deps

build: deps
	@[ -f build/build.ninja ] || echo "First build: the plugin, the host, the viewer, tests and benchmarks take a few minutes."
	@cmake --preset default >/dev/null
	@cmake --build --preset default -j $(JOBS)

demo: build
	@./build/apps/beamwright-viewer examples/studio.json --tour build/demo

viewer: build
	@./build/apps/beamwright-viewer $(SCENE) --window

test: build
	@ctest --preset default -j $(JOBS)

test-asan: deps
	@cmake --preset asan >/dev/null
	@cmake --build --preset asan -j $(JOBS)
	@ctest --preset asan -j $(JOBS)

# The release: build/Beamwright-<version>-linux-x86_64.tar.gz (the installation
# with the .so stripped, INSTALL.txt and SHA256SUMS) and beside it the .so's
# debug information, build/Beamwright-<version>-linux-x86_64.debug.
package: deps
	@cmake --preset default >/dev/null
	@cmake --build --preset default --target Beamwright -j $(JOBS)
	@cpack --config build/CPackConfig.cmake -B build

# Every C++ file as clang-format (config at the root) would write it.
check-format: deps
	@git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run -Werror

# Each benchmark prints its figures beside a floor measured in the same run.
bench: build
	@for b in build/bench/*_bench; do echo "== $$b"; $$b --benchmark_min_time=0.2; done

# The plugin's own instructions per light and per event beside each floor,
# counted by callgrind, each figure in a process of its own; the host's share is
# counted apart (bench/instruction_counts.cpp). PATHS="handles ingest rebuild"
# picks some of them; PATHS=million counts ingest and rebuild at 1,000,000.
bench-instructions: build
	@./build/bench/instruction_counts $(PATHS)

# Fuzzing and the soak (fuzz/): clang's libFuzzer under AddressSanitizer and
# UndefinedBehaviorSanitizer, in build-fuzz/. `make fuzz` runs every target
# for FUZZ_SECONDS each; `make soak` sends SOAK_EVENTS location events.
FUZZ_SECONDS ?= 60
SOAK_EVENTS ?= 1000000

fuzz-build: deps
	@scripts/install-deps fuzz
	@cmake --preset fuzz >/dev/null
	@cmake --build --preset fuzz -j $(JOBS)

fuzz: fuzz-build
	@fuzz/run $(FUZZ_SECONDS)

soak: fuzz-build
	@SORREL_ROOT=$(CURDIR)/resources LP_NUM_THREADS=0 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/fuzz/lsan.supp:print_suppressions=0 \
	  build-fuzz/fuzz/soak $(SOAK_EVENTS)

clean:
	@rm -rf build build-asan build-fuzz
