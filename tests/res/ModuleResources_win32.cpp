#include "ModuleResources_win32.h"

#include <filesystem>
#include <gtest/gtest.h>

ModuleResources::ModuleResources()
    : module_{
          LoadLibraryExW(std::filesystem::path{QX_BIN_DIR "/QX_GroupAlignment.arx"}.make_preferred().c_str(),
                         nullptr, LOAD_LIBRARY_AS_DATAFILE)} {
    EXPECT_NE(module_, nullptr) << "error " << GetLastError();
}

ModuleResources::~ModuleResources() { FreeLibrary(module_); }

std::string ModuleResources::bytes(ResourceType type, int id) const {
    const HRSRC found = FindResourceW(module_, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(type));
    if (!found) return {};
    const auto* data = static_cast<const char*>(LockResource(LoadResource(module_, found)));
    return {data, SizeofResource(module_, found)};
}

static BOOL CALLBACK addId(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR ids) {
    reinterpret_cast<std::vector<int>*>(ids)->push_back(IS_INTRESOURCE(name) ? LOWORD(name) : -1);
    return TRUE;
}

std::vector<int> ModuleResources::ids(ResourceType type) const {
    std::vector<int> all;
    EnumResourceNamesW(module_, MAKEINTRESOURCEW(type), addId, reinterpret_cast<LONG_PTR>(&all));
    return all;
}
