// The names under which drawings know code pages.
#pragma once

#include <string_view>

namespace qx::os {

constexpr unsigned firstIsoPage = 28591, lastIsoPage = 28606; ///< ISO 8859-1 to -16
constexpr unsigned johabPage = 1361, macRomanPage = 10000, utf8Page = 65001, westernPage = 1252;

/// The number that Windows gives the page; 0 for a name that means none. Whether the system has the page is
/// another question.
unsigned codePageNumber(std::string_view name);

} // namespace qx::os
