// What commands find beside the drawing, and may go on from: variables, the last point, the previous
// selection. It is told as commands that bring it about, so that a script can begin where another one's work
// began.
#pragma once

#include "ed/Session.h"

#include <string>
#include <vector>

namespace qx::desktop {

/// By default as a drawing is found that was just opened, with variables that nobody knows.
struct SessionState {
    std::vector<ed::Variables::Setting> settings;
    std::string lastPoint = "0,0,0";   ///< as it is typed
    std::vector<db::Record*> previous; ///< those that can be selected
    bool hasPickFirst = false;
};

/// A drawing is open.
SessionState stateOf(const ed::Session& session);

/// The commands after which `wanted` is found where `there` was; none when that is the same. Objects without
/// a handle of their own can't be told and are left out.
std::string commandsBetween(const SessionState& there, const SessionState& wanted);

/// Whether each of the objects has a handle of its own.
bool canBeTold(const std::vector<db::Record*>& records);

} // namespace qx::desktop
