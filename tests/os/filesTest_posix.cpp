// Devices, links, permissions and limits, as this family of systems has them.
#include "SavedFile.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace qx::os;
namespace fs = std::filesystem;

namespace {

TEST(ReadFile, RefusesDevicesAndWhatItMayNotRead) {
    TemporaryFolder folder;
    put(folder / "file", "x");
    EXPECT_EQ(readFile("/dev/zero").error(), "Can't read /dev/zero: it is a device.");
    chmod((folder / "file").c_str(), 0);
    if (geteuid() == 0) {
        std::puts("not tried: the unreadable file (root reads everything)");
        return;
    }
    EXPECT_NE(readFile(folder / "file").error().find("permission denied"), std::string::npos);
}

TEST(AtomicFile, KeepsPermissionsAndFollowsLinks) {
    TemporaryFolder folder;
    fs::create_directory(folder / "sub");
    put(folder / "sub/real", "old");
    chmod((folder / "sub/real").c_str(), 0627);
    fs::create_symlink("sub/real", folder / "link");
    fs::create_symlink("link", folder / "linkToLink");
    fs::create_symlink("sub/new", folder / "dangling");

    ASSERT_TRUE(save(folder / "linkToLink", "new"));
    EXPECT_EQ(contentOf(folder / "sub/real"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "linkToLink"));
    struct stat status {};
    ASSERT_EQ(stat((folder / "sub/real").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0627u);

    ASSERT_TRUE(save(folder / "dangling", "made"));
    EXPECT_EQ(contentOf(folder / "sub/new"), "made");
}

TEST(AtomicFile, RefusesDevicesCirclesAndProtectedFiles) {
    TemporaryFolder folder;
    fs::create_directory(folder / "sub");
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_EQ(save("/dev/null", "x").error(), "Can't write /dev/null: it is a device.");
    EXPECT_NE(save(folder / "a", "x").error().find(": its symbolic links lead in a circle."),
              std::string::npos);

    put(folder / "sub/locked", "old");
    chmod((folder / "sub/locked").c_str(), 0444);
    chmod((folder / "sub").c_str(), 0555);
    if (geteuid() == 0) {
        std::puts("not tried: write protection (root writes everywhere)");
        return;
    }
    EXPECT_NE(save(folder / "sub/locked", "x").error().find("write-protected"), std::string::npos);
    EXPECT_NE(save(folder / "sub/new", "x").error().find("permission denied"), std::string::npos);
    chmod((folder / "sub").c_str(), 0755);
}

/// Within its life no file may grow beyond `bytes`: as good as a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &old_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_{};
};

TEST(AtomicFile, FullDiskKeepsTheOldFile) {
    for (const std::size_t span : {std::size_t{1000}, std::size_t{700'000}}) {
        TemporaryFolder folder;
        put(folder / "out", "old");
        {
            FileSizeLimit limit{300'000};
            auto file = AtomicFile::create(folder / "out");
            ASSERT_TRUE(file);
            bool ok = true;
            for (std::size_t sent = 0; sent < 700'000; sent += span) ok = file->write(patternOf(span));
            EXPECT_FALSE(ok) << "a long job must learn of it before the end";
            EXPECT_NE(file->commit(Backup::keep).error().find("larger than allowed"), std::string::npos);
        }
        EXPECT_EQ(contentOf(folder / "out"), "old");
        EXPECT_EQ(folder.count(), 1u);
    }
}

} // namespace
