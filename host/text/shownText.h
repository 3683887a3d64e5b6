// What single-line text looks like: its special codes replaced by the characters they stand for.
#pragma once

#include "qxexport.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace qx::text {

/// Bytes of a text that are laid out, measured and drawn, codes included; nobody reads on. What follows is
/// kept, but the time and memory for one text stay bounded, whatever a file holds.
constexpr std::size_t longestShown = std::size_t{1} << 20;

/// Expands %%c (diameter), %%d (degree), %%p (plus-minus), %%% (percent) and %%n, %%nn, %%nnn (a character by
/// its decimal number); drops %%u, %%o and %%k, which only switch a line through the text. Letters in either
/// case. Anything else stays as it is written.
QX_HOST_API std::u32string shownText(std::u32string_view raw);

/// Appends what the code after a "%%" stands for; returns how many of the characters after it belong to the
/// code, 0 when it is none.
std::size_t expandPercentCode(std::u32string_view rest, std::u32string& shown);

} // namespace qx::text
