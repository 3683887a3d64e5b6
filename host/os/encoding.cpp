#include "encoding.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

namespace qx::os {
namespace {

constexpr char32_t replacement = 0xFFFD;

constexpr bool isScalar(char32_t c) { return c < 0xD800 || (c >= 0xE000 && c <= 0x10FFFF); }

struct Lead {
    int length;       // bytes of the whole sequence, 0 for a byte that begins none
    char32_t payload; // bits that the lead byte carries
    char32_t least;   // smallest code point that needs this length
};

constexpr Lead leadOf(unsigned char byte) {
    if (byte < 0x80) return {1, byte, 0};
    if (byte >= 0xC0 && byte < 0xE0) return {2, byte & 0x1Fu, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {3, byte & 0x0Fu, 0x800};
    if (byte >= 0xF0 && byte < 0xF8) return {4, byte & 0x07u, 0x10000};
    return {0, 0, 0};
}

/// Takes one code point off the front of `rest`; of a broken sequence only its first byte.
char32_t takeCodePoint(std::string_view& rest) {
    const Lead lead = leadOf(static_cast<unsigned char>(rest.front()));
    const auto length = static_cast<std::size_t>(lead.length);
    char32_t c = lead.payload;
    bool good = length > 0 && length <= rest.size();
    for (std::size_t i = 1; good && i < length; ++i) {
        const auto byte = static_cast<unsigned char>(rest[i]);
        good = (byte & 0xC0u) == 0x80u;
        c = c << 6 | (byte & 0x3Fu);
    }
    good = good && c >= lead.least && isScalar(c);
    rest.remove_prefix(good ? length : 1);
    return good ? c : replacement;
}

void append(std::string& out, char32_t c) {
    const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (c < 0x80) return put(c);
    if (c < 0x800) {
        put(0xC0 | c >> 6);
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12);
        put(0x80 | (c >> 6 & 0x3F));
    } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 0x3F));
        put(0x80 | (c >> 6 & 0x3F));
    }
    put(0x80 | (c & 0x3F));
}

/// Takes one code point off the front of a wide string: a surrogate pair where units have two bytes.
char32_t takeCodePoint(std::wstring_view& rest) {
    const auto unit = static_cast<char32_t>(rest.front());
    rest.remove_prefix(1);
    if constexpr (sizeof(wchar_t) == 2) {
        const auto next = rest.empty() ? U'\0' : static_cast<char32_t>(rest.front());
        if (unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            rest.remove_prefix(1);
            return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
        }
    }
    return isScalar(unit) ? unit : replacement;
}

void append(std::wstring& out, char32_t c) {
    if (sizeof(wchar_t) == 2 && c >= 0x10000) {
        out.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
        c = 0xDC00 + ((c - 0x10000) & 0x3FF);
    }
    out.push_back(static_cast<wchar_t>(c));
}

} // namespace

std::u32string toUtf32(std::string_view utf8) {
    std::u32string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) out.push_back(takeCodePoint(utf8));
    return out;
}

std::wstring toWide(std::string_view utf8) {
    std::wstring out;
    out.reserve(utf8.size());
    while (!utf8.empty()) append(out, takeCodePoint(utf8));
    return out;
}

std::string toUtf8(std::u32string_view codePoints) {
    std::string out;
    out.reserve(codePoints.size());
    for (const char32_t c : codePoints) append(out, isScalar(c) ? c : replacement);
    return out;
}

std::string toUtf8(std::wstring_view wide) {
    std::string out;
    out.reserve(wide.size());
    while (!wide.empty()) append(out, takeCodePoint(wide));
    return out;
}

std::size_t asciiLength(std::string_view bytes) {
    constexpr std::size_t blockSize = 64, wordSize = 8;
    constexpr std::uint64_t highBits = 0x8080808080808080u;
    static_assert(std::endian::native == std::endian::little);
    std::size_t at = 0;
    for (; at + blockSize <= bytes.size(); at += blockSize) {
        std::array<std::uint64_t, blockSize / wordSize> words;
        std::memcpy(words.data(), bytes.data() + at, blockSize);
        std::uint64_t all = 0;
        for (const std::uint64_t each : words) all |= each;
        if (all & highBits) break;
    }
    for (; at + wordSize <= bytes.size(); at += wordSize) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, wordSize);
        if (word & highBits) return at + static_cast<std::size_t>(std::countr_zero(word & highBits)) / 8;
    }
    while (at < bytes.size() && (bytes[at] & 0x80) == 0) ++at;
    return at;
}

std::string withoutControls(std::string_view utf8, std::string_view kept) {
    std::string shown;
    shown.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto first = static_cast<unsigned char>(utf8.front());
        // Those above ASCII are U+0080 to U+009F.
        const bool isLong = first == 0xC2 && utf8.size() > 1 && static_cast<unsigned char>(utf8[1]) < 0xA0;
        const bool isControl =
            isLong || first == 0x7F || (first < 0x20 && kept.find(utf8.front()) == kept.npos);
        if (isControl)
            shown += "\uFFFD";
        else
            shown += utf8.front();
        utf8.remove_prefix(isLong ? 2 : 1);
    }
    return shown;
}

bool isAscii(std::string_view bytes) { return asciiLength(bytes) == bytes.size(); }

std::size_t brokenUtf8In(std::string_view bytes) {
    std::string_view rest = bytes;
    while (true) {
        rest.remove_prefix(asciiLength(rest));
        if (rest.empty()) return bytes.size();
        const std::size_t left = rest.size();
        // A mark that was in the text is three bytes long; one that stands in for a byte leaves the others.
        if (takeCodePoint(rest) == replacement && left - rest.size() == 1) return bytes.size() - left;
    }
}

Converter::Converter(Converter&& other) noexcept
    : handle_{std::exchange(other.handle_, nullptr)}, known_{other.known_} {}

Converter& Converter::operator=(Converter&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(known_, other.known_);
    return *this;
}

std::string Converter::toUtf8(std::string_view bytes) {
    // Every page agrees with ASCII, and most strings of a drawing need no more.
    return isAscii(bytes) ? std::string{bytes} : decoded(bytes);
}

} // namespace qx::os
