// Definitions the library keeps for itself so that it loads with the oldest C
// and C++ runtimes a studio runs (the baseline in CMakeLists.txt and the
// README's "Supported platforms"). Newer compilers and C library headers make
// code ask the runtime for a symbol first shipped after that baseline; each
// definition here answers for the runtime, hidden, so the dynamic loader never
// looks for it. Nothing here crosses the plugin's boundary, which is C.
//
// The check plugin_binary_stays_on_the_runtime_baseline fails when the library
// needs anything above the baseline; once the baseline reaches the version
// named beside a definition, that definition can go.

#include <sys/single_threaded.h>

#include <new>

// Read by the C++ headers' reference counts (shared_ptr, locales) to skip
// atomic operations while the process has a single thread; first in the C
// library of 2.32. Zero says "maybe several threads", so every count stays
// atomic: always correct, whatever the host starts. Can go at GLIBC_2.32.
extern "C" {
__attribute__((visibility("hidden"))) char __libc_single_threaded = 0;
}

namespace std {

// Called by array new of GCC 11 and later when the element count is too large;
// first in the C++ runtime of GCC 11. Throws what that runtime throws, a type
// every baseline runtime has. Can go at GLIBCXX_3.4.29.
__attribute__((visibility("hidden"))) void __throw_bad_array_new_length() {
    throw bad_array_new_length();
}

}  // namespace std
