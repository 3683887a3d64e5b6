#include "text/LineBreaker.h"

#include "os/encoding.h"
#include "text/measure.h"

#include <algorithm>
#include <cmath>

namespace qx::text {
namespace {

constexpr double stackSize = 0.7, stackGap = 0.2; // of the letters around the stack
constexpr double tabWidth = 4;                    // in nominal heights

constexpr std::u32string_view closing = U")]}>,.;:!?%\u2019\u201D\u2026\u3001\u3002\u3009\u300B\u300D\u300F"
                                        U"\u3011\u3015\uFF01\uFF09\uFF0C\uFF0E\uFF1A\uFF1B\uFF1F\uFF3D\uFF5D";
constexpr std::u32string_view opening =
    U"([{<\u2018\u201C\u3008\u300A\u300C\u300E\u3010\u3014\uFF08\uFF3B\uFF5B";

bool isAmong(std::u32string_view characters, char32_t c) {
    return characters.find(c) != std::u32string_view::npos;
}

bool isBlank(char32_t c) { return c == U' ' || c == U'\t' || c == U'\u3000'; }

} // namespace

void LineBreaker::setStyle(const CharacterStyle& style) {
    if (cells_.empty()) styles_.clear();
    if (styles_.empty() || styles_.back() != style) styles_.push_back(style);
}

void LineBreaker::append(char32_t character) {
    const CharacterStyle& style = styles_.back();
    const double begin = x_;
    if (character == U'\t') {
        const double stop = tabWidth * format_.height;
        x_ = (std::floor(x_ / stop) + 1) * stop;
    } else {
        x_ += advanceOf(character) * style.height * style.widthFactor * style.spacing;
    }
    cells_.push_back({character, static_cast<std::uint32_t>(styles_.size() - 1), begin, x_});
}

// What is seldom so is asked first: most characters are narrow, and so are their neighbours.
bool LineBreaker::mayBreakBefore(char32_t character) const {
    const double advance = advanceOf(character);
    if (cells_.empty() || !(advance > 0)) return false;
    const char32_t before = cells_.back().character;
    if (advance < 1 && advanceOf(before) < 1) return false;
    return !isBlank(character) && !isAmong(closing, character) && !isAmong(opening, before);
}

void LineBreaker::add(char32_t character, const CharacterStyle& style) {
    setStyle(style);
    if (mayBreakBefore(character)) breakAt_ = cells_.size();
    append(character);
    if (isBlank(character))
        breakAt_ = cells_.size();
    else
        wrap();
}

void LineBreaker::addStack(std::u32string_view upper, std::u32string_view lower,
                           const CharacterStyle& style) {
    CharacterStyle half = style;
    half.height *= stackSize;
    half.standing = 0;
    const double size = (2 * stackSize + stackGap) * style.height, begin = x_;
    half.rise = style.rise + style.standing * (style.height - size);
    const double lowerEnd = placeAt(begin, lower, half);
    half.rise += (stackSize + stackGap) * style.height;
    x_ = std::max(lowerEnd, placeAt(begin, upper, half));
    wrap();
    setStyle(style);
}

double LineBreaker::placeAt(double x, std::u32string_view characters, const CharacterStyle& style) {
    x_ = x;
    setStyle(style);
    for (const char32_t c : characters) append(c);
    return x_;
}

// What comes behind the break fits, or can't be broken: it holds no other place for a break.
void LineBreaker::wrap() {
    constexpr double rounding = 1 + 1e-9;
    if (!(format_.width > 0) || x_ <= format_.width * rounding) return;
    if (breakAt_ == 0 || breakAt_ == cells_.size()) return;
    std::vector<Cell> rest{cells_.begin() + static_cast<std::ptrdiff_t>(breakAt_), cells_.end()};
    finish(breakAt_, format_.height);
    const double begin = rest.front().begin;
    for (Cell& each : rest) each.begin -= begin, each.end -= begin;
    x_ -= begin;
    cells_ = std::move(rest);
}

void LineBreaker::endLine(const CharacterStyle& style) {
    finish(cells_.size(), style.height);
    x_ = 0;
}

LineBreaker::LineSize LineBreaker::sizeOf(std::size_t cells, double emptyHeight) const {
    LineSize size{0, 0};
    for (std::size_t i = 0; i < cells; ++i) {
        const CharacterStyle& style = styles_[cells_[i].style];
        if (style.rise == 0) size.letters = std::max(size.letters, style.height);
        size.top = std::max(size.top, style.rise + style.height);
    }
    if (cells == 0) size.letters = emptyHeight;
    size.top = std::max(size.top, size.letters);
    return size;
}

// Baselines are counted downwards from the first one here: the text's place is found when all lines are
// known.
void LineBreaker::finish(std::size_t cells, double emptyHeight) {
    constexpr double lineAdvance = 5.0 / 3;
    const LineSize size = sizeOf(cells, emptyHeight);
    if (lines_.empty()) top_ = size.top;
    const double step =
        lineAdvance * format_.lineSpacing * (format_.hasExactSpacing ? format_.height : size.top);
    const double baseline = lines_.empty() ? 0 : lines_.back().baseline - step;
    double width = 0;
    for (std::size_t i = 0; i < cells; ++i)
        if (!isBlank(cells_[i].character)) width = std::max(width, cells_[i].end);
    lines_.push_back({text_.runs.size(), width, baseline});
    for (std::size_t begin = 0, end = 0; begin < cells; begin = end) {
        const auto goesOn = [&](const Cell& cell) {
            return cell.style == cells_[begin].style && cell.character != U'\t';
        };
        for (end = begin + 1; end < cells && goesOn(cells_[end]);) ++end;
        addRun(begin, end, size.letters);
    }
    cells_.clear();
    breakAt_ = 0;
}

void LineBreaker::addRun(std::size_t begin, std::size_t end, double letters) {
    if (cells_[begin].character == U'\t') ++begin;
    if (begin == end) return;
    run_.clear();
    for (std::size_t i = begin; i < end; ++i) run_ += cells_[i].character;
    const TextExtent extent = measure(run_);
    if (extent.blank) return;
    const CharacterStyle& style = styles_[cells_[begin].style];
    const double rise = style.rise + style.standing * std::max(0.0, letters - style.height);
    const std::string bytes = os::toUtf8(run_);
    text_.runs.push_back({cells_[begin].begin, lines_.back().baseline + rise, style.height,
                          style.widthFactor * style.spacing, style.slant, extent, text_.characters.size(),
                          bytes.size()});
    text_.characters += bytes;
}

} // namespace qx::text
