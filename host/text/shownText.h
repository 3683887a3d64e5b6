// What single-line text looks like: its special codes replaced by the characters they stand for.
#pragma once

#include "qxexport.h"

#include <string>
#include <string_view>

namespace qx::text {

/// Expands %%c (diameter), %%d (degree), %%p (plus-minus), %%% (percent) and %%n, %%nn, %%nnn (a character by
/// its decimal number); drops %%u, %%o and %%k, which only switch a line through the text. Letters in either
/// case. Anything else stays as it is written.
QX_HOST_API std::u32string shownText(std::u32string_view raw);

} // namespace qx::text
