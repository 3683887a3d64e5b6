// The dialog of KV_ObjectAlign as a window, worked like a person works it.
#include "afx/DialogScript.h"
#include "app/ModuleOnTest_win32.h"
#include "objectalign/askSettings.h"
#include "res/resource.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {
using namespace qx::objectalign;
using qx::tests::DialogScript;
using qx::tests::isChecked;
using qx::tests::isEnabled;
using qx::tests::textOf;

class ObjectDialog : public testing::Test {
protected:
    /// "mode 2, method 0, action 1, spacing 5, adjusted", or "cancelled".
    std::string result() {
        const auto settings = askSettings();
        if (!settings) return "cancelled";
        std::ostringstream text;
        text << "mode " << static_cast<int>(settings->mode) << ", method "
             << static_cast<int>(settings->method) << ", action " << static_cast<int>(settings->action)
             << ", spacing " << settings->spacing << (settings->adjustSpacing ? ", adjusted" : "");
        return text.str();
    }

    qx::tests::ModuleOnTest module_;
    DialogScript script_;
};

TEST_F(ObjectDialog, GivesWhatWasChosen) {
    struct Case {
        std::vector<int> clicks; ///< before the spacing is typed
        const wchar_t* spacing;
        int button;
        const char* result;
    };
    const Case cases[] = {
        {{}, L"", IDC_ALIGN_TO_LINE, "mode 2, method 0, action 1, spacing 0"},
        {{}, L"", IDC_ALIGN_AT_POINT, "mode 2, method 0, action 2, spacing 0"},
        {{IDC_METHOD_WHOLE}, L"", IDC_ALIGN_TO_LINE, "mode 2, method 1, action 1, spacing 0"},
        {{IDC_MODE_GROUPS}, L"", IDC_ALIGN_TO_LINE, "mode 0, method 1, action 1, spacing 0"},
        {{IDC_MODE_POLYLINES}, L"", IDC_ALIGN_AT_POINT, "mode 1, method 0, action 2, spacing 0"},
        {{IDC_METHOD_WHOLE, IDC_MODE_POLYLINES},
         L"",
         IDC_ALIGN_TO_LINE,
         "mode 1, method 0, action 1, spacing 0"},
        {{IDC_MODE_GROUPS, IDC_MODE_GENERAL},
         L"",
         IDC_ALIGN_TO_LINE,
         "mode 2, method 0, action 1, spacing 0"},
        {{IDC_ADJUST_SPACING}, L"25", IDC_ALIGN_TO_LINE, "mode 2, method 0, action 1, spacing 25, adjusted"},
        {{IDC_ADJUST_SPACING}, L"", IDC_ALIGN_AT_POINT, "mode 2, method 0, action 2, spacing 0, adjusted"},
        {{IDC_MODE_GROUPS, IDC_ADJUST_SPACING},
         L"7",
         IDC_ALIGN_AT_POINT,
         "mode 0, method 1, action 2, spacing 7, adjusted"},
    };
    for (const Case& c : cases) {
        for (const int each : c.clicks) script_.click(each);
        script_.type(IDC_SPACING, c.spacing).click(c.button);
        EXPECT_EQ(result(), c.result);
    }
}

TEST_F(ObjectDialog, ReadsTheSpacingAlsoWhenItIsNotAdjusted) {
    script_.click(IDC_ADJUST_SPACING)
        .type(IDC_SPACING, L"25")
        .click(IDC_ADJUST_SPACING)
        .look([](HWND dialog) { EXPECT_FALSE(isEnabled(dialog, IDC_SPACING)); });
    script_.click(IDC_ALIGN_TO_LINE);
    EXPECT_EQ(result(), "mode 2, method 0, action 1, spacing 25");
}

/// Which of the radio buttons are checked, and whether the method can be chosen: "2 0 free".
std::string modesOf(HWND dialog) {
    std::ostringstream text;
    int index = 0;
    for (const int each : {IDC_MODE_GROUPS, IDC_MODE_POLYLINES, IDC_MODE_GENERAL}) {
        if (isChecked(dialog, each)) text << index << ' ';
        ++index;
    }
    index = 0;
    for (const int each : {IDC_METHOD_EACH, IDC_METHOD_WHOLE}) {
        if (isChecked(dialog, each)) text << index << ' ';
        if (isEnabled(dialog, each)) text << "free ";
        ++index;
    }
    return text.str();
}

TEST_F(ObjectDialog, ModeDecidesWhichMethodsThereAre) {
    const auto shows = [this](const char* modes) {
        script_.look([modes](HWND dialog) { EXPECT_EQ(modesOf(dialog), modes); });
    };
    shows("2 0 free free ");
    script_.click(IDC_METHOD_WHOLE);
    shows("2 free 1 free ");
    for (int time = 0; time < 2; ++time) { // a second click says the same again
        script_.click(IDC_MODE_GROUPS);
        shows("0 1 ");
    }
    script_.click(IDC_MODE_POLYLINES);
    shows("1 0 ");
    script_.click(IDC_MODE_GENERAL);
    shows("2 0 free free ");
    script_.click(IDC_METHOD_WHOLE).click(IDC_MODE_GENERAL);
    shows("2 0 free free ");
    script_.closeBox();
    EXPECT_EQ(result(), "cancelled");
}

TEST_F(ObjectDialog, SpacingBoxIsThereOnlyToAdjust) {
    const auto spacing = [this](bool enabled) {
        script_.look([enabled](HWND dialog) { EXPECT_EQ(isEnabled(dialog, IDC_SPACING), enabled); });
    };
    spacing(false);
    script_.click(IDC_ADJUST_SPACING);
    spacing(true);
    script_.clickTwice(IDC_ADJUST_SPACING);
    spacing(true);
    script_.click(IDC_ADJUST_SPACING);
    spacing(false);
    script_.click(IDC_CANCEL);
    EXPECT_EQ(result(), "cancelled");
}

// The box itself takes digits only, before the rules of numbers are asked.
TEST_F(ObjectDialog, SpacingBoxTakesDigits) {
    struct Case {
        const wchar_t *keys, *text;
    };
    const Case cases[] = {{L"1234567", L"123456"},
                          {L"-123456", L"123456"},
                          {L"-12345678", L"1234567"},
                          {L"1.5", L"15"},
                          {L"12\b3", L"13"}};
    for (const Case& c : cases) {
        script_.click(IDC_ADJUST_SPACING).type(IDC_SPACING, c.keys);
        script_.look([c](HWND dialog) { EXPECT_EQ(textOf(dialog, IDC_SPACING), c.text); }).press(VK_ESCAPE);
        EXPECT_EQ(result(), "cancelled");
    }
    script_.click(IDC_ADJUST_SPACING).paste(IDC_SPACING, L"-2.5").click(IDC_ALIGN_TO_LINE);
    EXPECT_EQ(result(), "mode 2, method 0, action 1, spacing -2.5, adjusted");
}

TEST_F(ObjectDialog, EnterPressesTheButtonThatHasTheFocus) {
    script_.focus(IDC_ALIGN_TO_LINE).press(VK_RETURN);
    EXPECT_EQ(result(), "mode 2, method 0, action 1, spacing 0");
    script_.focus(IDC_ALIGN_AT_POINT).press(VK_RETURN);
    EXPECT_EQ(result(), "mode 2, method 0, action 2, spacing 0");
    script_.focus(IDC_CANCEL).press(VK_RETURN);
    EXPECT_EQ(result(), "cancelled");
}

} // namespace
