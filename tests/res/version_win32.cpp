// The version that the module's file shows.
#include "os/encoding.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <vector>
#include <windows.h>

namespace {

class VersionBlock {
public:
    VersionBlock() {
        const std::wstring path = std::filesystem::path{QX_BIN_DIR "/QX_GroupAlignment.arx"}.wstring();
        DWORD ignored = 0;
        bytes_.resize(GetFileVersionInfoSizeW(path.c_str(), &ignored));
        EXPECT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(bytes_.size()), bytes_.data()));
    }
    /// Null when it isn't there.
    template <typename Value> const Value* find(const wchar_t* name) const {
        void* value = nullptr;
        UINT length = 0;
        return VerQueryValueW(bytes_.data(), name, &value, &length) ? static_cast<Value*>(value) : nullptr;
    }
    std::string text(const std::wstring& name) const {
        const auto* value = find<wchar_t>((L"\\StringFileInfo\\080404b0\\" + name).c_str());
        return value ? qx::os::toUtf8(value) : "missing";
    }

private:
    std::vector<char> bytes_;
};

std::string numberText(DWORD high, DWORD low) {
    return std::to_string(HIWORD(high)) + "." + std::to_string(LOWORD(high)) + "." +
           std::to_string(HIWORD(low)) + "." + std::to_string(LOWORD(low));
}

TEST(ModuleVersion, IsTheProducts) {
    const VersionBlock version;
    const auto* fixed = version.find<VS_FIXEDFILEINFO>(L"\\");
    ASSERT_NE(fixed, nullptr);
    EXPECT_EQ(numberText(fixed->dwFileVersionMS, fixed->dwFileVersionLS), QX_VERSION ".0");
    EXPECT_EQ(numberText(fixed->dwProductVersionMS, fixed->dwProductVersionLS), QX_VERSION ".0");
    EXPECT_EQ(fixed->dwFileType, DWORD{VFT_DLL});
    EXPECT_EQ(version.text(L"FileVersion"), QX_VERSION);
    EXPECT_EQ(version.text(L"ProductVersion"), QX_VERSION);
    EXPECT_EQ(version.text(L"ProductName"), "QX_GroupAlignment");
    EXPECT_EQ(version.text(L"OriginalFilename"), "QX_GroupAlignment.arx");
    EXPECT_EQ(version.text(L"FileDescription"), "图形对齐：对象对齐与位置对齐");
    const auto* language = version.find<WORD>(L"\\VarFileInfo\\Translation");
    ASSERT_NE(language, nullptr);
    EXPECT_EQ(language[0], 0x0804);
    EXPECT_EQ(language[1], 0x04b0);
}

} // namespace
