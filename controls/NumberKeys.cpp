#include "controls/NumberKeys.h"

namespace qx::controls {
namespace {

using Verdict = NumberKeys::Verdict;

constexpr unsigned deleteKey = 46;
constexpr wchar_t backspace = 8, enter = 13, controlBackspace = 127;

bool holds(const NumberKeys::Box& box, wchar_t character) {
    return box.text.find(character) != std::wstring_view::npos;
}

} // namespace

Verdict NumberKeys::onKeyDown(unsigned virtualKey) {
    return virtualKey == deleteKey ? Verdict::swallowed : Verdict::letThrough;
}

Verdict NumberKeys::onCharacter(wchar_t character, const Box& box) {
    if (character == backspace || character == controlBackspace) return Verdict::letThrough;
    if (character == enter) return Verdict::endsEditing;
    if (character == L'.') return onPoint(box);
    if (character == L'-') return onMinus(box);
    if (character < L'0' || character > L'9') return Verdict::swallowed;
    return onDigit(box);
}

/// A number begins with a digit, before its point as well.
Verdict NumberKeys::onPoint(const Box& box) const {
    if (holds(box, L'.') || box.start == 0 || box.start == maximumLength_) return Verdict::swallowed;
    return holds(box, L'-') && box.start == 1 ? Verdict::swallowed : Verdict::passedOn;
}

Verdict NumberKeys::onMinus(const Box& box) {
    if (holds(box, L'-') || box.start != 0) return Verdict::swallowed;
    ++maximumLength_;
    allowsMinus_ = true;
    return Verdict::passedOn;
}

/// The room for the minus is given once: the first digit that finds the box full takes it back, although the
/// minus may still be there.
Verdict NumberKeys::onDigit(const Box& box) {
    if (box.text.size() < maximumLength_) return Verdict::passedOn;
    if (allowsMinus_ && maximumLength_ > 0) --maximumLength_;
    allowsMinus_ = false;
    return Verdict::swallowed;
}

} // namespace qx::controls
