// The parts of the window, worked by messages.
#include "desktop/Canvas_win32.h"
#include "desktop/CommandPane_win32.h"
#include "desktop/DeskOnTest.h"
#include "os/encoding.h"

#include <cwchar>

namespace {

using namespace qx;
using tests::DeskOnTest;

const drawings::DrawingText scene{.entities = {"LINE|5 A1|10 0|20 0|11 100|21 0",
                                               "CIRCLE|5 A2|10 50|20 40|40 10",
                                               "LINE|5 A3|10 0|20 75|11 100|21 75"}};

class Frame {
public:
    Frame()
        : window{::CreateWindowExW(0, L"STATIC", L"test", WS_POPUP | WS_VISIBLE, 0, 0, 600, 400, nullptr,
                                   nullptr, ::GetModuleHandleW(nullptr), nullptr)} {}
    ~Frame() { ::DestroyWindow(window); }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    const HWND window;
};

class Parts : public testing::Test {
protected:
    TemporaryFolder folder;
    DeskOnTest person{folder, scene};
    Frame frame;
};

class TypedParts : public Parts {
public:
    TypedParts() {
        pane.setDesk(&person.desk);
        pane.place({0, 0, 600, 100});
        for (HWND each = nullptr; (each = ::FindWindowExW(frame.window, each, L"EDIT", nullptr));)
            input = each;
    }
    void press(wchar_t key) { ::SendMessageW(input, WM_CHAR, key, 0); }
    void write(const wchar_t* text) {
        for (; *text; ++text) press(*text);
    }
    void paste(const std::wstring& text) {
        const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
        std::wmemcpy(static_cast<wchar_t*>(::GlobalLock(memory)), text.c_str(), text.size() + 1);
        ::GlobalUnlock(memory);
        ASSERT_TRUE(::OpenClipboard(frame.window));
        ::EmptyClipboard();
        ASSERT_TRUE(::SetClipboardData(CF_UNICODETEXT, memory));
        ::CloseClipboard();
        press(L'\x16'); // Ctrl+V
    }
    std::string left() const {
        wchar_t text[1000] = {};
        ::GetWindowTextW(input, text, static_cast<int>(std::size(text)));
        return os::toUtf8(text);
    }
    desktop::CommandPane pane{frame.window};
    HWND input = nullptr;
};

TEST_F(TypedParts, EnterWhatIsWrittenAndPasted) {
    const struct {
        const char* name;
        std::function<void(TypedParts&)> act;
        const char* transcript; ///< a part of it
        const char* left;       ///< what waits in the line
    } cases[] = {
        {"Chinese letters", [](auto& t) { t.write(L"画直线\r"); }, "未知命令“画直线”", ""},
        {"a letter of two halves", [](auto& t) { t.write(L"\xD83D\xDCD0\r"); }, "未知命令“\U0001F4D0”", ""},
        {"a space ends a word", [](auto& t) { t.write(L"ABC "); }, "未知命令“ABC”", ""},
        {"one line", [](auto& t) { t.paste(L"ABC"); }, "命令: ", "ABC"},
        {"lines are entered", [](auto& t) { t.paste(L"ERASE\r\nL\r\n\r\nUN"); }, "选择对象: L\n找到 1 个\n",
         "UN"},
        {"behind what is written", [](auto& t) { t.write(L"E"), t.paste(L"RASE\nW\n0,0\n9,9\n"); },
         "指定对角点: 9,9", ""},
        {"Chinese lines", [](auto& t) { t.paste(L"画\n线\n"); }, "未知命令“线”", ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        person.transcript.clear();
        person.then([&] { each.act(*this); }).then([] {}).then([&] {
            EXPECT_EQ(left(), each.left);
            ::SetWindowTextW(input, L"");
        });
        person.escape().escape().work();
        EXPECT_NE(person.transcript.find(each.transcript), std::string::npos) << person.transcript;
    }
}

class DrawnParts : public Parts {
protected:
    DrawnParts() { canvas.place({0, 0, 400, 300}); }
    void send(UINT message, WPARAM keys, int x, int y) {
        ::SendMessageW(canvas.window(), message, keys, MAKELPARAM(x, y));
    }
    desktop::Canvas canvas{frame.window, person.desk};
};

TEST_F(DrawnParts, DragAsLongAsTheMouseIsTheirs) {
    const auto corner = [&] { return person.desk.view().toWorld({0, 0}); };
    const AcGePoint3d before = corner();
    send(WM_MOUSEMOVE, MK_MBUTTON, 50, 50);
    EXPECT_EQ(corner().x, before.x) << "pressed elsewhere";
    send(WM_MBUTTONDOWN, MK_MBUTTON, 50, 50);
    send(WM_MOUSEMOVE, MK_MBUTTON, 60, 50);
    const AcGePoint3d panned = corner();
    EXPECT_NEAR(before.x - panned.x, 10 * person.desk.view().pixel(), 1e-9);
    ::SetCapture(frame.window);
    send(WM_MOUSEMOVE, MK_MBUTTON, 90, 50);
    EXPECT_EQ(corner().x, panned.x) << "somebody else has it now";
    ::ReleaseCapture();

    person.then([&] {
        send(WM_LBUTTONDOWN, MK_LBUTTON, 398, 299);
        send(WM_MOUSEMOVE, MK_LBUTTON, 2, 2);
        send(WM_LBUTTONUP, 0, 2, 2);
    });
    person.work();
    EXPECT_EQ(person.pickFirst(), "A1 A2 A3") << "dragged";
    EXPECT_NE(::GetCapture(), canvas.window());
    person.escape().then([&] {
        send(WM_LBUTTONDOWN, MK_LBUTTON, 398, 299);
        ::SetCapture(frame.window);
        send(WM_LBUTTONUP, 0, 2, 2);
        ::ReleaseCapture();
    });
    person.work();
    EXPECT_EQ(person.pickFirst(), "") << "not dragged to its end";
}

TEST_F(DrawnParts, HaveAnySize) {
    for (const auto& [width, height] :
         {std::pair{1, 1}, {0, 0}, {300, 0}, {-20, -5}, {2000, 3}, {400, 300}}) {
        canvas.place({0, 0, width, height});
        person.then([&] {
            send(WM_MOUSEMOVE, 0, 0, 0);
            send(WM_LBUTTONDOWN, MK_LBUTTON, 0, 0);
            send(WM_LBUTTONUP, 0, -70, 900);
            person.desk.zoom(0.5, {0, 0});
            canvas.update();
            ::UpdateWindow(canvas.window());
            EXPECT_EQ(person.desk.needsPaint(), width <= 0 || height <= 0) << width << " x " << height;
        });
        person.escape().work();
    }
    EXPECT_EQ(person.desk.view().width(), 400);
}

} // namespace
