#include "SharedObject.h"

#include <dlfcn.h>

namespace qx::os {

Result<SharedObject> SharedObject::load(const std::string& path) {
    // Without a slash the loader would search its own folders.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    if (void* handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) return SharedObject{handle};
    const char* reason = ::dlerror();
    return Result<SharedObject>::failure("Can't load " + path + ": " + (reason ? reason : "unknown reason") +
                                         ".");
}

SharedObject::~SharedObject() {
    if (handle_) ::dlclose(handle_);
}

void* SharedObject::symbol(const char* name) const { return handle_ ? ::dlsym(handle_, name) : nullptr; }

} // namespace qx::os
