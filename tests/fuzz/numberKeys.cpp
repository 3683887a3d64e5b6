// Keys into a number box, one per byte: what stands there afterwards could be a number in the making, and
// nothing but keys that belong there has changed it.
#include "controls/NumberKeys.h"
#include "fuzz/fuzzing.h"

#include <algorithm>
#include <string>

using qx::controls::NumberKeys;
using qx::tests::demand;
using Verdict = NumberKeys::Verdict;

namespace {

constexpr wchar_t backspace = 8;
constexpr std::wstring_view digits = L"0123456789", allowed = L"0123456789.-";

/// An edit box as the system has it, with nothing pasted into it.
class Box {
public:
    void press(std::uint8_t key) {
        if (key < 0x40) {
            character(key);
        } else if (key < 0x80) { // arrows, Home, End, the mouse
            start_ = end_ = key % (text_.size() + 1);
        } else if (key < 0xC0) {
            start_ = std::min<std::size_t>(start_, key % (text_.size() + 1));
            end_ = std::max(start_, end_);
        } else {
            character(static_cast<wchar_t>(key * 0x101));
        }
    }

private:
    void character(wchar_t key) {
        const Verdict verdict =
            keys_.onCharacter(key, {text_, static_cast<unsigned>(start_), static_cast<unsigned>(end_)});
        if (verdict == Verdict::swallowed || verdict == Verdict::endsEditing || key == 127) return;
        if (key == backspace) return erase();
        demand(allowed.find(key) != allowed.npos, "only keys of numbers reach the box");
        demand(key != L'-' || start_ == 0, "a minus stands in front");
        demand(key != L'.' || start_ > 0, "a number does not begin with its point");
        if (key == L'-') ++room_;
        demand(digits.find(key) == digits.npos || text_.size() < room_, "a full box takes no digit");
        text_.replace(start_, end_ - start_, 1, key);
        start_ = end_ = start_ + 1;
        demand(std::ranges::count(text_, L'.') <= 1, "there is one point at most");
        demand(std::ranges::count(text_, L'-') <= 1, "there is one minus at most");
    }
    void erase() {
        if (start_ == end_ && start_ > 0) --start_;
        text_.erase(start_, end_ - start_);
        end_ = start_;
    }

    NumberKeys keys_;
    std::wstring text_;
    std::size_t start_ = 0, end_ = 0;
    std::size_t room_ = 6; ///< each minus that was typed makes some
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Box box;
    for (std::size_t i = 0; i < size; ++i) box.press(data[i]);
    return 0;
}
