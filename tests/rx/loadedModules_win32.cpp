#include "rx/loadedModules.h"

#include <filesystem>
#include <windows.h>

static HMODULE moduleAt(const std::string& path) {
    return GetModuleHandleW(std::filesystem::path{path}.filename().c_str());
}

bool isInProcess(const std::string& path) { return moduleAt(path) != nullptr; }

void unloadOnce(const std::string& path) { FreeLibrary(moduleAt(path)); }
