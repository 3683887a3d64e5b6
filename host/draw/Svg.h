// A picture of a drawing's model space as an SVG document: what is visible, grouped by layer, on white, with
// thin lines that stay thin at any magnification.
//
// Colours are those of the entities in model space. What lies inside a block reference has the reference's
// colour, since the parts of a block don't tell theirs. Line types, line weights and fills are not drawn.
// Text is the viewer's font, stretched to the host's metrics.
#pragma once

#include "db/Drawing.h"

#include <string>

namespace qx::draw {

/// Writes the picture in one go, or leaves what was there. Fails with a sentence that names the file.
QX_HOST_API Outcome writeSvg(const db::Drawing& drawing, const std::string& path);

/// The same document as a string, UTF-8.
QX_HOST_API std::string svgOf(const db::Drawing& drawing);

} // namespace qx::draw
