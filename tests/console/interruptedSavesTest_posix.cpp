// Saving is interrupted at each of its steps, and each step is refused in turn: the drawing is always the old
// one or the new one.
#include "console/TracedProgram_posix.h"
#include "console/runInFolder.h"
#include "drawings/DrawingText.h"
#include "os/TemporaryFolder.h"

#include <cerrno>
#include <set>

namespace {

// Long enough for several writes.
const std::string before = [] {
    drawings::DrawingText text;
    for (int i = 0; i < 12000; ++i)
        text.entities.push_back("LINE|10 " + std::to_string(i) + "|20 0|11 10|21 5");
    return text.bytes();
}();
const std::string older = "an older drawing";

class InterruptedSaves : public testing::Test {
protected:
    void SetUp() override {
        makeReady();
        const auto end = run({.change = 1'000'000});
        if (!end) GTEST_SKIP() << "this system doesn't let programs be traced";
        ASSERT_EQ(end->exit, 0) << contentOf(folder / "errors");
        after = contentOf(folder / "a.dxf");
        ASSERT_NE(after, before);
        ASSERT_EQ(contentOf(folder / "a.dxf.bak"), before);
    }

    void makeReady() {
        std::filesystem::remove_all(folder.path());
        std::filesystem::create_directory(folder.path());
        put(folder / "a.dxf", before);
        put(folder / "a.dxf.bak", older);
        put(folder / "erase.scr", "ERASE\nL\n\n");
    }
    std::optional<TracedEnd> run(const Mishap& mishap) {
        return runTraced(folder.path(), {QX_QXHOST, "a.dxf", "-s", "erase.scr", "-o", "a.dxf", "--force"},
                         mishap);
    }
    std::size_t leftovers() {
        std::size_t count = 0;
        for (const auto& each : std::filesystem::directory_iterator{folder.path()})
            count += each.path().extension() == ".tmp";
        return count;
    }
    void expectNothingLost() {
        const std::string now = contentOf(folder / "a.dxf"), backup = contentOf(folder / "a.dxf.bak");
        EXPECT_TRUE(now == before || now == after) << now.size() << " bytes";
        EXPECT_TRUE(backup == before || (backup == older && now == before)) << backup.size() << " bytes";
    }

    TemporaryFolder folder;
    std::string after;
};

TEST_F(InterruptedSaves, LeaveTheOldOrTheNewDrawing) {
    std::set<std::string> calls;
    int change = 0;
    for (;; ++change) {
        makeReady();
        const auto end = run({change});
        ASSERT_TRUE(end);
        if (!end->hasHappened) break;
        SCOPED_TRACE(end->call + ", change " + std::to_string(change));
        calls.insert(end->call);
        EXPECT_EQ(end->exit, -1);
        expectNothingLost();
        EXPECT_LE(leftovers(), 2u);
        // What was left behind is in nobody's way.
        put(folder / "input", "");
        EXPECT_EQ(runInFolder(folder.path(), "'" QX_QXHOST "' a.dxf -s erase.scr -o a.dxf --force"), 0);
    }
    EXPECT_GE(change, 8);
    for (const char* each : {"write", "fsync", "rename"}) EXPECT_TRUE(calls.contains(each)) << each;
}

TEST_F(InterruptedSaves, SayWhatTheSystemRefused) {
    const struct {
        int error;
        const char* reason;
    } refusals[] = {{ENOSPC, "the disk is full"},
                    {EIO, "the disk reported an error"},
                    {EROFS, "the disk can only be read"},
                    {EACCES, "permission denied"}};
    for (const auto& [error, reason] : refusals) {
        bool isOver = false;
        int failures = 0;
        for (int change = 0; !isOver; ++change) {
            makeReady();
            const auto end = run({change, error});
            ASSERT_TRUE(end);
            isOver = !end->hasHappened;
            if (isOver) break;
            SCOPED_TRACE(end->call + ", change " + std::to_string(change) + ": " + reason);
            expectNothingLost();
            // Rights that can't be taken over and folders that can't be flushed don't stop a save.
            const bool wasWritten = contentOf(folder / "a.dxf") == after;
            EXPECT_EQ(end->exit, wasWritten ? 0 : 4);
            if (wasWritten) continue;
            ++failures;
            const std::string errors = contentOf(folder / "errors");
            EXPECT_TRUE(errors.starts_with("qxhost: Can't write a.dxf: ")) << errors;
            EXPECT_NE(errors.find(reason), std::string::npos) << errors;
            EXPECT_EQ(leftovers(), 0u);
        }
        EXPECT_GE(failures, 5) << reason;
    }
}

} // namespace
