// A line of text as SVG text elements, placed and stretched by the host's own metrics: a picture shows text
// as wide as the host measures it, whatever fonts the viewer has. Stretches of full-width characters and the
// stretches between them are elements of their own, since they need different font sizes.
#pragma once

#include "draw/PictureFrame.h"

#include <string>

namespace qx::draw {

/// The run must be drawable. Special codes are expanded, control characters dropped; text that is too small
/// to have a size in the picture is left out.
QX_HOST_API void putText(std::string& out, const PictureFrame& frame, const shape::TextRun& run);

/// The characters as XML character data; what XML can't hold becomes U+FFFD.
QX_HOST_API std::string escaped(std::u32string_view characters);

} // namespace qx::draw
