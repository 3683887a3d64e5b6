// What a person left in a dialog, as one answer of a script: `(dialog 1202 1231 (1243 1) (1245 "12.5"))` is
// the dialog with template 1202 as it was ended by its control 1231, with the state of buttons that can be
// checked and the text of edit boxes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::desktop {

struct DialogForm {
    struct Control {
        int id = 0;
        std::optional<int> check;
        std::string text; ///< UTF-8; of controls without a check
        friend bool operator==(const Control&, const Control&) = default;
    };
    int dialog = 0, command = 0;
    std::vector<Control> controls;
    friend bool operator==(const DialogForm&, const DialogForm&) = default;
};

/// Quotes and line ends in a text become blanks: a script can't hold them.
std::string textOf(const DialogForm& form);
std::optional<DialogForm> parseDialogForm(std::string_view text);

} // namespace qx::desktop
