#include "desktop/DialogForm.h"

#include <algorithm>
#include <charconv>

namespace qx::desktop {
namespace {

/// Takes what it is asked for from the front; after the first part that is missing it takes nothing more.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_{text} {}

    Reader& mark(std::string_view expected) {
        skipBlanks();
        isGood_ = isGood_ && rest_.starts_with(expected);
        if (isGood_) rest_.remove_prefix(expected.size());
        return *this;
    }
    Reader& number(int& value) {
        skipBlanks();
        const char* end = rest_.data() + rest_.size();
        const auto [stop, error] = std::from_chars(rest_.data(), end, value);
        isGood_ = isGood_ && error == std::errc{};
        if (isGood_) rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
        return *this;
    }
    Reader& text(std::string& value) {
        mark("\"");
        const std::size_t end = rest_.find('"');
        isGood_ = isGood_ && end != std::string_view::npos;
        if (!isGood_) return *this;
        value = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return *this;
    }
    bool isAt(char next) {
        skipBlanks();
        return isGood_ && rest_.starts_with(next);
    }
    bool isComplete() const { return isGood_ && rest_.empty(); }

private:
    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }

    std::string_view rest_;
    bool isGood_ = true;
};

} // namespace

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
    Reader reader{text};
    reader.mark("(dialog").number(form.dialog).number(form.command);
    while (reader.isAt('(')) {
        DialogForm::Control& control = form.controls.emplace_back();
        reader.mark("(").number(control.id);
        reader.isAt('"') ? reader.text(control.text) : reader.number(control.check.emplace());
        reader.mark(")");
    }
    return reader.mark(")").isComplete() ? std::optional{form} : std::nullopt;
}

} // namespace qx::desktop
