#include "db/History.h"

#include "dbmain.h"

#include <utility>

namespace qx::db {

namespace {
constexpr std::uint8_t stateFlags = Record::erased | Record::changed;
}

void History::begin(std::string name) {
    open_ = {std::move(name), {}};
    recording_ = true;
}

bool History::end() {
    recording_ = false;
    for (const State& state : open_.states) state.record->set(Record::recorded, false);
    if (open_.states.empty()) return false;
    undone_.clear();
    done_.push_back(std::move(open_));
    open_ = {};
    return true;
}

void History::rollBack() {
    recording_ = false;
    for (const State& state : open_.states) state.record->set(Record::recorded, false);
    swapAll(open_, true);
    open_ = {};
}

std::string History::undo() {
    if (done_.empty()) return {};
    swapAll(done_.back(), true);
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    return undone_.back().name;
}

std::string History::redo() {
    if (undone_.empty()) return {};
    swapAll(undone_.back(), false);
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    return done_.back().name;
}

std::vector<const History::State*> History::lastStates() const {
    std::vector<const State*> states;
    if (done_.empty()) return states;
    for (const State& state : done_.back().states) states.push_back(&state);
    return states;
}

void History::record(Record* record) {
    if (!recording_ || record->has(Record::recorded)) return;
    record->set(Record::recorded);
    State state{record, nullptr, record->flags};
    if (record->live && (record->has(Record::changed) || record->has(Record::isNew))) {
        state.live = record->live->copied();
        state.live->setRecord(record);
    }
    open_.states.push_back(std::move(state));
}

void History::recordNew(Record* record) {
    if (!recording_) return;
    record->set(Record::recorded);
    open_.states.push_back({record, nullptr, Record::erased});
}

void History::swap(State& state) {
    Record& record = *state.record;
    AcDbObject* present = std::exchange(record.live, state.live.release());
    state.live.reset(present);
    const std::uint8_t flags = record.flags;
    record.flags = static_cast<std::uint8_t>((flags & ~stateFlags) | (state.flags & stateFlags));
    state.flags = flags;
}

void History::swapAll(Step& step, bool backwards) {
    if (backwards)
        for (auto state = step.states.rbegin(); state != step.states.rend(); ++state) swap(*state);
    else
        for (State& state : step.states) swap(state);
}

} // namespace qx::db
