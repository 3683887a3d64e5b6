// What a person chose before KV_PositionAlign begins, as a value. The numbers of the enumerations are fixed:
// they are the codes of the buttons and of the radio group.
#pragma once

namespace qx::positionalign {

enum class Action {
    none = 0, ///< the choice was ended without choosing; nothing is moved
    horizontalCentre = 1,
    top = 2,
    left = 3,
    centre = 4,
    right = 5,
    verticalCentre = 6,
    bottom = 7,
    horizontalDistribution = 8,
    verticalDistribution = 9,
};

enum class SelectionMode { objects = 0, groups = 1 };

struct PositionAlignSettings {
    Action action = Action::none;
    bool asksBasePoint = false;
    double offset = 0; ///< drawing units, inwards; 0 for actions that take none
    SelectionMode mode = SelectionMode::objects;
};

} // namespace qx::positionalign
