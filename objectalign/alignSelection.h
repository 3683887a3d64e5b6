// From what was selected and picked to the algorithm that aligns it. Nothing is asked here.
#pragma once

#include "dbidar.h"
#include "gept2dar.h"
#include "gept3dar.h"
#include "objectalign/AlignmentPoint.h"
#include "objectalign/ObjectAlignSettings.h"
#include "objectalign/alignmentLine.h"
#include "objectalign/wholeSelection.h"

#include <variant>

namespace qx::objectalign {

/// What was aligned, and how a click turns it over: all about one point, or each about its own.
struct Aligned {
    AcDbObjectIdArray ids;
    std::variant<AcGePoint3d, AcGePoint3dArray> pivot;

    /// By a half turn of the alignments, which is a hair less than a whole one.
    void flip() const;
};

/// What things are aligned to.
using Reference = std::variant<AlignmentLine, AlignmentPoint>;

/// A selection and the base line that turns it as a whole.
struct WholeSelection {
    AcDbObjectIdArray ids;
    Moves moves = Moves::objects;
    AcDbObjectId baseLine = {};
    AcGePoint2d basePoint = {}; ///< about which it is turned
};

/// Polylines and where each was picked; one may stand there twice.
struct PickedPolylines {
    AcDbObjectIdArray ids;
    AcGePoint2dArray points;
};

/// A line that can't be opened leaves everything as it is.
Aligned alignWhole(const WholeSelection& selection, const Reference& reference,
                   const ObjectAlignSettings& settings);
Aligned alignEach(const AcDbObjectIdArray& ids, const Reference& reference,
                  const ObjectAlignSettings& settings);
Aligned alignPolylines(const PickedPolylines& picked, const Reference& reference,
                       const ObjectAlignSettings& settings);

} // namespace qx::objectalign
