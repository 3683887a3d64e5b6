#include "afx/DialogScript.h"
#include "afx/ModalLoop.h"

#include <afxdialogex.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace {
using qx::tests::DialogScript;

constexpr int radioA = 10, edit = 11, radioB = 12, radioC = 13, button = 14;

class WatchedEdit : public CEdit {
public:
    BOOL PreTranslateMessage(MSG* message) override {
        if (message->message == WM_CHAR) seen += static_cast<char>(message->wParam);
        return message->message == WM_CHAR && message->wParam == L'x';
    }
    std::string seen;
};

class TestDialog : public CDialogEx {
public:
    explicit TestDialog(CWnd* parent = nullptr, UINT id = 7000) : CDialogEx{id, parent} {}

    WatchedEdit edit_;
    int first_ = 1;
    int second_ = -1;
    bool endsAtOnce_ = false;
    std::function<void()> onPress_ = [] {};
    std::string order_; ///< of what was called

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        order_ += exchange->m_bSaveAndValidate ? "save " : "load ";
        DDX_Control(exchange, edit, edit_);
        DDX_Radio(exchange, radioA, first_);
        DDX_Radio(exchange, radioC, second_);
    }
    BOOL OnInitDialog() override {
        order_ += "init ";
        CDialogEx::OnInitDialog();
        if (endsAtOnce_) EndDialog(77);
        return TRUE;
    }
    void OnPress() { onPress_(); }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TestDialog, CDialogEx)
ON_BN_CLICKED(button, &TestDialog::OnPress)
END_MESSAGE_MAP()

/// A window to stand before.
class Frame : public CWnd {
public:
    Frame() {
        SubclassWindow(
            ::CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr));
    }
    ~Frame() override { ::DestroyWindow(m_hWnd); }
};

class Dialogs : public testing::Test {
protected:
    ~Dialogs() override { EXPECT_EQ(qx::afx::attachedWindows(), 0u); }

    TestDialog dialog_;
    DialogScript script_;
};

TEST_F(Dialogs, ExchangeRadioGroupsAndKeepObjectsAttached) {
    script_.look([this](HWND window) {
        EXPECT_FALSE(qx::tests::isChecked(window, radioA));
        EXPECT_TRUE(qx::tests::isChecked(window, radioB)) << "the second, controls between them do not count";
        EXPECT_FALSE(qx::tests::isChecked(window, radioC));
        EXPECT_EQ(CWnd::FromHandlePermanent(::GetDlgItem(window, edit)), &dialog_.edit_);
        EXPECT_EQ(CWnd::FromHandle(::GetDlgItem(window, edit)), &dialog_.edit_);
        EXPECT_EQ(CWnd::FromHandlePermanent(::GetDlgItem(window, radioA)), nullptr);
        EXPECT_EQ(CWnd::FromHandle(::GetDlgItem(window, radioA))->m_hWnd, ::GetDlgItem(window, radioA));
        EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
        EXPECT_FALSE(WatchedEdit{}.SubclassWindow(dialog_.edit_.m_hWnd)) << "it has an object already";
    });
    script_.click(radioA).click(radioC).press(VK_RETURN);
    EXPECT_EQ(dialog_.DoModal(), IDOK);
    EXPECT_EQ(dialog_.first_, 0);
    EXPECT_EQ(dialog_.second_, 0);
    EXPECT_EQ(dialog_.order_, "init load save ");
    EXPECT_EQ(dialog_.edit_.m_hWnd, nullptr);
}

TEST_F(Dialogs, NothingIsReadWhenTheyAreCancelled) {
    script_.click(radioA).press(VK_ESCAPE);
    EXPECT_EQ(dialog_.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog_.first_, 1);
    EXPECT_EQ(dialog_.order_, "init load ");
    EXPECT_FALSE(dialog_.UpdateData(TRUE)) << "there is no window any more";
}

TEST_F(Dialogs, ControlsSeePostedMessagesFirst) {
    script_.type(edit, L"axb").look([](HWND window) { EXPECT_EQ(qx::tests::textOf(window, edit), L"ab"); });
    script_.look([](HWND window) { ::SendDlgItemMessageW(window, edit, WM_CHAR, L'x', 1); });
    script_.look([](HWND window) { EXPECT_EQ(qx::tests::textOf(window, edit), L"abx"); }).closeBox();
    EXPECT_EQ(dialog_.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog_.edit_.seen, "axb") << "a message that is sent is nobody's before the window's";
}

TEST_F(Dialogs, DisableTheirParentMeanwhile) {
    Frame frame;
    TestDialog child{&frame};
    script_.look([&frame](HWND window) {
        EXPECT_FALSE(::IsWindowEnabled(frame.m_hWnd));
        EXPECT_EQ(::GetWindow(window, GW_OWNER), frame.m_hWnd);
    });
    script_.closeBox();
    EXPECT_EQ(child.DoModal(), IDCANCEL);
    EXPECT_TRUE(::IsWindowEnabled(frame.m_hWnd));
    frame.EnableWindow(FALSE);
    script_.closeBox();
    EXPECT_EQ(child.DoModal(), IDCANCEL);
    EXPECT_FALSE(::IsWindowEnabled(frame.m_hWnd)) << "it was not the dialog that disabled it";
}

TEST_F(Dialogs, MayEndBeforeTheyAreSeenOrNotBeginAtAll) {
    dialog_.endsAtOnce_ = true;
    EXPECT_EQ(dialog_.DoModal(), 77);
    Frame frame;
    EXPECT_EQ((TestDialog{&frame, 4711}.DoModal()), -1) << "no such template";
    EXPECT_TRUE(::IsWindowEnabled(frame.m_hWnd));
}

TEST_F(Dialogs, LetAnExceptionOutOfDoModal) {
    Frame frame;
    TestDialog child{&frame};
    child.onPress_ = [] { throw std::runtime_error{"pressed"}; };
    script_.click(button);
    EXPECT_THROW(child.DoModal(), std::runtime_error);
    EXPECT_TRUE(::IsWindowEnabled(frame.m_hWnd));
    script_.closeBox();
    EXPECT_EQ(dialog_.DoModal(), IDCANCEL) << "the next one is whole";
}

// What another thread sends arrives while the loop looks for messages, and leaves none behind.
TEST_F(Dialogs, LetAnExceptionOutThatASentMessageCaused) {
    dialog_.onPress_ = [] { throw std::runtime_error{"pressed"}; };
    std::thread sender;
    qx::afx::setIdleStep([&sender](HWND window) {
        if (!sender.joinable())
            sender = std::thread{
                [window] { ::SendMessageW(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0); }};
        return false; // the loop waits
    });
    EXPECT_THROW(dialog_.DoModal(), std::runtime_error);
    sender.join();
}

TEST_F(Dialogs, OpenOneAnother) {
    TestDialog inner{&dialog_};
    dialog_.onPress_ = [&inner] { EXPECT_EQ(inner.DoModal(), IDOK); };
    script_.click(button);
    script_.look([this](HWND) { EXPECT_FALSE(::IsWindowEnabled(dialog_.m_hWnd)); }).press(VK_RETURN);
    script_.look([this](HWND window) { EXPECT_EQ(window, dialog_.m_hWnd); }).closeBox();
    EXPECT_EQ(dialog_.DoModal(), IDCANCEL);
}

TEST_F(Dialogs, LeaveTheEndOfTheProgramToTheLoopOutside) {
    script_.look([](HWND) { ::PostQuitMessage(5); });
    EXPECT_EQ(dialog_.DoModal(), -1);
    MSG message{};
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5u);
}

} // namespace
