// One choice among keywords at the command line: what a radio group or a row of buttons is in a dialog.
#pragma once

#include "acedads.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <optional>

namespace qx::controls {

template <class Value> struct Keyword {
    const ACHAR* text;
    Value value;
};

/// What the keyword typed stands for; Enter gives `byDefault`, Esc nothing. `list`: the keywords with blanks
/// between them.
template <class Value, std::size_t size>
std::optional<Value> askKeyword(const Keyword<Value> (&keywords)[size], const ACHAR* list,
                                const ACHAR* prompt, std::optional<Value> byDefault) {
    ACHAR typed[133] = {};
    acedInitGet(0, list);
    const int result = acedGetKword(prompt, typed);
    if (result == RTNONE) return byDefault;
    if (result != RTNORM) return std::nullopt;
    const auto found = std::find_if(std::begin(keywords), std::end(keywords),
                                    [&](const auto& each) { return std::wcscmp(each.text, typed) == 0; });
    return found == std::end(keywords) ? std::nullopt : std::optional{found->value};
}

} // namespace qx::controls
