// The dialog of KV_PositionAlign as a window, worked like a person works it.
#include "afx/DialogScript.h"
#include "afx/ModalLoop.h"
#include "app/ModuleOnTest_win32.h"
#include "positionalign/askSettings.h"
#include "res/resource.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {
using namespace qx::positionalign;
using qx::tests::DialogScript;

class PositionDialog : public testing::Test {
protected:
    /// "3 at 12.5 from a point, groups", or "cancelled".
    std::string result() {
        const auto settings = askSettings();
        if (!settings) return "cancelled";
        std::ostringstream text;
        text << static_cast<int>(settings->action) << " at " << settings->offset
             << (settings->asksBasePoint ? " from a point" : "")
             << (settings->mode == SelectionMode::groups ? ", groups" : "");
        return text.str();
    }

    qx::tests::ModuleOnTest module_;
    DialogScript script_;
};

TEST_F(PositionDialog, EveryButtonGivesItsAction) {
    struct Case {
        int mode;
        const wchar_t* offset;
        int button;
        const char* result;
    };
    const Case cases[] = {
        {0, L"12.5", IDC_CENTRE_HORIZONTALLY, "1 at 0 from a point"},
        {0, L"12.5", IDC_ALIGN_TOP, "2 at 12.5 from a point"},
        {0, L"12.5", IDC_ALIGN_LEFT, "3 at 12.5 from a point"},
        {0, L"12.5", IDC_ALIGN_CENTRE, "4 at 0 from a point"},
        {0, L"-12.5", IDC_ALIGN_RIGHT, "5 at -12.5 from a point"},
        {0, L"12.5", IDC_CENTRE_VERTICALLY, "6 at 0 from a point"},
        {0, L"", IDC_ALIGN_BOTTOM, "7 at 0 from a point"},
        {0, L"12.5", IDC_DISTRIBUTE_HORIZONTALLY, "8 at 0"},
        {0, L"12.5", IDC_DISTRIBUTE_VERTICALLY, "9 at 0"},
        {IDC_MODE_OBJECT_GROUPS, L"7", IDC_ALIGN_BOTTOM, "7 at 7 from a point, groups"},
        {IDC_MODE_OBJECTS, L"-", IDC_ALIGN_TOP, "2 at 0 from a point"},
    };
    for (const Case& c : cases) {
        if (c.mode) script_.click(c.mode);
        script_.type(IDC_OFFSET, c.offset).click(c.button);
        EXPECT_EQ(result(), c.result) << c.button;
    }
}

TEST_F(PositionDialog, OffsetIsWhatThePastedTextBeginsWith) {
    struct Case {
        const wchar_t* text;
        const char* result;
    };
    const Case cases[] = {
        {L"  7.25 mm", "2 at 7.25 from a point"}, {L"1e3", "2 at 1000 from a point"},
        {L".5.5", "2 at 0.5 from a point"},       {L"0x10", "2 at 0 from a point"},
        {L"左3", "2 at 0 from a point"},
    };
    for (const Case& c : cases) {
        script_.paste(IDC_OFFSET, c.text).click(IDC_ALIGN_TOP);
        EXPECT_EQ(result(), c.result) << testing::PrintToString(c.text);
    }
}

TEST_F(PositionDialog, BeginsWithObjectsAndNoOffset) {
    script_.type(IDC_OFFSET, L"5").click(IDC_MODE_OBJECT_GROUPS).closeBox();
    EXPECT_EQ(result(), "cancelled");
    script_.look([](HWND dialog) {
        EXPECT_TRUE(qx::tests::isChecked(dialog, IDC_MODE_OBJECTS));
        EXPECT_FALSE(qx::tests::isChecked(dialog, IDC_MODE_OBJECT_GROUPS));
        EXPECT_EQ(qx::tests::textOf(dialog, IDC_OFFSET), L"");
        EXPECT_NE(::SendMessageW(dialog, WM_GETICON, ICON_BIG, 0), 0);
        EXPECT_NE(::SendMessageW(dialog, WM_GETICON, ICON_SMALL, 0), 0);
    });
    script_.press(VK_ESCAPE);
    EXPECT_EQ(result(), "cancelled");
}

TEST_F(PositionDialog, EnterEndsItWithoutAnActionUnlessAButtonHasTheFocus) {
    script_.press(VK_RETURN);
    EXPECT_EQ(result(), "0 at 0");
    script_.focus(IDC_OFFSET).type(IDC_OFFSET, L"3").press(VK_RETURN);
    EXPECT_EQ(result(), "0 at 0");
    script_.focus(IDC_ALIGN_LEFT).press(VK_RETURN);
    EXPECT_EQ(result(), "3 at 0 from a point");
    script_.focus(IDC_ALIGN_LEFT).focus(IDC_OFFSET).press(VK_RETURN);
    EXPECT_EQ(result(), "0 at 0");
    script_.focus(IDC_ALIGN_RIGHT).press(VK_SPACE);
    EXPECT_EQ(result(), "5 at 0 from a point");
}

TEST_F(PositionDialog, OffsetBoxTakesAShortDecimalNumber) {
    struct Case {
        const wchar_t *keys, *text;
    };
    const Case cases[] = {
        {L"1234567", L"123456"}, {L"-123456", L"-123456"}, {L".5", L"5"},
        {L"1.2.3", L"1.23"},     {L"-.5", L"-5"},          {L"12\b3", L"13"},
        {L"1a2 ３", L"12"},      {L"5\r6", L"56"},         {L"5\x16", L"5"},
    };
    for (const Case& c : cases) {
        script_.type(IDC_OFFSET, c.keys);
        script_.look([c](HWND dialog) { EXPECT_EQ(qx::tests::textOf(dialog, IDC_OFFSET), c.text); })
            .closeBox();
        EXPECT_EQ(result(), "cancelled");
    }
}

TEST_F(PositionDialog, OffsetBoxMindsTheSelection) {
    const auto holds = [this](const wchar_t* text) {
        script_.look([text](HWND dialog) { EXPECT_EQ(qx::tests::textOf(dialog, IDC_OFFSET), text); });
    };
    script_.focus(IDC_OFFSET).type(IDC_OFFSET, L"-12345678");
    holds(L"-123456");
    script_.type(IDC_OFFSET, L"\b\b8");
    holds(L"-12348"); // the room for the minus was taken back
    script_.select(IDC_OFFSET, 1, 3).type(IDC_OFFSET, L"\b");
    holds(L"-348");
    script_.select(IDC_OFFSET, 1, 3).press(VK_DELETE);
    holds(L"-348");
    script_.select(IDC_OFFSET, 0, 4).type(IDC_OFFSET, L"7");
    holds(L"7");
    script_.select(IDC_OFFSET, 0, 0).type(IDC_OFFSET, L"-");
    holds(L"-7");
    script_.click(IDC_ALIGN_LEFT);
    EXPECT_EQ(result(), "3 at -7 from a point");
}

} // namespace
