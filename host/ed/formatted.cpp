#include "ed/formatted.h"

#include "ed/Keywords.h"
#include "os/encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace qx::ed {
namespace {

// A va_list that can be handed on by reference, which an array type can't.
struct Arguments {
    va_list list;
};

struct Conversion {
    bool left = false, plus = false, blank = false, zero = false, alternate = false;
    int width = 0;
    int precision = -1; // not given
    int longs = 0;      // l: 1, ll: 2, h: -1, hh: -2
    wchar_t kind = 0;
};

int readNumber(const wchar_t*& p) {
    constexpr int most = 4096;
    int value = 0;
    for (; *p >= L'0' && *p <= L'9'; ++p) value = std::min(value * 10 + static_cast<int>(*p - L'0'), most);
    return value;
}

void readFlags(const wchar_t*& p, Conversion& conversion) {
    for (;; ++p) switch (*p) {
        case L'-':
            conversion.left = true;
            break;
        case L'+':
            conversion.plus = true;
            break;
        case L' ':
            conversion.blank = true;
            break;
        case L'0':
            conversion.zero = true;
            break;
        case L'#':
            conversion.alternate = true;
            break;
        default:
            return;
        }
}

Conversion readConversion(const wchar_t*& p, Arguments& arguments) {
    Conversion conversion;
    readFlags(p, conversion);
    if (*p == L'*') {
        ++p;
        const int width = va_arg(arguments.list, int);
        conversion.left = conversion.left || width < 0;
        conversion.width = std::abs(width);
    } else
        conversion.width = readNumber(p);
    if (*p == L'.') {
        ++p;
        if (*p == L'*') {
            ++p;
            conversion.precision = va_arg(arguments.list, int);
        } else
            conversion.precision = readNumber(p);
    }
    for (;; ++p) {
        if (*p == L'l')
            ++conversion.longs;
        else if (*p == L'h')
            --conversion.longs;
        else
            break;
    }
    conversion.kind = *p;
    if (*p) ++p;
    return conversion;
}

std::wstring widened(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

// `sign` stands before zeros that fill the width, `digits` behind them.
std::wstring padded(const Conversion& conversion, const std::wstring& sign, const std::wstring& digits,
                    bool mayFillWithZeros) {
    const std::size_t size = sign.size() + digits.size();
    const std::size_t width = static_cast<std::size_t>(conversion.width);
    const std::size_t missing = width > size ? width - size : 0;
    if (conversion.left) return sign + digits + std::wstring(missing, L' ');
    if (conversion.zero && mayFillWithZeros) return sign + std::wstring(missing, L'0') + digits;
    return std::wstring(missing, L' ') + sign + digits;
}

std::wstring signOf(const Conversion& conversion, bool negative) {
    return negative ? L"-" : conversion.plus ? L"+" : conversion.blank ? L" " : L"";
}

std::wstring integer(const Conversion& conversion, std::uint64_t magnitude, const std::wstring& sign,
                     int base) {
    std::array<char, 32> buffer{};
    const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, base).ptr;
    std::string digits(static_cast<const char*>(buffer.data()), end);
    if (conversion.kind == L'X') digits = upperCase(digits);
    if (conversion.precision == 0 && magnitude == 0) digits.clear();
    if (const auto least = static_cast<std::size_t>(std::max(conversion.precision, 0)); digits.size() < least)
        digits.insert(0, least - digits.size(), '0');
    std::wstring prefix = sign;
    if (conversion.alternate && base == 16 && magnitude != 0)
        prefix += conversion.kind == L'X' ? L"0X" : L"0x";
    return padded(conversion, prefix, widened(digits), conversion.precision < 0);
}

std::wstring signedInteger(const Conversion& conversion, Arguments& arguments) {
    const std::int64_t value = conversion.longs >= 2   ? va_arg(arguments.list, long long)
                               : conversion.longs == 1 ? va_arg(arguments.list, long)
                                                       : va_arg(arguments.list, int);
    const auto bits = static_cast<std::uint64_t>(value);
    return integer(conversion, value < 0 ? 0 - bits : bits, signOf(conversion, value < 0), 10);
}

std::wstring unsignedInteger(const Conversion& conversion, Arguments& arguments, int base) {
    const std::uint64_t value = conversion.longs >= 2   ? va_arg(arguments.list, unsigned long long)
                                : conversion.longs == 1 ? va_arg(arguments.list, unsigned long)
                                                        : va_arg(arguments.list, unsigned);
    return integer(conversion, value, L"", base);
}

// With '#', %g keeps the zeros at its end; that is the only use of the flag here that to_chars has no word
// for, and nobody needs it.
std::wstring real(const Conversion& conversion, Arguments& arguments) {
    const double value = va_arg(arguments.list, double);
    const std::wstring sign = signOf(conversion, std::signbit(value) && !std::isnan(value));
    const bool upper = conversion.kind < L'a';
    if (!std::isfinite(value)) {
        const char* name = std::isnan(value) ? (upper ? "NAN" : "nan") : upper ? "INF" : "inf";
        return padded(conversion, sign, widened(name), false);
    }
    const wchar_t kind = upper ? static_cast<wchar_t>(conversion.kind + (L'a' - L'A')) : conversion.kind;
    const auto style = kind == L'f'   ? std::chars_format::fixed
                       : kind == L'e' ? std::chars_format::scientific
                                      : std::chars_format::general;
    const int precision = conversion.precision < 0 ? 6 : conversion.precision;
    std::string digits(static_cast<std::size_t>(precision) + 350, '\0');
    char* begin = digits.data();
    digits.resize(static_cast<std::size_t>(
        std::to_chars(begin, begin + digits.size(), std::fabs(value), style, precision).ptr - begin));
    return padded(conversion, sign, widened(upper ? upperCase(digits) : digits), true);
}

std::wstring string(const Conversion& conversion, Arguments& arguments) {
    const bool narrow = conversion.longs < 0;
    std::wstring text = L"(null)";
    if (narrow) {
        if (const char* utf8 = va_arg(arguments.list, const char*)) text = os::toWide(utf8);
    } else if (const wchar_t* wide = va_arg(arguments.list, const wchar_t*))
        text = wide;
    if (conversion.precision >= 0)
        text.resize(std::min(text.size(), static_cast<std::size_t>(conversion.precision)));
    return padded(conversion, L"", text, false);
}

std::wstring converted(const Conversion& conversion, Arguments& arguments) {
    switch (conversion.kind) {
    case L'd':
    case L'i':
        return signedInteger(conversion, arguments);
    case L'u':
        return unsignedInteger(conversion, arguments, 10);
    case L'x':
    case L'X':
        return unsignedInteger(conversion, arguments, 16);
    case L'o':
        return unsignedInteger(conversion, arguments, 8);
    case L'e':
    case L'E':
    case L'f':
    case L'F':
    case L'g':
    case L'G':
        return real(conversion, arguments);
    case L's':
        return string(conversion, arguments);
    case L'c':
        return padded(conversion, L"", std::wstring(1, static_cast<wchar_t>(va_arg(arguments.list, int))),
                      false);
    case L'%':
        return L"%";
    default:
        return {};
    }
}

} // namespace

std::wstring formatted(const wchar_t* format, va_list arguments) {
    Arguments rest;
    va_copy(rest.list, arguments);
    std::wstring result;
    for (const wchar_t* p = format; *p;) {
        if (*p != L'%') {
            result += *p++;
            continue;
        }
        const wchar_t* begin = p++;
        const std::wstring text = converted(readConversion(p, rest), rest);
        constexpr std::wstring_view known = L"diuxXoeEfFgGsc%";
        const bool isKnown = p > begin + 1 && known.find(p[-1]) != std::wstring_view::npos;
        result += isKnown ? text : std::wstring(begin, p);
    }
    va_end(rest.list);
    return result;
}

} // namespace qx::ed
