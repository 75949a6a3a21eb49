#!/bin/sh
# Packages the build as a release, unpacks the package into a scratch Sorrel
# installation root and runs the tour with SORREL_ROOT pointing there and the
# installed Beamwright.so loaded into the stand-in host: the shaders must be
# found, every mode must place and no reference may leak. On the way it checks
# what the package holds: its sums, the installation notes, a stripped library
# still within the runtime baseline, and a debug file that matches it.
#
# Usage: installed_package.sh CPACK_CONFIG VIEWER SCENE BASELINE_CHECK BASELINE
set -eu
cpack_config=$1 viewer=$2 scene=$3 baseline_check=$4 baseline=$5

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "installed package: $*" >&2
    exit 1
}

cpack --config "$cpack_config" -B "$work/out" >"$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log" >&2; fail "cpack failed"; }
set -- "$work"/out/Beamwright-*-linux-*.tar.gz
[ $# -eq 1 ] && [ -f "$1" ] || fail "expected one package in $work/out, found: $*"
package=$1
debug=${package%.tar.gz}.debug
[ -f "$debug" ] || fail "no debug file $(basename "$debug") beside the package"

root=$work/root
mkdir "$root"
tar -xzf "$package" -C "$root"
(cd "$root" && sha256sum --check --quiet SHA256SUMS) || fail "SHA256SUMS does not match the files"
grep -q "^## Using it in a real installation" "$root/INSTALL.txt" || fail "INSTALL.txt lacks the installation section"

plugin=$root/plugins/Beamwright.so
! readelf -S -W "$plugin" | grep -q '\.debug_info' || fail "the installed library still holds its debug information"
link=$(readelf --string-dump=.gnu_debuglink "$plugin" | sed -n 's/^ *\[ *0\] *//p')
[ "$link" = "$(basename "$debug")" ] || fail "the debuglink names '$link', not $(basename "$debug")"
build_id() { readelf -n "$1" | sed -n 's/^ *Build ID: *//p'; }
[ -n "$(build_id "$plugin")" ] && [ "$(build_id "$plugin")" = "$(build_id "$debug")" ] ||
    fail "the debug file is not the installed library's (build ids differ)"
cmake "-DPLUGIN=$plugin" "-DBASELINE=$baseline" -P "$baseline_check"

SORREL_ROOT=$root "$viewer" "$scene" --plugin "$plugin" --tour "$work/tour" >"$work/tour.log" ||
    { cat "$work/tour.log"; fail "the tour failed with the installed package"; }
tail -n 1 "$work/tour.log"
