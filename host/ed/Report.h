// The account of a session as JSON: for each command that ran, the objects it changed with their boxes before
// and after ("created", "modified", "erased", or "restored" when an object of the file comes back), the
// selected objects that stayed as they were with the reason, and the messages it printed; then what the
// reader noticed about the drawing.
//
// The boxes before come from taking the command's step back and doing it again (of U, UNDO and REDO the other
// way round), so a report costs about as much as the commands did.
#pragma once

#include "ed/Session.h"
#include "shape/Primitives.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace qx::ed {

class QX_HOST_API Report : public CommandObserver {
public:
    void commandBegins(const db::Drawing* drawing, const std::string& name) override;
    void drawingChanges() override;
    void selected(const RecordSet& set) override;
    void message(std::string_view text) override;
    void commandEnds(db::Drawing* drawing, CommandEnd end) override;
    void refused(const db::Record* record, Acad::ErrorStatus status) override { refusals_[record] = status; }

    /// The whole account; the findings are those of `drawing`, which may be null.
    std::string toJson(const db::Drawing* drawing) const;

private:
    struct State {
        bool exists;
        shape::Box box;
    };
    static State stateOf(db::Drawing& drawing, db::Record* record);
    static bool isPassing(const db::Record& record, const State& before, const State& after);
    static std::vector<State> statesOf(db::Drawing& drawing, const std::vector<db::Record*>& records);
    static std::vector<State> statesBefore(db::Drawing& drawing, const std::vector<db::Record*>& records,
                                           std::ptrdiff_t stepsTaken);
    std::string changes(db::Drawing& drawing, const std::vector<db::Record*>& records,
                        std::ptrdiff_t stepsTaken) const;
    std::string stayed(db::Drawing& drawing, const std::vector<db::Record*>& changed) const;

    std::vector<std::string> commands_; ///< finished ones, as JSON

    // Of the running command.
    std::string name_;
    bool running_ = false;
    std::size_t stepsBefore_ = 0; ///< done in the drawing when it began
    std::vector<db::Record*> selected_;
    std::vector<std::string> messages_;
    std::unordered_map<const db::Record*, Acad::ErrorStatus> refusals_;
};

} // namespace qx::ed
