#include "text/shownText.h"

#include <algorithm>

namespace qx::text {
namespace {

constexpr char32_t diameter = U'\u2205', degree = U'\u00B0', plusMinus = U'\u00B1';

bool isDigit(char32_t c) { return c >= U'0' && c <= U'9'; }

// Stroke fonts keep the three drafting signs at 127 to 129; all other numbers are taken as Unicode.
char32_t characterOf(char32_t number) {
    switch (number) {
    case 127:
        return degree;
    case 128:
        return plusMinus;
    case 129:
        return diameter;
    default:
        return number;
    }
}

} // namespace

std::size_t expandPercentCode(std::u32string_view rest, std::u32string& shown) {
    if (rest.empty()) return 0;
    switch (rest[0]) {
    case U'c':
    case U'C':
        shown += diameter;
        return 1;
    case U'd':
    case U'D':
        shown += degree;
        return 1;
    case U'p':
    case U'P':
        shown += plusMinus;
        return 1;
    case U'%':
        shown += U'%';
        return 1;
    case U'u':
    case U'U':
    case U'o':
    case U'O':
    case U'k':
    case U'K':
        return 1;
    default:
        break;
    }
    char32_t number = 0;
    std::size_t used = 0;
    for (; used < std::min<std::size_t>(rest.size(), 3) && isDigit(rest[used]); ++used)
        number = number * 10 + (rest[used] - U'0');
    if (used > 0 && number > 0) shown += characterOf(number);
    return used;
}

std::u32string shownText(std::u32string_view raw) {
    std::u32string shown;
    shown.reserve(raw.size());
    while (!raw.empty()) {
        const std::size_t used = raw.starts_with(U"%%") ? expandPercentCode(raw.substr(2), shown) : 0;
        if (used == 0) shown += raw[0];
        raw.remove_prefix(used == 0 ? 1 : used + 2);
    }
    return shown;
}

} // namespace qx::text
