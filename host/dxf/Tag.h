// Tags: the pairs of lines, a group code and its value, that a text DXF file consists of.
//
// A cursor walks the tags of a stretch of bytes. It never copies, accepts LF and CRLF line ends and padded
// codes, and takes a last line without a line end. Bytes that are no tag end the walk with a fault that says
// where.
#pragma once

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <optional>
#include <string_view>

namespace qx::dxf {

struct Tag {
    int code = 0;
    std::string_view value;      ///< without the line end; blanks kept
    const char* begin = nullptr; ///< first byte of the code line
    const char* end = nullptr;   ///< one past the value's line end
};

enum class TagFault : std::uint8_t { none, codeIsNoNumber, valueIsMissing };

/// The next line feed, or null. Lines are short: sixteen bytes at a time beat a search that is made for long
/// ones.
inline const char* findLineEnd(const char* p, const char* end) {
    static_assert(std::endian::native == std::endian::little);
    // In the result the lowest bit that is set belongs to the first line feed among eight bytes.
    const auto lineFeeds = [](const char* at) {
        constexpr std::uint64_t ones = 0x0101010101010101u, highBits = ones << 7;
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        word ^= ones * '\n';
        return (word - ones) & ~word & highBits;
    };
    for (; end - p >= 16; p += 16) {
        const std::uint64_t first = lineFeeds(p), second = lineFeeds(p + 8);
        if (first | second)
            return p + ((first ? std::countr_zero(first) : 64 + std::countr_zero(second)) >> 3);
    }
    return static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)));
}

class TagCursor {
public:
    TagCursor(const char* begin, const char* end) : at_{begin}, end_{end} {}

    /// False at the end, or at a fault.
    bool next(Tag& tag) {
        if (at_ >= end_) return false;
        tag.begin = at_;
        const char* p = at_;
        if (!readColumns(p, tag.code) && !readCode(p, tag.code)) return stop(TagFault::codeIsNoNumber);
        if (p >= end_) return stop(TagFault::valueIsMissing);
        const char* lineEnd = findLineEnd(p, end_);
        const char* valueEnd = lineEnd ? lineEnd : end_;
        tag.end = lineEnd ? lineEnd + 1 : end_;
        if (valueEnd > p && valueEnd[-1] == '\r') --valueEnd;
        tag.value = {p, static_cast<std::size_t>(valueEnd - p)};
        at_ = tag.end;
        return true;
    }

    const char* position() const { return at_; }
    TagFault fault() const { return fault_; }

private:
    bool stop(TagFault fault) {
        fault_ = fault;
        return false;
    }

    /// Reads a code line as nearly all programs write it, right-aligned in three columns, and steps over it;
    /// false, and nothing done, for any other.
    bool readColumns(const char*& p, int& code) const {
        if (end_ - p < 5) return false;
        const bool hasReturn = p[3] == '\r';
        if (p[3 + hasReturn] != '\n') return false;
        const auto hundreds = static_cast<unsigned>(p[0] - '0'), tens = static_cast<unsigned>(p[1] - '0'),
                   ones = static_cast<unsigned>(p[2] - '0');
        if (ones > 9) return false;
        if (tens <= 9 && (hundreds <= 9 || p[0] == ' '))
            code = static_cast<int>((hundreds <= 9 ? hundreds * 100 : 0) + tens * 10 + ones);
        else if (p[0] == ' ' && p[1] == ' ')
            code = static_cast<int>(ones);
        else
            return false;
        p += 4 + hasReturn;
        return true;
    }

    /// Reads the code and steps over its line end.
    bool readCode(const char*& p, int& code) const {
        while (p < end_ && (*p == ' ' || *p == '\t')) ++p;
        const bool negative = p < end_ && *p == '-';
        if (negative) ++p;
        int value = 0, digits = 0;
        for (; p < end_ && static_cast<unsigned>(*p - '0') < 10u && digits < 6; ++p, ++digits)
            value = value * 10 + (*p - '0');
        if (digits == 0) return false;
        while (p < end_ && (*p == ' ' || *p == '\t' || *p == '\r')) ++p;
        if (p < end_ && *p != '\n') return false;
        if (p < end_) ++p;
        code = negative ? -value : value;
        return true;
    }

    const char* at_;
    const char* end_;
    TagFault fault_ = TagFault::none;
};

/// Without blanks at either end.
inline std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

/// Digits with at most one point among them, as most numbers are written, when the digits make an integer
/// below 2^53: that integer and the power of ten are exact, so their quotient is the number correctly rounded
/// (Clinger, 1990). False, and nothing done, for everything else.
inline bool readPlainDecimal(std::string_view text, double& value) {
    constexpr double powers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (text.empty() || text.size() > 18) return false; // what is longer has too many digits
    const bool isNegative = text.front() == '-';
    std::uint64_t digits = 0;
    std::size_t point = text.size();
    for (std::size_t i = isNegative; i < text.size(); ++i) {
        const auto digit = static_cast<unsigned>(text[i] - '0');
        if (digit <= 9)
            digits = digits * 10 + digit;
        else if (text[i] == '.' && point == text.size())
            point = i;
        else
            return false;
    }
    const std::size_t decimals = point == text.size() ? 0 : text.size() - point - 1;
    if (digits >> 53 || decimals >= std::size(powers) || text.size() - isNegative == (point < text.size()))
        return false;
    value = static_cast<double>(digits) / powers[decimals];
    if (isNegative) value = -value;
    return true;
}

/// A finite number as DXF writes it; nothing for text that is none, or that goes on after the number.
inline std::optional<double> toReal(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    if (readPlainDecimal(text, value)) return value;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || !std::isfinite(value)) return std::nullopt;
    for (const char* p = stop; p < end; ++p)
        if (*p != ' ' && *p != '\t') return std::nullopt;
    return value;
}

/// A handle: hexadecimal digits; nothing for text that is none.
inline std::optional<std::uint64_t> toHandle(std::string_view text) {
    text = trimmed(text);
    std::uint64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, 16);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return value;
}

} // namespace qx::dxf
