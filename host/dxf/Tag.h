// Tags: the pairs of lines, a group code and its value, that a text DXF file consists of.
//
// A cursor walks the tags of a stretch of bytes. It never copies, accepts LF and CRLF line ends and padded
// codes, and takes a last line without a line end. Bytes that are no tag end the walk with a fault that says
// where.
#pragma once

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
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

class TagCursor {
public:
    TagCursor(const char* begin, const char* end) : at_{begin}, end_{end} {}

    /// False at the end, or at a fault.
    bool next(Tag& tag) {
        if (at_ >= end_) return false;
        tag.begin = at_;
        const char* p = at_;
        if (!readCode(p, tag.code)) return stop(TagFault::codeIsNoNumber);
        if (p >= end_) return stop(TagFault::valueIsMissing);
        const char* lineEnd =
            static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end_ - p)));
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

/// A finite number as DXF writes it; nothing for text that is none, or that goes on after the number.
inline std::optional<double> toReal(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
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
