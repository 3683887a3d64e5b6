// Without resources any address that belongs to this module alone tells it from others.
#include "dbxEntryPoint.h"

extern "C" __attribute__((visibility("hidden"))) void* __dso_handle;

HINSTANCE _hdllInstance = reinterpret_cast<HINSTANCE>(&__dso_handle);
