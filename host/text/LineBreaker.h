// Breaks the characters of multiline text into lines, and the lines into runs that can be drawn as one: from
// left to right along each baseline, lines below each other. Time and memory grow with the text, whatever it
// holds.
//
// A line is broken after blanks, and before or behind full-width characters, but never before closing or
// behind opening punctuation; blanks at the break hang over the edge and don't count. What can't be broken
// goes over the edge.
#pragma once

#include "text/multiline.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qx::text {

/// How a character stands. Lengths in drawing units.
struct CharacterStyle {
    double height;
    double widthFactor = 1;
    double spacing = 1;  ///< of neighbours, as a factor; drawn as width
    double slant = 0;    ///< how far the top leans to the right, in heights
    double standing = 0; ///< where a smaller character stands in its line: 0 bottom, 0.5 middle, 1 top
    double rise = 0;     ///< of the baseline over the line's
    bool operator==(const CharacterStyle&) const = default;
};

class LineBreaker {
public:
    /// `format` and `text` must outlive the breaker; `text` is given its characters and runs.
    LineBreaker(const MultilineFormat& format, MultilineText& text) : format_(format), text_(text) {}

    void add(char32_t character, const CharacterStyle& style);
    /// A fraction: two texts above each other, at 70 % of the size. Never broken.
    void addStack(std::u32string_view upper, std::u32string_view lower, const CharacterStyle& style);
    /// `style` gives an empty line its height.
    void endLine(const CharacterStyle& style);

    /// One line: where its runs begin in the text, and how long it is.
    struct Line {
        std::size_t firstRun;
        double width, baseline;
    };
    const std::vector<Line>& lines() const { return lines_; }
    /// Above the first baseline: its top.
    double top() const { return top_; }

private:
    struct Cell {
        char32_t character;
        std::uint32_t style; ///< among styles_
        double begin, end;   ///< along the line
    };
    struct LineSize {
        double letters, top;
    };
    void append(char32_t character);
    void setStyle(const CharacterStyle& style);
    double placeAt(double x, std::u32string_view characters, const CharacterStyle& style);
    void wrap();
    void finish(std::size_t cells, double emptyHeight);
    LineSize sizeOf(std::size_t cells, double emptyHeight) const;
    void addRun(std::size_t begin, std::size_t end, double letters);
    bool mayBreakBefore(char32_t character) const;

    const MultilineFormat& format_;
    MultilineText& text_;
    std::vector<CharacterStyle> styles_;
    std::vector<Cell> cells_; ///< of the current line
    std::vector<Line> lines_;
    std::u32string run_;
    std::size_t breakAt_ = 0; ///< cell with which a new line could begin; 0: none
    double x_ = 0, top_ = 0;
};

} // namespace qx::text
