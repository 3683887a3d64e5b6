#include "draw/textStretches.h"

#include "dxf/Encoding.h"
#include "os/encoding.h"
#include "text/shownText.h"

#include <algorithm>

namespace qx::draw {
namespace {

std::u32string shown(const shape::TextRun& run) {
    const auto* encoding = static_cast<const dxf::Encoding*>(run.encoding);
    return encoding ? text::shownText(encoding->decode(run.bytes)) : os::toUtf32(run.bytes);
}

void dropOuterSpaces(TextStretch& stretch) {
    const double space = text::measure(U" ").advance;
    const std::size_t first = std::min(stretch.characters.find_first_not_of(U' '), stretch.characters.size());
    stretch.begin += space * static_cast<double>(first);
    const std::size_t last = stretch.characters.find_last_not_of(U' ') + 1;
    stretch.advance -= space * static_cast<double>(first + stretch.characters.size() - last);
    stretch.characters = stretch.characters.substr(first, last - std::min(first, last));
}

} // namespace

std::vector<TextStretch> stretchesOf(const shape::TextRun& run) {
    std::vector<TextStretch> all;
    double begin = 0;
    for (const char32_t c : shown(run)) {
        const double advance = text::measure({&c, 1}).advance;
        const bool isFullWidth = advance >= 1;
        const bool goesOn = !all.empty() && (advance == 0 || all.back().isFullWidth == isFullWidth);
        if (!isControl(c)) {
            if (!goesOn) all.push_back({{}, begin, 0, isFullWidth});
            all.back().characters += c;
            all.back().advance = begin + advance - all.back().begin;
        }
        begin += advance;
    }
    std::ranges::for_each(all, dropOuterSpaces);
    std::erase_if(all, [](const TextStretch& each) { return each.characters.empty(); });
    return all;
}

} // namespace qx::draw
