#include "os/files.h"
#include "TemporaryFolder.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace qx::os;
namespace fs = std::filesystem;

namespace {

std::string patternOf(std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>(i * 31 + (i >> 12));
    return text;
}

TEST(ReadFile, GivesEveryByteAndOneSpare) {
    TemporaryFolder folder;
    for (const std::size_t size : {0u, 1u, 65536u, (4u << 20) - 1, 4u << 20, (9u << 20) + 5}) {
        SCOPED_TRACE(size);
        put(folder / "in", patternOf(size));
        auto bytes = readFile(folder / "in");
        ASSERT_TRUE(bytes) << bytes.error();
        EXPECT_TRUE(bytes->view() == patternOf(size));
        EXPECT_EQ(bytes->data()[size], 0);
    }
}

TEST(ReadFile, RefusesWithOneSentence) {
    TemporaryFolder folder;
    put(folder / "file", "x");
    struct Case {
        const char* name;
        std::string path;
        const char* reason;
    };
    const Case cases[] = {
        {"missing", folder / "no", "it does not exist."},
        {"a folder", folder.path().string(), "it is a folder."},
        {"a device", "/dev/zero", "it is a device."},
        {"below a file", folder / "file/x", "a part of its path is not a folder."},
        {"no name", "", "it does not exist."},
    };
    for (const Case& c : cases) {
        const auto result = readFile(c.path);
        ASSERT_FALSE(result) << c.name;
        EXPECT_EQ(result.error(), "Can't read " + c.path + ": " + c.reason) << c.name;
    }
    chmod((folder / "file").c_str(), 0);
    if (geteuid() == 0) {
        std::puts("not tried: the unreadable file (root reads everything)");
        return;
    }
    EXPECT_NE(readFile(folder / "file").error().find("permission denied"), std::string::npos);
}

qx::Outcome save(const std::string& target, const std::string& content, Backup backup = Backup::none) {
    auto file = AtomicFile::create(target);
    if (!file) return qx::Outcome::failure(file.error());
    file->write(content);
    return file->commit(backup);
}

TEST(AtomicFile, ManySpansArriveInOrder) {
    TemporaryFolder folder;
    auto file = AtomicFile::create(folder / "out");
    ASSERT_TRUE(file) << file.error();
    std::string expected;
    for (std::size_t i = 0; i < 400; ++i) {
        // Small spans fill the buffer, every tenth is larger than it.
        const std::string span = patternOf(i % 10 == 9 ? 200'000 + i : i * 7);
        EXPECT_TRUE(file->write(span));
        expected += span;
    }
    EXPECT_FALSE(fs::exists(folder / "out")) << "nothing may be seen before the commit";
    ASSERT_TRUE(file->commit());
    EXPECT_TRUE(contentOf(folder / "out") == expected);
    EXPECT_EQ(folder.count(), 1u);
}

TEST(AtomicFile, WithoutCommitNothingHappened) {
    TemporaryFolder folder;
    put(folder / "out", "old");
    {
        auto file = AtomicFile::create(folder / "out");
        ASSERT_TRUE(file);
        file->write(patternOf(500'000));
        auto moved = std::move(*file);
        EXPECT_EQ(folder.count(), 2u);
    }
    EXPECT_EQ(contentOf(folder / "out"), "old");
    EXPECT_EQ(folder.count(), 1u);
}

TEST(AtomicFile, KeepsTheOldFileAsBackup) {
    TemporaryFolder folder;
    ASSERT_TRUE(save(folder / "out", "one", Backup::keep));
    EXPECT_EQ(folder.count(), 1u) << "there was nothing to keep";
    ASSERT_TRUE(save(folder / "out", "two", Backup::keep));
    ASSERT_TRUE(save(folder / "out", "three", Backup::keep));
    EXPECT_EQ(contentOf(folder / "out"), "three");
    EXPECT_EQ(contentOf(folder / "out.bak"), "two");
    EXPECT_EQ(folder.count(), 2u);
    // A backup that is the same file, as a save that was killed half-way leaves it.
    fs::remove(folder / "out.bak");
    fs::create_hard_link(folder / "out", folder / "out.bak");
    ASSERT_TRUE(save(folder / "out", "four", Backup::keep));
    EXPECT_EQ(contentOf(folder / "out") + contentOf(folder / "out.bak"), "fourthree");
    EXPECT_EQ(folder.count(), 2u);
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

TEST(AtomicFile, RefusesWithOneSentence) {
    TemporaryFolder folder;
    fs::create_directory(folder / "sub");
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    struct Case {
        const char* name;
        std::string target;
        const char* reason;
    };
    const Case cases[] = {
        {"a folder", folder / "sub", "it is a folder."},
        {"a device", "/dev/null", "it is a device."},
        {"links in a circle", folder / "a", "its symbolic links lead in a circle."},
        {"no such folder", folder / "no/out", "no file can be made in its folder (it does not exist)."},
        {"name too long", folder / std::string(300, 'n'), "its name is too long."},
    };
    const auto before = folder.count();
    for (const Case& c : cases)
        EXPECT_EQ(save(c.target, "x").error(), "Can't write " + c.target + ": " + c.reason) << c.name;
    EXPECT_EQ(folder.count(), before);

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

TEST(AtomicFile, BackupThatCantBeMadeStopsTheSave) {
    TemporaryFolder folder;
    put(folder / "out", "old");
    fs::create_directories(folder / "out.bak/full");
    EXPECT_FALSE(save(folder / "out", "new", Backup::keep));
    EXPECT_EQ(contentOf(folder / "out"), "old");
    EXPECT_EQ(folder.count(), 2u);
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
