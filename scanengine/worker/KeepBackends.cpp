// For builds with AddressSanitizer alone: backends stay loaded, so that a leak can be told by the
// library it is in, and the leaks of SANE's own libraries are not reported.

#include <dlfcn.h>

extern "C" {

/// In place of the system's. Memory that a backend keeps for its next use counts as leaked once the
/// backend is unloaded, and its place in the backend can't be told any more.
int dlclose(void *)
{
    return 0;
}

// Looked up by the sanitizer under this name.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
const char *__lsan_default_suppressions();

const char *__lsan_default_suppressions()
{
    // SANE's test backend leaves 64 KB buffers of pages that were scanned from it.
    return "leak:libsane-test.so\n";
}

} // extern "C"
