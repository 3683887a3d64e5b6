#include "desktop/DialogForm.h"

#include "ed/FormReader.h"

#include <algorithm>

namespace qx::desktop {

std::string textOf(const DialogForm& form) {
    std::string text = "(dialog " + std::to_string(form.dialog) + ' ' + std::to_string(form.command);
    for (const DialogForm::Control& each : form.controls) {
        text += " (" + std::to_string(each.id) + ' ';
        std::string inner = each.text;
        std::ranges::replace_if(
            inner, [](char c) { return c == '"' || c == '\n' || c == '\r'; }, ' ');
        text += each.check ? std::to_string(*each.check) : '"' + inner + '"';
        text += ')';
    }
    return text + ')';
}

std::optional<DialogForm> parseDialogForm(std::string_view text) {
    DialogForm form;
    ed::FormReader reader{text};
    reader.mark('(').word("DIALOG").number(form.dialog).number(form.command);
    while (reader.isAt('(')) {
        DialogForm::Control& control = form.controls.emplace_back();
        reader.mark('(').number(control.id);
        reader.isAt('"') ? reader.text(control.text) : reader.number(control.check.emplace());
        reader.mark(')');
    }
    return reader.mark(')').isComplete() ? std::optional{form} : std::nullopt;
}

} // namespace qx::desktop
