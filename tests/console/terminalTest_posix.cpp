// The program at a terminal, with somebody who types.
#include "drawings/DrawingText.h"
#include "os/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Terminal {
public:
    Terminal(const TemporaryFolder& folder, const char* drawing) {
        const std::string place = folder.path().string();
        program_ = forkpty(&side_, nullptr, nullptr, nullptr);
        if (program_ != 0) return;
        if (chdir(place.c_str()) == 0) execl(QX_QXHOST, QX_QXHOST, drawing, static_cast<char*>(nullptr));
        _exit(127);
    }
    ~Terminal() {
        if (program_ > 0) kill(program_, SIGKILL), waitpid(program_, nullptr, 0);
        close(side_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void type(std::string_view keys) { ASSERT_GT(write(side_, keys.data(), keys.size()), 0); }

    /// Waits until the text is shown behind what was waited for last.
    bool shows(const std::string& text) {
        std::size_t at = 0;
        while ((at = screen_.find(text, seen_)) == std::string::npos)
            if (!readMore()) return false;
        seen_ = at + text.size();
        return true;
    }
    int exit() {
        while (readMore()) {
        }
        int status = 0;
        waitpid(program_, &status, 0);
        program_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    const std::string& screen() const { return screen_; }

private:
    bool readMore() {
        constexpr int patience = 20'000; // milliseconds
        pollfd waiting{side_, POLLIN, 0};
        char piece[4096];
        if (poll(&waiting, 1, patience) <= 0) return false;
        const ssize_t count = read(side_, piece, sizeof piece);
        if (count > 0) screen_.append(piece, static_cast<std::size_t>(count));
        return count > 0;
    }

    int side_ = -1;
    pid_t program_ = 0;
    std::string screen_;
    std::size_t seen_ = 0;
};

#define EXPECT_SHOWN(text) EXPECT_TRUE(terminal.shows(text)) << terminal.screen()

class AtATerminal : public testing::Test {
protected:
    void SetUp() override {
        put(folder / "a.dxf", drawings::DrawingText{.entities = {"LINE|5 A1|10 0|20 0|11 10|21 5"}}.bytes());
    }
    TemporaryFolder folder;
};

TEST_F(AtATerminal, ControlCCancelsTheCommandOnly) {
    Terminal terminal{folder, "a.dxf"};
    EXPECT_SHOWN("命令: ");
    terminal.type("ERASE\r");
    EXPECT_SHOWN("选择对象: ");
    terminal.type("L\r");
    EXPECT_SHOWN("选择对象: ");
    terminal.type("\x03");
    EXPECT_SHOWN("*取消*");
    EXPECT_SHOWN("命令: ");
    terminal.type("half a word\x03");
    EXPECT_SHOWN("*取消*");
    EXPECT_SHOWN("命令: ");
    terminal.type("\x03");
    EXPECT_SHOWN("*取消*");
    EXPECT_SHOWN("命令: ");
    terminal.type("QUIT\r"); // nothing was changed: no question
    EXPECT_EQ(terminal.exit(), 0) << terminal.screen();
}

TEST_F(AtATerminal, ControlCKeepsWhatIsUnsaved) {
    Terminal terminal{folder, "a.dxf"};
    EXPECT_SHOWN("命令: ");
    terminal.type("ERASE L\r\r");
    EXPECT_SHOWN("命令: ");
    terminal.type("QUIT\r");
    EXPECT_SHOWN("<N>: ");
    terminal.type("\x03");
    EXPECT_SHOWN("命令: ");
    terminal.type("SAVE\r");
    EXPECT_SHOWN("已保存到 a.dxf");
    terminal.type("\x04"); // the end of what is typed
    EXPECT_EQ(terminal.exit(), 0) << terminal.screen();
    EXPECT_EQ(contentOf(folder / "a.dxf").find("LINE"), std::string::npos);
}

TEST_F(AtATerminal, WhatAnotherProgramWroteMeanwhileIsKept) {
    Terminal terminal{folder, "a.dxf"};
    EXPECT_SHOWN("命令: ");
    put(folder / "a.dxf", "somebody else's");
    terminal.type("ERASE L\r\rSAVE\r");
    EXPECT_SHOWN("无法保存到 a.dxf");
    EXPECT_SHOWN("命令: ");
    terminal.type("SAVEAS a.dxf\rY\r");
    EXPECT_SHOWN("无法保存到 a.dxf");
    EXPECT_SHOWN("命令: ");
    terminal.type("SAVEAS b.dxf\rSAVE\rQUIT\r");
    EXPECT_EQ(terminal.exit(), 0) << terminal.screen();
    EXPECT_EQ(contentOf(folder / "a.dxf"), "somebody else's");
    EXPECT_NE(contentOf(folder / "b.dxf").find("ENTITIES"), std::string::npos);
}

} // namespace
