// DXF for tests, one record per line: `LINE 5=2A 8=0 10=1 20=2`. A value reaches to the next blank.
#pragma once

#include <string>
#include <string_view>

namespace qx::tests {

/// The tags that the lines stand for.
std::string tagsOf(std::string_view lines);

/// A drawing with these entities in model space and with these records behind the group dictionary. Each of
/// `groups` is `name handle`, and its GROUP record is among `objects`. `header` holds more header variables,
/// as tags. Layers: 0, LOCKED, OFF, FROZEN.
std::string drawingText(std::string_view entities, std::string_view groups = {},
                        std::string_view objects = {}, std::string_view header = {});

} // namespace qx::tests
