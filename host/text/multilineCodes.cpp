#include "text/multilineCodes.h"

#include "text/measure.h"
#include "text/shownText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

namespace qx::text {
namespace {

constexpr char32_t hardBlank = U'\u00A0';

bool isAmong(std::u32string_view characters, char32_t c) {
    return characters.find(c) != std::u32string_view::npos;
}

bool isControl(char32_t c) { return (c < 0x20 && c != U'\t') || c == 0x7F; }

/// "2.5", or "0.7x" for a factor.
struct Size {
    double value;
    bool isFactor;
};

std::optional<Size> sizeIn(std::u32string_view parameter) {
    constexpr std::size_t longest = 40;
    char text[longest];
    std::size_t length = 0;
    for (const char32_t c : parameter.substr(0, longest))
        if (c != U' ') text[length++] = c < 0x80 ? static_cast<char>(c) : '?';
    Size size{0, length > 0 && (text[length - 1] == 'x' || text[length - 1] == 'X')};
    const char* end = text + length;
    const auto [stop, error] = std::from_chars(text, end, size.value);
    if (error != std::errc{} || stop + size.isFactor != end || !std::isfinite(size.value))
        return std::nullopt;
    return size;
}

class Reader {
public:
    Reader(std::u32string_view raw, const MultilineFormat& format, LineBreaker& lines)
        : rest_{raw}, lines_{lines}, nominal_{format.height}, style_{format.height} {
        if (format.widthFactor > 0) readSize(U'W', {format.widthFactor, false});
        readSize(U'Q', {format.obliqueDegrees, false});
    }

    void read() {
        while (!rest_.empty()) readNext();
        lines_.endLine(style_);
    }

private:
    char32_t take() {
        const char32_t c = rest_[0];
        rest_.remove_prefix(1);
        return c;
    }

    void show(char32_t c) {
        if (!isControl(c)) lines_.add(c, style_);
    }

    void readNext();
    void readCode();
    void readSize(char32_t code, const Size& size);
    void readCaret();
    void readPercent();
    void readStack();
    void openGroup();
    void closeGroup();
    std::optional<std::u32string_view> parameter();

    std::u32string_view rest_;
    LineBreaker& lines_;
    double nominal_;
    CharacterStyle style_;
    std::vector<CharacterStyle> outer_; ///< of the groups that are open
    std::size_t tooDeep_ = 0;           ///< groups open beyond those
};

void Reader::readNext() {
    const char32_t c = take();
    if (c == U'\\' && !rest_.empty())
        readCode();
    else if (c == U'{')
        openGroup();
    else if (c == U'}')
        closeGroup();
    else if (c == U'^' && !rest_.empty())
        readCaret();
    else if (c == U'%' && rest_.starts_with(U'%'))
        readPercent();
    else
        show(c);
}

void Reader::readCode() {
    const char32_t code = take();
    if (isAmong(U"PXN", code))
        lines_.endLine(style_);
    else if (code == U'~')
        show(hardBlank);
    else if (code == U'S')
        readStack();
    else if (isAmong(U"HWQTA", code)) {
        const auto found = parameter();
        if (const auto size = found ? sizeIn(*found) : std::nullopt) readSize(code, *size);
    } else if (isAmong(U"CcFfp", code))
        parameter();
    else if (!isAmong(U"LlOoKk", code))
        show(code);
}

// Values that mean nothing leave things as they are.
void Reader::readSize(char32_t code, const Size& size) {
    constexpr double mostTimes = 1e6;
    const bool isPositive = size.value > 0;
    if (code == U'H' && isPositive)
        style_.height = std::clamp(size.isFactor ? style_.height * size.value : size.value,
                                   nominal_ / mostTimes, nominal_ * mostTimes);
    else if (code == U'W' && isPositive)
        style_.widthFactor =
            std::clamp(size.isFactor ? style_.widthFactor * size.value : size.value, 0.01, 100.0);
    else if (code == U'T' && isPositive)
        style_.spacing = std::clamp(size.value, 0.1, 10.0);
    else if (code == U'Q')
        style_.slant = slantOf(size.value);
    else if (code == U'A')
        style_.standing = std::clamp(std::floor(size.value), 0.0, 2.0) / 2;
}

void Reader::readCaret() {
    const char32_t c = rest_[0];
    if (!isAmong(U"IJM ", c)) return show(U'^');
    rest_.remove_prefix(1);
    if (c == U'I')
        show(U'\t');
    else if (c == U' ')
        show(U'^');
    else if (c == U'J' || !rest_.starts_with(U"^J"))
        lines_.endLine(style_);
}

void Reader::readPercent() {
    std::u32string shown;
    const std::size_t used = expandPercentCode(rest_.substr(1), shown);
    if (used == 0) return show(U'%');
    for (const char32_t c : shown) show(c);
    rest_.remove_prefix(used + 1);
}

// Up to the semicolon; another code or a group ends a fraction that has none.
void Reader::readStack() {
    std::u32string halves[2];
    int half = 0;
    for (; !rest_.empty() && !isAmong(U"{};", rest_[0]); rest_.remove_prefix(1)) {
        const bool isEscape = rest_[0] == U'\\';
        if (isEscape && (rest_.size() < 2 || !isAmong(U"\\{};^/#", rest_[1]))) break;
        if (isEscape) rest_.remove_prefix(1);
        if (!isEscape && half == 0 && isAmong(U"^/#", rest_[0]))
            half = 1;
        else if (!isControl(rest_[0]) && !(halves[half].empty() && rest_[0] == U' '))
            halves[half] += rest_[0];
    }
    if (rest_.starts_with(U';')) rest_.remove_prefix(1);
    for (std::u32string& each : halves) each = shownText(each);
    if (half == 0)
        for (const char32_t c : halves[0]) show(c);
    else
        lines_.addStack(halves[0], halves[1], style_);
}

// Nobody nests groups this deep; beyond it they are only counted, so that memory stays bounded.
void Reader::openGroup() {
    constexpr std::size_t deepest = 256;
    if (outer_.size() < deepest)
        outer_.push_back(style_);
    else
        ++tooDeep_;
}

void Reader::closeGroup() {
    if (tooDeep_ > 0)
        --tooDeep_;
    else if (!outer_.empty()) {
        style_ = outer_.back();
        outer_.pop_back();
    }
}

std::optional<std::u32string_view> Reader::parameter() {
    const std::size_t end = rest_.find_first_of(U";\\{}");
    if (end == std::u32string_view::npos || rest_[end] != U';') return std::nullopt;
    const std::u32string_view found = rest_.substr(0, end);
    rest_.remove_prefix(end + 1);
    return found;
}

} // namespace

void readMultiline(std::u32string_view raw, const MultilineFormat& format, LineBreaker& lines) {
    Reader{raw, format, lines}.read();
}

} // namespace qx::text
