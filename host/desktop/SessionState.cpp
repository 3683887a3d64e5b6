#include "desktop/SessionState.h"

#include "ed/forms.h"

#include <algorithm>

namespace qx::desktop {

SessionState stateOf(const ed::Session& session) {
    std::vector<db::Record*> previous = session.previous.members();
    std::erase_if(previous, [&](db::Record* each) { return !session.drawing()->isSelectable(each); });
    return {session.variables().settings(), ed::textOf(session.lastPoint), std::move(previous),
            !session.pickFirst.isEmpty()};
}

std::string commandsBetween(const SessionState& there, const SessionState& wanted) {
    std::string commands;
    for (const ed::Variables::Setting& each : wanted.settings)
        if (std::ranges::find(there.settings, each) == there.settings.end())
            commands += "SETVAR " + each.name + ' ' + std::to_string(each.number) + '\n';
    if (there.lastPoint != wanted.lastPoint) commands += "ID " + wanted.lastPoint + '\n';
    if (there.hasPickFirst && !wanted.hasPickFirst) commands += "(select)\n";
    if (there.previous == wanted.previous) return commands;
    commands += "SELECT\n";
    for (const db::Record* each : wanted.previous)
        if (ed::hasOwnHandle(each)) commands += ed::handentForm(each->handle) + '\n';
    return commands + '\n';
}

bool canBeTold(const std::vector<db::Record*>& records) {
    return std::ranges::all_of(records, ed::hasOwnHandle);
}

} // namespace qx::desktop
