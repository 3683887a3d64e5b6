// The icons as the module's file has them.
#include "ModuleResources_win32.h"
#include "os/TemporaryFolder.h"

#include <cstring>

namespace {

struct IconCase {
    int id;
    const char* name;
};
const IconCase icons[] = {
    {55, "groupAlignment"},
    {1203, "centreVertically"},
    {1204, "alignBottom"},
    {1205, "alignTop"},
    {1206, "distributeHorizontally"},
    {1207, "alignAtPoint"},
    {1208, "centreHorizontally"},
    {1209, "alignRight"},
    {1210, "alignLeft"},
    {1211, "alignToLine"},
    {1212, "alignCentre"},
    {1213, "distributeVertically"},
    {1215, "cancel"},
};

/// Put together again: entries name images by number in a module, by place in a file.
std::string iconFile(const ModuleResources& module, int id) {
    constexpr std::size_t headerSize = 6, storedEntry = 14, fileEntry = 16;
    const std::string group = module.bytes(ResourceType::iconGroup, id);
    std::string file = group.substr(0, headerSize), images;
    const std::size_t count = (group.size() - headerSize) / storedEntry;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string entry = group.substr(headerSize + i * storedEntry, storedEntry);
        const auto place = static_cast<std::uint32_t>(headerSize + count * fileEntry + images.size());
        WORD number = 0;
        std::memcpy(&number, entry.data() + 12, sizeof number);
        file += entry.substr(0, 12) + std::string{reinterpret_cast<const char*>(&place), sizeof place};
        images += module.bytes(ResourceType::iconImage, number);
    }
    return file + images;
}

/// 0 when it can't be loaded. Size 0 asks for the icon's own.
int loadedWidth(const ModuleResources& module, int id, int size) {
    const auto icon = static_cast<HICON>(
        LoadImageW(module.handle(), MAKEINTRESOURCEW(id), IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
    ICONINFO parts{};
    BITMAP colours{};
    if (!icon || !GetIconInfo(icon, &parts)) return 0;
    GetObjectW(parts.hbmColor, sizeof colours, &colours);
    for (const HBITMAP part : {parts.hbmColor, parts.hbmMask}) DeleteObject(part);
    DestroyIcon(icon);
    return static_cast<int>(colours.bmWidth);
}

TEST(ModuleResourceIcons, AreTheFilesUnderTheirNumbers) {
    const ModuleResources module;
    std::vector<int> ids;
    for (const auto& [id, name] : icons) {
        ids.push_back(id);
        EXPECT_TRUE(iconFile(module, id) ==
                    contentOf(QX_SOURCE_DIR "/res/icons/" + std::string{name} + ".ico"))
            << id << " is not " << name;
    }
    EXPECT_EQ(module.ids(ResourceType::iconGroup), ids);
}

TEST(ModuleResourceIcons, LoadAtEachSizeAndByDefaultAtTheSmallest) {
    const ModuleResources module;
    for (const auto& [id, name] : icons) {
        for (const int size : {16, 20, 24, 32}) EXPECT_EQ(loadedWidth(module, id, size), size) << name;
        EXPECT_EQ(loadedWidth(module, id, 0), 16) << name;
    }
}

} // namespace
