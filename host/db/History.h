// The undo history of a drawing. A step holds, per object that it changed, the state before; undoing and redoing
// both swap that state with the present one. The state of an object that was as in the file is kept as nothing:
// bringing it back means dropping the live object, so the file's bytes return by themselves.
#pragma once

#include "db/Record.h"
#include "dbmain.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace qx::db {

class QX_HOST_API History {
public:
    /// What an object was before a step.
    struct State {
        Record* record;
        std::unique_ptr<AcDbObject> live; ///< null: as in the file, or not yet made
        std::uint8_t flags;
    };

    History() = default;
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    /// Opens a step; changes until end() belong to it. Steps don't nest.
    void begin(std::string name);
    /// Closes the step; false when nothing was changed, and then there is no step.
    bool end();
    bool isRecording() const { return recording_; }
    /// Takes back the open step and closes it, leaving nothing of it to redo.
    void rollBack();

    /// Takes back the last step, or does the next one again; the step's name, empty when there is none.
    std::string undo();
    std::string redo();
    std::size_t stepsDone() const { return done_.size(); }

    /// What the last finished step changed, in the order of the first change of each object.
    std::vector<const State*> lastStates() const;
    /// How many objects the open step has changed so far.
    std::size_t changesSoFar() const { return open_.states.size(); }

    /// Keeps the record's state before its first change of the step. Without an open step nothing is kept.
    void record(Record* record);
    /// Notes that the record was made in this step.
    void recordNew(Record* record);

private:
    struct Step {
        std::string name;
        std::vector<State> states;
    };
    static void swap(State& state);
    static void swapAll(Step& step, bool backwards);

    std::vector<Step> done_, undone_;
    Step open_;
    bool recording_ = false;
};

} // namespace qx::db
