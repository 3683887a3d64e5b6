#include "desktop/DialogForm.h"

#include <gtest/gtest.h>

namespace {

using qx::desktop::DialogForm;
using qx::desktop::parseDialogForm;
using qx::desktop::textOf;

TEST(DialogForms, ComeBackAsTheyWere) {
    const DialogForm forms[] = {
        {},
        {.dialog = 1202, .command = 1231, .controls = {}},
        {.dialog = 1, .command = 2, .controls = {{3, 1, {}}, {4, 0, {}}, {5, {}, "12.5"}, {6, {}, ""}}},
        {.dialog = 1, .command = 2, .controls = {{7, {}, ") (8 1) 间距 ( \\"}}},
    };
    for (const DialogForm& form : forms) EXPECT_EQ(parseDialogForm(textOf(form)), form) << textOf(form);
    EXPECT_EQ(textOf({.dialog = 1, .command = 2, .controls = {{7, {}, "a\"b\r\nc"}}}),
              "(dialog 1 2 (7 \"a b  c\"))");
}

TEST(DialogForms, AreToldFromWhatIsNone) {
    for (const char* text : {"", "(dialog", "(dialog 1", "(dialog 1 2", "(dialog 1 2))", "(dialog x 2)",
                             "dialog 1 2", "(dialog 1 2 (3))", "(dialog 1 2 (3 \"x)",
                             "(dialog 1 2 (\"x\" 3))", "(dialog 1 2 (3 99999999999))"})
        EXPECT_FALSE(parseDialogForm(text)) << text;
}

} // namespace
