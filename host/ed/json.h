// Pieces of JSON text. Numbers are the shortest that read back the same.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qx::ed::json {

std::string quoted(std::string_view utf8);
/// null for a number that is not finite.
std::string number(double value);
/// The parts are JSON already.
std::string list(const std::vector<std::string>& parts);

} // namespace qx::ed::json
