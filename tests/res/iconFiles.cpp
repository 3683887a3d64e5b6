// The icon files that are kept: up to date, and readable by the rules of the format.
#include "moduleIcons.h"
#include "os/TemporaryFolder.h"

#include <cstring>
#include <set>

namespace fs = std::filesystem;

namespace {

const fs::path folder = QX_SOURCE_DIR "/res/icons";

std::string kept(const std::string& name) { return contentOf((folder / (name + ".ico")).string()); }

std::uint32_t number(const std::string& bytes, std::size_t at, std::size_t length) {
    std::uint32_t value = 0;
    if (at + length <= bytes.size()) std::memcpy(&value, bytes.data() + at, length);
    return value;
}

/// "16 32-bit" when the image lies inside the file, and its header and mask say the same as its entry.
std::string imageText(const std::string& file, std::size_t entry) {
    const std::uint32_t size = number(file, entry, 1), begin = number(file, entry + 12, 4);
    if (size > 32 || begin + number(file, entry + 8, 4) > file.size()) return "outside";
    if (number(file, entry + 8, 4) != 40 + size * size * 4 + size * 4) return "wrong length";
    if (number(file, begin + 4, 4) != size || number(file, begin + 8, 4) != 2 * size) return "wrong header";
    for (std::uint32_t pixel = 0; pixel < size * size; ++pixel) {
        const std::uint32_t x = pixel % size, row = pixel / size;
        const bool isThrough = number(file, begin + 40 + 4 * pixel + 3, 1) < 128;
        const std::uint32_t mask = number(file, begin + 40 + size * size * 4 + row * 4 + x / 8, 1);
        if ((mask >> (7 - x % 8) & 1) != isThrough) return "mask and alpha differ";
    }
    return std::to_string(size) + " " + std::to_string(number(file, begin + 14, 2)) + "-bit";
}

TEST(IconFiles, AreWhatTheGeneratorWrites) {
    std::set<std::string> expected, found;
    for (const qx::icons::ModuleIcon& icon : qx::icons::moduleIcons()) {
        expected.insert(icon.name);
        EXPECT_TRUE(kept(icon.name) == iconFile(icon)) << icon.name << ": write it anew with generateIcons";
    }
    for (const auto& entry : fs::directory_iterator{folder})
        if (entry.path().extension() == ".ico") found.insert(entry.path().stem().string());
    EXPECT_EQ(found, expected);
}

TEST(IconFiles, HoldFourSizesTheSmallestFirst) {
    for (const qx::icons::ModuleIcon& icon : qx::icons::moduleIcons()) {
        const std::string file = kept(icon.name);
        std::string images;
        for (std::size_t i = 0; i < number(file, 4, 2); ++i) images += imageText(file, 6 + 16 * i) + ", ";
        EXPECT_EQ(number(file, 0, 4), 0x10000u) << icon.name << " is no icon file";
        EXPECT_EQ(images, "16 32-bit, 20 32-bit, 24 32-bit, 32 32-bit, ") << icon.name;
    }
}

} // namespace
