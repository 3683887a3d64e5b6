// Icon buttons as windows: what the mouse and the dialog's keyboard do to them.
#include "app/ModuleOnTest_win32.h"
#include "controls/CButtonST.h"
#include "controls/GdiLedger.h"
#include "controls/MemoryPicture.h"
#include "res/resource.h"

#include <gtest/gtest.h>

namespace {

/// A window that counts how often its button was pressed.
class Parent : public CWnd {
public:
    Parent() {
        SubclassWindow(::CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                       nullptr, nullptr, nullptr));
    }
    ~Parent() override { ::DestroyWindow(m_hWnd); }

    int presses = 0;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (HIWORD(wParam) == BN_CLICKED) ++presses;
        return CWnd::OnCommand(wParam, lParam);
    }
};

/// Shows which icon would be drawn.
class Button : public CButtonST {
public:
    explicit Button(HWND parent, DWORD style = BS_PUSHBUTTON) {
        SubclassWindow(::CreateWindowW(L"BUTTON", L"对齐", WS_CHILD | WS_VISIBLE | style, 10, 10, 75, 23,
                                       parent, reinterpret_cast<HMENU>(1), nullptr, nullptr));
    }
    ~Button() override { ::DestroyWindow(m_hWnd); }

    /// The button as it is painted, of its window's size.
    std::vector<DWORD> picture(UINT state = 0) {
        const qx::tests::MemoryPicture canvas{75, 23};
        DRAWITEMSTRUCT item{ODT_BUTTON,     1, 0, ODA_DRAWENTIRE, state, m_hWnd, canvas.context(),
                            {0, 0, 75, 23}, 0};
        DrawItem(&item);
        return canvas.pixels();
    }
};

class IconButton : public testing::Test {
protected:
    void mouse(UINT message) { button_.SendMessage(message, 0, MAKELPARAM(5, 5)); }

    qx::tests::ModuleOnTest module_;
    Parent parent_;
    Button button_{parent_.m_hWnd};
};

TEST_F(IconButton, TakesTwoFastClicksAsTwo) {
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) mouse(message);
    EXPECT_EQ(parent_.presses, 2);
}

TEST_F(IconButton, PaintsItselfWhenAsked) {
    EXPECT_EQ(button_.GetStyle() & BS_TYPEMASK, static_cast<DWORD>(BS_OWNERDRAW));
    const auto empty = button_.picture();
    AfxSetResourceHandle(module_.file());
    EXPECT_TRUE(button_.SetIcon(IDI_ALIGN_LEFT));
    const auto left = button_.picture();
    EXPECT_NE(left, empty);
    EXPECT_FALSE(button_.SetIcon(4711)) << "there is no such icon";
    EXPECT_EQ(button_.picture(), empty);
    button_.SetIcon(IDI_ALIGN_LEFT);
    button_.SetFlat(FALSE);
    EXPECT_NE(button_.picture(), left) << "it has a border now";
    button_.SetFlat(TRUE);
    EXPECT_EQ(button_.picture(), left);
    AfxSetResourceHandle(nullptr);
}

TEST_F(IconButton, ShowsWhetherThePointerIsOverItAndASecondIconWhilePressed) {
    AfxSetResourceHandle(module_.file());
    button_.SetIcon(IDI_ALIGN_LEFT, IDI_ALIGN_RIGHT);
    const auto away = button_.picture(), pressed = button_.picture(ODS_SELECTED);
    mouse(WM_MOUSEMOVE);
    EXPECT_NE(button_.picture(), away);
    button_.SendMessage(WM_MOUSELEAVE);
    EXPECT_EQ(button_.picture(), away);
    button_.SetIcon(IDI_ALIGN_RIGHT);
    EXPECT_NE(button_.picture(), away);
    EXPECT_EQ(button_.picture(ODS_SELECTED), pressed);
    AfxSetResourceHandle(nullptr);
}

TEST_F(IconButton, RemembersThatEnterPressesIt) {
    const auto isDefault = [this] { return (button_.SendMessage(WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON) != 0; };
    EXPECT_FALSE(isDefault());
    const auto plain = button_.picture();
    button_.SetButtonStyle(BS_DEFPUSHBUTTON);
    EXPECT_TRUE(isDefault());
    EXPECT_NE(button_.picture(), plain);
    EXPECT_EQ(button_.GetStyle() & BS_TYPEMASK, static_cast<DWORD>(BS_OWNERDRAW)) << "it paints itself still";
    button_.SetButtonStyle(BS_PUSHBUTTON);
    EXPECT_FALSE(isDefault());
    EXPECT_TRUE(Button(parent_.m_hWnd, BS_DEFPUSHBUTTON).SendMessage(WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON);
}

TEST_F(IconButton, GivesItsIconsBack) {
    AfxSetResourceHandle(module_.file());
    const qx::tests::GdiLedger ledger{::GetModuleHandleW(nullptr)};
    {
        Button other{parent_.m_hWnd};
        for (int time = 0; time < 3; ++time) other.SetIcon(IDI_ALIGN_LEFT, IDI_ALIGN_RIGHT);
        EXPECT_EQ(ledger.alive(), 2u);
    }
    EXPECT_EQ(ledger.alive(), 0u);
    EXPECT_EQ(ledger.taken(), 6u);
    AfxSetResourceHandle(nullptr);
}

} // namespace
