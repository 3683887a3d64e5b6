#include "ed/Transcript.h"

#include "os/encoding.h"

namespace qx::ed {

void Transcript::write(std::string_view text) {
    if (text.empty()) return;
    sink_(os::withoutControls(text, "\n\t"));
    atLineStart_ = text.back() == '\n';
}

void Transcript::message(std::string_view text) {
    if (onMessage) onMessage(text);
    if (atLineStart_ && text.starts_with('\n')) text.remove_prefix(1);
    write(text);
}

void Transcript::sentence(std::string_view text) {
    if (onMessage) onMessage(text);
    remark(text);
}

void Transcript::remark(std::string_view text) {
    if (!atLineStart_) write("\n");
    write(std::string{text} + '\n');
}

void Transcript::prompt(std::string_view text) {
    if (!atLineStart_) write("\n");
    while (text.starts_with('\n')) text.remove_prefix(1);
    write(text);
}

void Transcript::answer(std::string_view text, bool shown) {
    if (shown)
        atLineStart_ = true;
    else
        write(std::string{text} + '\n');
}

} // namespace qx::ed
