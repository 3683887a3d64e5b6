// The resources of the module's file, read without running it.
#pragma once

#include <string>
#include <vector>
#include <windows.h>

/// By Windows' own numbers.
enum class ResourceType { iconImage = 3, dialog = 5, iconGroup = 14 };

class ModuleResources {
public:
    ModuleResources();
    ~ModuleResources();
    ModuleResources(const ModuleResources&) = delete;
    ModuleResources& operator=(const ModuleResources&) = delete;

    HMODULE handle() const { return module_; }
    /// Empty when there is none.
    std::string bytes(ResourceType type, int id) const;
    /// In ascending order.
    std::vector<int> ids(ResourceType type) const;

private:
    HMODULE module_;
};
