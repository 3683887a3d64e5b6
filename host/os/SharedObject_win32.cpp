#include "SharedObject.h"
#include "reasonFor_win32.h"
#include "widePath_win32.h"

#include <windows.h>

namespace qx::os {

Result<SharedObject> SharedObject::load(const std::string& path) {
    // Without a folder the loader would search its own; and it must not ask the person about a broken file.
    const std::string file = path.find_first_of("/\\:") == std::string::npos ? ".\\" + path : path;
    DWORD oldMode = 0;
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &oldMode);
    const HMODULE module = ::LoadLibraryExW(widePath(file).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    const DWORD error = ::GetLastError();
    ::SetThreadErrorMode(oldMode, nullptr);
    if (module) return SharedObject{module};
    return Result<SharedObject>::failure("Can't load " + path + ": " + reasonFor(error) + ".");
}

SharedObject::~SharedObject() {
    if (handle_) ::FreeLibrary(static_cast<HMODULE>(handle_));
}

void* SharedObject::symbol(const char* name) const {
    if (!handle_) return nullptr;
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

} // namespace qx::os
