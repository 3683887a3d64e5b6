// Pieces of JSON text. Numbers are the shortest that read back the same.
#pragma once

#include "qxexport.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx::ed::json {

QX_HOST_API std::string quoted(std::string_view utf8);
/// null for a number that is not finite.
QX_HOST_API std::string number(double value);
/// The parts are JSON already.
QX_HOST_API std::string list(const std::vector<std::string>& parts);

} // namespace qx::ed::json
