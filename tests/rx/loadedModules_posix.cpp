#include "rx/loadedModules.h"

#include <dlfcn.h>

bool isInProcess(const std::string& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle) dlclose(handle);
    return handle != nullptr;
}

void unloadOnce(const std::string& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    dlclose(handle); // what the line before has added
    dlclose(handle);
}
