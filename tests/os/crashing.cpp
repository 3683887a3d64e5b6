// Breaks in the way its argument names; for the test that looks at its exit code.
#include "os/crashes.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

int main(int, char** arguments) {
    qx::os::endOnCrash();
    volatile int* volatile nowhere = nullptr;
    if (std::strcmp(arguments[1], "memory") == 0) *nowhere = 1;
    if (std::strcmp(arguments[1], "exception") == 0) throw std::runtime_error{"nobody catches this"};
    if (std::strcmp(arguments[1], "abort") == 0) std::abort();
    return 0;
}
