// The sample drawings, as the bytes of their files. The same bytes on every run.
#pragma once

#include <string>

namespace samples {

std::string siteplan();  ///< R2000, GBK, CR LF, metres
std::string floorplan(); ///< 2010, UTF-8, LF, millimetres
std::string schematic(); ///< 2018, UTF-8, CR LF, millimetres on paper

} // namespace samples
