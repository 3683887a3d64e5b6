// The codes inside multiline text: which characters it shows, and how they stand.
//
//     \P \X \N  new line             \~        blank that is no place for a break
//     \\ \{ \}  the character        { }       what changes inside ends with the group
//     \H \W     height, width factor \Q \T     obliquing in degrees, distance of characters
//     \A        standing in the line \S        fraction, its halves parted by ^, / or #
//     %%c %%d %%p %%nnn              as in single-line text
//     ^I ^J ^M  tab, new line        "^ "      the caret itself
//
// Colours, fonts, paragraph settings and lines through the text (\C \c \F \f \p \L \l \O \o \K \k) are read
// and not shown. A code that lacks its closing semicolon is dropped and what follows it is shown; of an
// unknown code the letter is shown. \U+XXXX and \M+nXXXX were replaced when the text was decoded.
#pragma once

#include "text/LineBreaker.h"

#include <string_view>

namespace qx::text {

/// Hands everything to the breaker and ends the last line. Heights that codes ask for are kept within a
/// millionth and a million times the nominal height, other factors within what can be drawn.
void readMultiline(std::u32string_view raw, const MultilineFormat& format, LineBreaker& lines);

} // namespace qx::text
