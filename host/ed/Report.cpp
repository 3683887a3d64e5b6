#include "ed/Report.h"

#include "dxf/Tag.h"
#include "ed/json.h"
#include "ed/statusNames.h"
#include "os/encoding.h"
#include "shape/ExtentsSink.h"

#include <algorithm>
#include <utility>

namespace qx::ed {
namespace {

using json::quoted;

std::string pointText(const AcGePoint3d& point) {
    return json::list({json::number(point.x), json::number(point.y), json::number(point.z)});
}

std::string boxText(const shape::Box& box) {
    if (box.isEmpty()) return "null";
    return "{\"min\": " + pointText(box.min) + ", \"max\": " + pointText(box.max) + '}';
}

// The members that every object's entry begins with, without the closing brace.
std::string identity(const db::Drawing& drawing, db::Record* record) {
    const AcDbObject* object = drawing.live(record);
    const std::string className = object ? os::toUtf8(object->isA()->name()) : std::string{};
    return "{\"handle\": " + quoted(dxf::handleText(record->handle)) + ", \"class\": " + quoted(className);
}

const char* changeName(const db::Record* record, bool existedBefore, bool existsNow) {
    if (!existedBefore) return record->has(db::Record::isNew) ? "created" : "restored";
    return existsNow ? "modified" : "erased";
}

// Negative when steps were taken back.
std::ptrdiff_t stepsTaken(const db::History& history, std::size_t before) {
    return static_cast<std::ptrdiff_t>(history.stepsDone()) - static_cast<std::ptrdiff_t>(before);
}

void walk(db::History& history, std::ptrdiff_t steps) {
    for (; steps > 0; --steps) history.redo();
    for (; steps < 0; ++steps) history.undo();
}

std::string trimmed(std::string_view text) {
    while (text.starts_with('\n')) text.remove_prefix(1);
    while (text.ends_with('\n')) text.remove_suffix(1);
    return std::string{text};
}

} // namespace

void Report::commandBegins(const db::Drawing* drawing, const std::string& name) {
    name_ = name;
    running_ = true;
    stepsBefore_ = drawing ? drawing->history().stepsDone() : 0;
    selected_.clear();
    messages_.clear();
    refusals_.clear();
}

void Report::drawingChanges() {
    stepsBefore_ = 0;
    selected_.clear();
    refusals_.clear();
}

void Report::selected(const RecordSet& set) {
    selected_.insert(selected_.end(), set.members().begin(), set.members().end());
}

void Report::message(std::string_view text) {
    if (running_ && !trimmed(text).empty()) messages_.push_back(quoted(trimmed(text)));
}

void Report::commandEnds(db::Drawing* drawing, CommandEnd end) {
    running_ = false;
    const std::ptrdiff_t taken = drawing ? stepsTaken(drawing->history(), stepsBefore_) : 0;
    std::vector<db::Record*> changed;
    if (taken > 0) changed = drawing->history().changedByLast(static_cast<std::size_t>(taken));
    if (taken < 0) changed = drawing->history().changedByNext(static_cast<std::size_t>(-taken));
    std::string text = "{\"command\": " + quoted(name_);
    text += std::string{", \"rolledBack\": "} + (end == CommandEnd::rolledBack ? "true" : "false");
    text += ",\n  \"changed\": " + (drawing ? changes(*drawing, changed, taken) : "[]");
    text += ",\n  \"unchanged\": " + (drawing ? stayed(*drawing, changed) : "[]");
    text += ",\n  \"messages\": " + json::list(messages_) + '}';
    commands_.push_back(std::move(text));
}

Report::State Report::stateOf(db::Drawing& drawing, db::Record* record) {
    State state{.exists = !record->has(db::Record::erased), .box = {}};
    const AcDbEntity* entity = state.exists ? drawing.liveEntity(record) : nullptr;
    if (!entity) return state;
    shape::ExtentsSink extents;
    entity->extremes(extents);
    state.box = extents.box();
    return state;
}

std::vector<Report::State> Report::statesOf(db::Drawing& drawing, const std::vector<db::Record*>& records) {
    std::vector<State> states;
    for (db::Record* each : records) states.push_back(stateOf(drawing, each));
    return states;
}

std::vector<Report::State> Report::statesBefore(db::Drawing& drawing, const std::vector<db::Record*>& records,
                                                std::ptrdiff_t stepsTaken) {
    walk(drawing.history(), -stepsTaken);
    std::vector<State> states = statesOf(drawing, records);
    walk(drawing.history(), stepsTaken);
    return states;
}

// What a command drew only to measure against is nobody's object, and neither is the block or dictionary that
// something is in.
bool Report::isPassing(const db::Record& record, const State& before, const State& after) {
    return record.kind == db::Kind::blockRecord || record.kind == db::Kind::dictionary ||
           (!before.exists && !after.exists);
}

std::string Report::changes(db::Drawing& drawing, const std::vector<db::Record*>& records,
                            std::ptrdiff_t stepsTaken) const {
    if (records.empty()) return "[]";
    const std::vector<State> after = statesOf(drawing, records);
    const std::vector<State> before = statesBefore(drawing, records, stepsTaken);
    std::vector<std::string> entries;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (isPassing(*records[i], before[i], after[i])) continue;
        entries.push_back(
            "\n    " + identity(drawing, records[i]) +
            ", \"change\": " + quoted(changeName(records[i], before[i].exists, after[i].exists)) +
            ", \"before\": " + boxText(before[i].box) + ", \"after\": " + boxText(after[i].box) + '}');
    }
    return json::list(entries);
}

// Selected objects first, then those that were refused although nobody selected them: members of groups.
std::string Report::stayed(db::Drawing& drawing, const std::vector<db::Record*>& changed) const {
    RecordSet candidates{&drawing};
    candidates.add(selected_);
    std::vector<db::Record*> refused;
    for (const auto& [record, status] : refusals_) refused.push_back(const_cast<db::Record*>(record));
    std::ranges::sort(refused, {}, &db::Record::handle);
    candidates.add(refused);
    candidates.remove(changed);
    std::vector<std::string> entries;
    for (db::Record* each : candidates.members()) {
        const auto refusal = refusals_.find(each);
        const char* reason = refusal == refusals_.end() ? "not handled" : nameOf(refusal->second);
        entries.push_back("\n    " + identity(drawing, each) + ", \"reason\": " + quoted(reason) + '}');
    }
    return json::list(entries);
}

std::string Report::toJson(const db::Drawing* drawing) const {
    std::vector<std::string> findings;
    if (drawing)
        for (const db::Finding& each : drawing->findings())
            findings.push_back("\n  {\"line\": " + std::to_string(each.line) +
                               ", \"sentence\": " + quoted(each.sentence) + '}');
    return "{\"commands\": " + json::list(commands_) + ",\n\"findings\": " + json::list(findings) + "}\n";
}

} // namespace qx::ed
