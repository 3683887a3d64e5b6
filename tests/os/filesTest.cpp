#include "SavedFile.h"

#include <chrono>

using namespace qx::os;
namespace fs = std::filesystem;

namespace {

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
    const std::pair<std::string, const char*> cases[] = {
        {folder / "no", "it does not exist."},
        {folder.path().string(), "it is a folder."},
        {folder / "file/x", "a part of its path is not a folder."},
        {"", "it does not exist."},
    };
    for (const auto& [path, reason] : cases)
        EXPECT_EQ(readFile(path).error(), "Can't read " + path + ": " + reason);
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

TEST(AtomicFile, RefusesWithOneSentence) {
    TemporaryFolder folder;
    fs::create_directory(folder / "sub");
    const std::pair<std::string, const char*> cases[] = {
        {folder / "sub", "it is a folder."},
        {folder / "no/out", "no file can be made in its folder (it does not exist)."},
        {folder / std::string(300, 'n'), "its name is too long."},
    };
    const auto before = folder.count();
    for (const auto& [target, reason] : cases)
        EXPECT_EQ(save(target, "x").error(), "Can't write " + target + ": " + reason);
    EXPECT_EQ(folder.count(), before);
}

TEST(AtomicFile, BackupThatCantBeMadeStopsTheSave) {
    TemporaryFolder folder;
    put(folder / "out", "old");
    fs::create_directories(folder / "out.bak/full");
    EXPECT_FALSE(save(folder / "out", "new", Backup::keep));
    EXPECT_EQ(contentOf(folder / "out"), "old");
    EXPECT_EQ(folder.count(), 2u);
}

TEST(AppendedFile, HasEverythingOnTheDiskAndOneWriter) {
    TemporaryFolder folder;
    {
        auto file = AppendedFile::open(folder / "log");
        ASSERT_TRUE(file) << file.error();
        EXPECT_TRUE(file->append("one\n"));
        EXPECT_EQ(contentOf(folder / "log"), "one\n") << "read by another while it is open";
        EXPECT_NE(AppendedFile::open(folder / "log").error().find("has it open"), std::string::npos);
        EXPECT_TRUE(file->append(""));
        EXPECT_TRUE(file->append("two\n"));
    }
    auto again = AppendedFile::open(folder / "log");
    ASSERT_TRUE(again) << again.error();
    EXPECT_TRUE(again->append("three\n"));
    EXPECT_EQ(contentOf(folder / "log"), "one\ntwo\nthree\n");
    EXPECT_NE(AppendedFile::open(folder / "no/log").error().find("it does not exist."), std::string::npos);
}

TEST(FileStamp, TellsWhatWasWrittenSince) {
    TemporaryFolder folder;
    EXPECT_FALSE(stampOf(folder / "file"));
    EXPECT_FALSE(stampOf(folder / "."));
    put(folder / "file", "x");
    const auto before = stampOf(folder / "file");
    ASSERT_TRUE(before);
    EXPECT_EQ(stampOf(folder / "file"), before);
    put(folder / "file", "xy");
    EXPECT_NE(stampOf(folder / "file"), before);
    put(folder / "file", "x");
    fs::last_write_time(folder / "file", fs::last_write_time(folder / "file") + std::chrono::hours{1});
    EXPECT_NE(stampOf(folder / "file"), before) << "as long as before, but later";
}

} // namespace
