// Devices, attributes, open files and long names, as Windows has them.
#include "SavedFile.h"

#include <windows.h>

using namespace qx::os;
namespace fs = std::filesystem;

namespace {

/// Another program at work on a file.
class OpenedElsewhere {
public:
    explicit OpenedElsewhere(const fs::path& path)
        : handle_{CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                              nullptr)} {}
    ~OpenedElsewhere() { CloseHandle(handle_); }
    OpenedElsewhere(const OpenedElsewhere&) = delete;
    OpenedElsewhere& operator=(const OpenedElsewhere&) = delete;

private:
    HANDLE handle_;
};

TEST(WindowsFiles, AreRefusedWithOneSentence) {
    TemporaryFolder folder;
    put(folder / "taken", "old");
    put(folder / "locked", "old");
    SetFileAttributesW(fs::path{folder / "locked"}.c_str(), FILE_ATTRIBUTE_READONLY);
    const OpenedElsewhere taken{folder / "taken"};
    EXPECT_EQ(readFile("NUL").error(), "Can't read NUL: it is a device.");
    EXPECT_EQ(readFile(folder / "taken").error(),
              "Can't read " + (folder / "taken") + ": another program has it open.");
    EXPECT_EQ(save("NUL", "x").error(), "Can't write NUL: it is a device.");
    EXPECT_NE(save(folder / "locked", "x").error().find(": it is write-protected."), std::string::npos);
    EXPECT_FALSE(save(folder / "taken", "x"));
    EXPECT_EQ(folder.count(), 2u) << "nothing may be left behind";
    SetFileAttributesW(fs::path{folder / "locked"}.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(WindowsFiles, StayHidden) {
    TemporaryFolder folder;
    put(folder / "out", "old");
    const fs::path path{folder / "out"};
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    ASSERT_TRUE(save(folder / "out", "new", Backup::keep));
    EXPECT_TRUE(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(contentOf(folder / "out") + contentOf(folder / "out.bak"), "newold");
}

/// Most of the standard library stops at 260 characters.
std::wstring withoutLimit(const std::string& path) {
    return LR"(\\?\)" + fs::path{path}.make_preferred().wstring();
}

TEST(WindowsFiles, MayHaveLongAndForeignNames) {
    TemporaryFolder folder;
    const std::string longName = folder / std::string(240, 'n');
    for (const std::string& name : {longName, folder / "图形 \U0001F4D0.dxf"}) {
        ASSERT_TRUE(save(name, "one"));
        ASSERT_TRUE(save(name, "two", Backup::keep));
        const auto bytes = readFile(name);
        ASSERT_TRUE(bytes) << bytes.error();
        EXPECT_EQ(bytes->view(), "two");
        EXPECT_TRUE(isFile(name + ".bak"));
    }
    EXPECT_TRUE(DeleteFileW(withoutLimit(longName).c_str()));
    EXPECT_TRUE(DeleteFileW(withoutLimit(longName + ".bak").c_str()));
}

} // namespace
