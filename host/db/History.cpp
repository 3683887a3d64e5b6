#include "db/History.h"

#include "db/Drawing.h"
#include "db/FieldMove.h"
#include "dbmain.h"

#include <algorithm>
#include <new>
#include <unordered_set>
#include <utility>

namespace qx::db {

namespace {

constexpr std::uint8_t stateFlags = Record::erased | Record::changed;

/// The dimension whose content the object is, else itself.
Record* drawnWith(Record* record) {
    const Drawing& drawing = *RecordChain::drawingOf(record);
    if (!record->owner || record->owner == drawing.modelSpace()) return record;
    const BlockDefinition* block = drawing.blocks().of(record->owner);
    return block && block->dimension ? block->dimension : record;
}

bool isAsInFile(const Record* record) { return !record->has(Record::changed) && !record->has(Record::isNew); }

} // namespace

template <class Visit> void History::forEach(const Step& step, bool backwards, Visit&& visit) {
    std::vector<Entry*> entries;
    for (const StepMemory::Block& block : step.memory.blocks())
        for (std::size_t at = 0; at < block.used;) {
            auto* entry = reinterpret_cast<Entry*>(block.memory.get() + at);
            entries.push_back(entry);
            at += sizeof(Entry) + entry->size;
        }
    for (std::size_t i = 0; i < entries.size(); ++i) visit(*entries[backwards ? entries.size() - 1 - i : i]);
}

History::~History() {
    drop(done_);
    drop(undone_);
    drop(open_);
}

void History::begin(std::string name) {
    open_.name = std::move(name);
    recording_ = true;
}

bool History::end() {
    recording_ = false;
    if (open_.count == 0) return false;
    drop(undone_);
    open_.number = ++lastNumber_;
    done_.push_back(std::exchange(open_, {}));
    return true;
}

void History::rollBack() {
    recording_ = false;
    exchangeAll(open_, true);
    drop(open_);
    open_ = {};
}

std::string History::undo() {
    if (done_.empty()) return {};
    exchangeAll(done_.back(), true);
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    return undone_.back().name;
}

std::string History::redo() {
    if (undone_.empty()) return {};
    exchangeAll(undone_.back(), false);
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    return done_.back().name;
}

std::vector<Record*> History::changedBy(std::span<const Step> steps) {
    std::vector<Record*> records;
    std::unordered_set<const Record*> seen;
    for (const Step& step : steps)
        forEach(step, false, [&](const Entry& entry) {
            Record* record = entry.record;
            if (record->kind == Kind::vertex && record->owner) record = record->owner;
            record = drawnWith(record);
            if (seen.insert(record).second) records.push_back(record);
        });
    return records;
}

std::vector<Record*> History::changedByLast(std::size_t count) const {
    return changedBy(std::span{done_}.last(std::min(count, done_.size())));
}

std::vector<Record*> History::changedByNext(std::size_t count) const {
    return changedBy(std::span{undone_}.last(std::min(count, undone_.size())));
}

// ---- logging

History::Entry& History::add(Record* record, Form form, std::size_t bytes) {
    ++open_.count;
    void* memory = open_.memory.take(sizeof(Entry) + bytes);
    return *new (memory) Entry{record, static_cast<std::uint32_t>(bytes), record->flags, form, 0};
}

void History::logLiveObject(Record* record, std::uint8_t flags) {
    Entry& entry = add(record, Form::liveObject, sizeof(AcDbObject*));
    entry.flags = flags;
    entry.live() = nullptr;
}

void History::logNew(Record* record) {
    if (recording_) logLiveObject(record, Record::erased);
}

void History::logChange(Record* record) {
    if (!recording_) return;
    if (isAsInFile(record) || !record->live) return logLiveObject(record, record->flags);
    const std::size_t size = stateSize(*record->live);
    Entry& entry = add(record, Form::allFields, size);
    saveState(*record->live, entry.bytes());
}

double* History::logTranslation(Record* record, unsigned axes, std::size_t count) {
    if (!recording_) return nullptr;
    if (isAsInFile(record)) {
        logLiveObject(record, record->flags);
        return nullptr;
    }
    Entry& entry = add(record, Form::coordinates, count * sizeof(double));
    entry.axes = static_cast<std::uint8_t>(axes);
    return reinterpret_cast<double*>(entry.bytes());
}

// ---- going back and forth

// A new object that is taken back is erased, and its live object waits in the log.
void History::exchange(Entry& entry) {
    Record& record = *entry.record;
    switch (entry.form) {
    case Form::liveObject:
        std::swap(record.live, entry.live());
        break;
    case Form::allFields:
        swapState(*record.live, entry.bytes());
        break;
    case Form::coordinates:
        swapCoordinates(record.live->fields(), entry.axes, reinterpret_cast<double*>(entry.bytes()));
        break;
    }
    RecordChain::drawingOf(&record)->noteSwap(&record);
    const std::uint8_t flags = record.flags;
    record.flags = static_cast<std::uint8_t>((flags & ~stateFlags) | (entry.flags & stateFlags));
    entry.flags = flags;
}

void History::exchangeAll(Step& step, bool backwards) { forEach(step, backwards, exchange); }

void History::drop(Step& step) {
    forEach(step, false, [](Entry& entry) {
        if (entry.form != Form::liveObject || !entry.live()) return;
        entry.live()->setRecord(nullptr);
        delete entry.live();
    });
}

void History::drop(std::vector<Step>& steps) {
    for (Step& step : steps) drop(step);
    steps.clear();
}

} // namespace qx::db
