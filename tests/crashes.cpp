// Part of every test program: a crash is never taken for a success.
#include "os/crashes.h"

[[maybe_unused]] static const bool isGuarded = (qx::os::endOnCrash(), true);
