// Not every system ends a broken program with an exit code that says so.
#include "TemporaryFolder.h"
#include "console/runInFolder.h"

namespace {

TEST(Crashes, EndWithTheirOwnExitCode) {
    struct Case {
        const char* kind;
        int exit;
        const char* said;
    };
    const Case cases[] = {
        {"memory", 70, "The program crashed (exception c0000005):"},
        {"exception", 71, "The program gave up:"},
        {"abort", 71, "The program gave up:"},
    };
    TemporaryFolder folder;
    put(folder / "input", "");
    for (const Case& c : cases) {
        EXPECT_EQ(runInFolder(folder.path(), std::string{"'" QX_BIN_DIR "/crashing.exe' "} + c.kind), c.exit)
            << c.kind;
        const std::string said = contentOf(folder / "errors");
        EXPECT_NE(said.find(c.said), std::string::npos) << said;
        EXPECT_NE(said.find("crashing.exe+0x"), std::string::npos) << said;
    }
}

} // namespace
