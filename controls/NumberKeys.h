// Which keys a box for a short decimal number takes: digits, one point, one minus at the front. Knows no
// window; what it is told about the box is all it knows. Pasted text does not come this way.
#pragma once

#include <string_view>

namespace qx::controls {

class NumberKeys {
public:
    /// What the box does with a character.
    enum class Verdict {
        swallowed,   ///< nothing
        letThrough,  ///< what the box itself does with it
        passedOn,    ///< the same, when nobody else in the window's own line takes it first
        endsEditing, ///< lets it through, after the values were read from the controls
    };

    /// The text of the box, and its selection: the first character's index and the one behind the last.
    struct Box {
        std::wstring_view text;
        unsigned start;
        unsigned end;
    };

    /// The longest text that typing may give, in characters; a minus may be added to it.
    void setMaximumLength(unsigned characters) { maximumLength_ = characters; }

    Verdict onCharacter(wchar_t character, const Box& box);
    /// Keys that give no character, by their virtual code. The Delete key is swallowed.
    static Verdict onKeyDown(unsigned virtualKey);

private:
    Verdict onPoint(const Box& box) const;
    Verdict onMinus(const Box& box);
    Verdict onDigit(const Box& box);

    unsigned maximumLength_ = 6;
    /// Whether the length was raised by one for a minus.
    bool allowsMinus_ = false;
};

} // namespace qx::controls
