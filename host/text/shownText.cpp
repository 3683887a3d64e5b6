#include "text/shownText.h"

#include <algorithm>
#include <iterator>

namespace qx::text {
namespace {

constexpr char32_t diameter = U'\u2205', degree = U'\u00B0', plusMinus = U'\u00B1';

struct Sign {
    char32_t code, shown;
};
constexpr Sign signs[] = {{U'c', diameter},  {U'C', diameter},  {U'd', degree}, {U'D', degree},
                          {U'p', plusMinus}, {U'P', plusMinus}, {U'%', U'%'}};
constexpr std::u32string_view switches = U"uUoOkK"; // of lines through the text

bool isDigit(char32_t c) { return c >= U'0' && c <= U'9'; }

// Stroke fonts keep the three drafting signs at 127 to 129; all other numbers are taken as Unicode.
char32_t characterOf(char32_t number) {
    constexpr char32_t first = 127, drafting[] = {degree, plusMinus, diameter};
    return number >= first && number < first + std::size(drafting) ? drafting[number - first] : number;
}

} // namespace

std::size_t expandPercentCode(std::u32string_view rest, std::u32string& shown) {
    for (const auto& [code, sign] : signs)
        if (rest.starts_with(code)) {
            shown += sign;
            return 1;
        }
    if (!rest.empty() && switches.find(rest[0]) != switches.npos) return 1;
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
