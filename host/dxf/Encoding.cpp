#include "dxf/Encoding.h"

#include "os/encoding.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace qx::dxf {

namespace {

/// The value of `digits` hexadecimal digits at the start of the text; nothing when there are fewer.
std::optional<char32_t> hexAt(std::u32string_view text, std::size_t digits) {
    if (text.size() < digits) return std::nullopt;
    char32_t value = 0;
    for (char32_t c : text.substr(0, digits)) {
        if (c > 0x7f || !std::isxdigit(static_cast<int>(c))) return std::nullopt;
        value = value * 16 + (c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
    }
    return value;
}

/// Two bytes of one of the double-byte code pages that \M+ names by a digit.
std::optional<char32_t> doubleByte(char32_t page, char32_t bytes) {
    static const char* const pages[] = {"ANSI_932", "ANSI_950", "ANSI_949", "ANSI_1361", "ANSI_936"};
    if (page < '1' || page > '5') return std::nullopt;
    static std::map<char32_t, os::Converter> converters;
    const auto known = converters.try_emplace(page, pages[page - '1']).first;
    const char both[] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xff)};
    const std::u32string decoded = os::toUtf32(known->second.toUtf8({both, 2}));
    return decoded.size() == 1 ? std::optional{decoded[0]} : std::nullopt;
}

struct Escape {
    char32_t character;
    std::size_t length;
};

/// Two escapes that are the halves of a surrogate pair make one character.
Escape joined(const Escape& first, std::u32string_view text) {
    const std::u32string_view rest = text.substr(first.length);
    if (first.character < 0xd800 || first.character > 0xdbff) return first;
    if (!rest.starts_with(U"\\U+") && !rest.starts_with(U"\\u+")) return first;
    const auto low = hexAt(rest.substr(3), 4);
    if (!low || *low < 0xdc00 || *low > 0xdfff) return first;
    return {0x10000 + ((first.character - 0xd800) << 10) + (*low - 0xdc00), 2 * first.length};
}

/// \U+XXXX or \M+nXXXX at the start of the text.
std::optional<Escape> escapeAt(std::u32string_view text) {
    const bool isUnicode = text.starts_with(U"\\U+") || text.starts_with(U"\\u+");
    const bool isDoubleByte = text.starts_with(U"\\M+") || text.starts_with(U"\\m+");
    if (isUnicode)
        if (const auto value = hexAt(text.substr(3), 4)) return joined({*value, 7}, text);
    if (isDoubleByte && text.size() > 4)
        if (const auto bytes = hexAt(text.substr(4), 4))
            if (const auto value = doubleByte(text[3], *bytes)) return Escape{*value, 8};
    return std::nullopt;
}

std::u32string withoutEscapes(std::u32string text) {
    if (text.find(U'\\') == std::u32string::npos) return text;
    std::u32string plain;
    for (std::size_t i = 0; i < text.size();) {
        const auto escape = text[i] == U'\\' ? escapeAt(std::u32string_view{text}.substr(i)) : std::nullopt;
        plain += escape ? escape->character : text[i];
        i += escape ? escape->length : 1;
    }
    return plain;
}

std::u32string withoutMultilineEscapes(std::u32string text) {
    if (text.find(U'\\') == std::u32string::npos) return text;
    std::u32string plain;
    for (std::size_t i = 0; i < text.size();) {
        const std::u32string_view rest = std::u32string_view{text}.substr(i);
        const auto escape = rest[0] == U'\\' ? escapeAt(rest) : std::nullopt;
        const std::size_t length = escape ? escape->length : rest.starts_with(U"\\\\") ? 2 : 1;
        if (escape && std::u32string_view{U"\\{}"}.find(escape->character) != std::u32string_view::npos)
            plain += U'\\';
        if (escape)
            plain += escape->character;
        else
            plain += rest.substr(0, length);
        i += length;
    }
    return plain;
}

std::string unicodeEscape(char32_t utf16) {
    char text[16];
    std::snprintf(text, sizeof text, "\\U+%04X", static_cast<unsigned>(utf16));
    return text;
}

std::string escaped(char32_t character) {
    if (character < 0x80) return std::string(1, static_cast<char>(character));
    if (character < 0x10000) return unicodeEscape(character);
    const char32_t rest = character - 0x10000;
    return unicodeEscape(0xd800 + (rest >> 10)) + unicodeEscape(0xdc00 + (rest & 0x3ff));
}

} // namespace

const Encoding& Encoding::of(std::string_view codePage) {
    static std::map<std::string, std::unique_ptr<Encoding>> known;
    std::string name{codePage};
    std::ranges::transform(name, name.begin(), [](char c) { return c >= 'a' && c <= 'z' ? c - 32 : c; });
    std::unique_ptr<Encoding>& encoding = known[name];
    if (!encoding) encoding.reset(new Encoding{name});
    return *encoding;
}

Encoding::Encoding(const std::string& codePage)
    : converter_{codePage == "UTF-8" || codePage == "UTF8" ? nullptr
                                                           : std::make_unique<os::Converter>(codePage)} {}

bool Encoding::isKnown() const { return !converter_ || converter_->isKnown(); }

Encoding::~Encoding() = default;

std::string Encoding::rawToUtf8(std::string_view bytes) const {
    return converter_ ? converter_->toUtf8(bytes) : std::string{bytes};
}

std::u32string Encoding::decode(std::string_view bytes) const {
    return withoutEscapes(os::toUtf32(rawToUtf8(bytes)));
}

std::u32string Encoding::decodeMultiline(std::string_view bytes) const {
    return withoutMultilineEscapes(os::toUtf32(rawToUtf8(bytes)));
}

std::string Encoding::toUtf8(std::string_view bytes) const {
    if (os::isAscii(bytes) && bytes.find('\\') == std::string_view::npos) return std::string{bytes};
    return os::toUtf8(decode(bytes));
}

std::string Encoding::fromUtf8(std::string_view utf8) const {
    if (isUtf8() || os::isAscii(utf8)) return std::string{utf8};
    std::string bytes;
    for (char32_t each : os::toUtf32(utf8)) bytes += escaped(each);
    return bytes;
}

} // namespace qx::dxf
