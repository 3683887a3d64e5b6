// Tags: the pairs of lines, a group code and its value, that a text DXF file consists of.
//
// A cursor walks the tags of a stretch of bytes. It never copies, accepts LF and CRLF line ends and padded
// codes, and takes a last line without a line end. Bytes that are no tag end the walk with a fault that says
// where.
#pragma once

#include "dxf/LineEnds.h"
#include "qxexport.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
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

/// What each character of a code line means in each of its three columns: a part of the code, and marks above
/// it. A digit in the first column and a blank in the second one have a mark that can't stand twice.
struct CodeColumns {
    static constexpr std::uint32_t single = 0x1000, wrong = 0x4000, good = 2 * single - 1;

    constexpr CodeColumns() {
        constexpr std::size_t zero = '0', blank = ' ';
        for (auto& column : parts)
            for (std::uint32_t& part : column) part = wrong;
        for (std::uint32_t digit = 0; digit < 10; ++digit) {
            parts[0][zero + digit] = single + 100 * digit;
            parts[1][zero + digit] = 10 * digit;
            parts[2][zero + digit] = digit;
        }
        parts[0][blank] = 0;
        parts[1][blank] = single;
    }
    std::uint32_t parts[3][256]{};
};
inline constexpr CodeColumns codeColumns{};

class TagCursor {
public:
    TagCursor(const char* begin, const char* end) : at_{begin}, end_{end}, lineEnds_{begin, end} {}

    /// False at the end, or at a fault.
    bool next(Tag& tag) {
        if (at_ >= end_) return false;
        tag.begin = at_;
        const char* codeEnd = lineEnds_.next();
        if (!readColumns(at_, codeEnd, tag.code) && !readCode(at_, codeEnd, tag.code))
            return stop(TagFault::codeIsNoNumber);
        if (end_ - codeEnd <= 1) return stop(TagFault::valueIsMissing);
        const char* value = codeEnd + 1;
        const char* valueEnd = lineEnds_.next();
        at_ = tag.end = valueEnd < end_ ? valueEnd + 1 : end_;
        if (valueEnd > value && valueEnd[-1] == '\r') --valueEnd;
        tag.value = {value, static_cast<std::size_t>(valueEnd - value)};
        return true;
    }

    const char* position() const { return at_; }
    TagFault fault() const { return fault_; }

private:
    bool stop(TagFault fault) {
        fault_ = fault;
        end_ = at_;
        return false;
    }

    /// Reads a code line as nearly all programs write it, right-aligned in three columns; false, and nothing
    /// done, for any other.
    static bool readColumns(const char* p, const char* end, int& code) {
        if (end - p != 3 && !(end - p == 4 && p[3] == '\r')) return false;
        const auto part = [&](int i) { return codeColumns.parts[i][static_cast<unsigned char>(p[i])]; };
        const std::uint32_t sum = part(0) + part(1) + part(2);
        if (sum > CodeColumns::good) return false;
        code = static_cast<int>(sum & (CodeColumns::single - 1));
        return true;
    }

    /// Reads any code line; false when it is none.
    QX_HOST_API static bool readCode(const char* p, const char* end, int& code);

    const char* at_;
    const char* end_; ///< of what can be read: at a fault, where it is
    LineEnds lineEnds_;
    TagFault fault_ = TagFault::none;
};

/// Without blanks at either end.
inline std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

/// Appends the digits at `p` to the number and steps over them; eight at a time, as long as there are so
/// many.
inline const char* readDigits(const char* p, const char* end, std::uint64_t& number) {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::uint64_t zeros = 0x3030303030303030u, beyondNine = 0x4646464646464646u,
                            highBits = 0x8080808080808080u, pairs = 0x000000FF000000FFu;
    for (; end - p >= 8; p += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, p, sizeof eight);
        if (((eight + beyondNine) | (eight - zeros)) & highBits) break;
        eight -= zeros;
        eight = eight * 10 + (eight >> 8); // in every other byte two digits
        eight = ((eight & pairs) * 0x000F424000000064u + (eight >> 16 & pairs) * 0x0000271000000001u) >> 32;
        number = number * 100000000 + eight;
    }
    for (; p < end && static_cast<unsigned>(*p - '0') <= 9; ++p)
        number = number * 10 + static_cast<unsigned>(*p - '0');
    return p;
}

/// Digits with at most one point among them, as most numbers are written, when the digits make an integer
/// below 2^53: that integer and the power of ten are exact, so their quotient is the number correctly rounded
/// (Clinger, 1990). False, and nothing done, for everything else.
inline bool readPlainDecimal(std::string_view text, double& value) {
    constexpr double powers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (text.empty() || text.size() > 18) return false; // what is longer has too many digits
    const bool isNegative = text.front() == '-';
    const char* begin = text.data() + isNegative;
    const char* end = text.data() + text.size();
    std::uint64_t digits = 0;
    const char* point = readDigits(begin, end, digits);
    const bool hasPoint = point < end && *point == '.';
    if (readDigits(point + hasPoint, end, digits) != end || end - begin == hasPoint) return false;
    const auto decimals = static_cast<std::size_t>(end - point - hasPoint);
    if (digits >> 53 || decimals >= std::size(powers)) return false;
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

/// A handle as drawings write it.
inline std::string handleText(std::uint64_t handle) {
    char digits[16];
    std::string text{digits, std::to_chars(digits, digits + sizeof digits, handle, 16).ptr};
    for (char& c : text)
        if (c >= 'a') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

} // namespace qx::dxf
