// What a person chose before KV_ObjectAlign begins, as a value. The numbers of the enumerations are fixed:
// they are the codes of the radio groups and of the buttons.
#pragma once

namespace qx::objectalign {

enum class SelectionMode { groups = 0, polylines = 1, objects = 2 };

enum class Method {
    each = 0, ///< every object by an edge of its own
    whole = 1 ///< the selection by one base line
};

enum class Action {
    none = 0,
    toLine = 1, ///< onto the direction of a line
    atPoint = 2 ///< along a line or the tangent of a curve, at one of its points
};

struct ObjectAlignSettings {
    SelectionMode mode = SelectionMode::objects;
    Method method = Method::each;
    Action action = Action::none;
    double spacing = 0;         ///< drawing units
    bool adjustSpacing = false; ///< otherwise the spacing means nothing
};

} // namespace qx::objectalign
