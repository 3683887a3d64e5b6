// How the runtime compares names: without regard to the case of ASCII letters, and of no others.
#pragma once

#include <algorithm>
#include <string_view>

namespace qx::rx {

template <class Char> constexpr Char folded(Char c) {
    return c >= 'a' && c <= 'z' ? static_cast<Char>(c - 'a' + 'A') : c;
}

inline constexpr auto sameFolded = [](auto a, auto b) { return folded(a) == folded(b); };
inline constexpr auto lessFolded = [](auto a, auto b) { return folded(a) < folded(b); };

template <class View> constexpr bool sameNameIn(View a, View b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameFolded);
}
constexpr bool sameName(std::wstring_view a, std::wstring_view b) { return sameNameIn(a, b); }
constexpr bool sameName(std::string_view a, std::string_view b) { return sameNameIn(a, b); }

/// An order for sorted containers that agrees with sameName.
struct NameLess {
    using is_transparent = void;
    constexpr bool operator()(std::wstring_view a, std::wstring_view b) const {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), lessFolded);
    }
};

} // namespace qx::rx
