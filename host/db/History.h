// The undo history of a drawing: a log per step of what each change replaced. Undoing walks a step backwards,
// redoing walks it forwards, and both exchange what is logged with what is there now.
//
// The first change of an object that is as in the file logs nothing but that: undoing it drops the live
// object, and the file's bytes return by themselves. A translation logs the coordinates that it changes, any
// other change the bytes of all fields.
#pragma once

#include "db/Record.h"
#include "db/StepMemory.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace qx::db {

class QX_HOST_API History {
public:
    History() = default;
    ~History();
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
    /// Tells one state of the drawing from any other: the number of the last step done, 0 before the first.
    std::size_t position() const { return done_.empty() ? 0 : done_.back().number; }

    /// The objects that the last `count` steps done changed, or the next ones that redo() would do: each
    /// once, in the order in which the steps came to stand there. Vertices count as their polyline, and
    /// what a dimension shows as the dimension.
    std::vector<Record*> changedByLast(std::size_t count) const;
    std::vector<Record*> changedByNext(std::size_t count) const;
    /// The same of the open step; none when there is none.
    std::vector<Record*> changedSoFar() const { return changedBy(std::span{&open_, 1}); }
    /// How many changes the open step has logged so far.
    std::size_t changesSoFar() const { return open_.count; }

    // Each of these is called before the change and does nothing without an open step.

    /// Any change of fields or of being erased.
    void logChange(Record* record);
    /// A translation. Returns room for the `count` coordinates along the axes (bits as in Shift::axes()) as
    /// they are now; null when nothing has to be stored.
    double* logTranslation(Record* record, unsigned axes, std::size_t count);
    /// The record is being made.
    void logNew(Record* record);

private:
    enum class Form : std::uint8_t { liveObject, allFields, coordinates };
    struct Entry {
        Record* record;
        std::uint32_t size; ///< of the bytes that follow
        std::uint8_t flags; ///< of the record
        Form form;
        std::uint8_t axes;
        std::byte* bytes() { return reinterpret_cast<std::byte*>(this + 1); }
        AcDbObject*& live() { return *reinterpret_cast<AcDbObject**>(bytes()); }
    };
    struct Step {
        std::string name;
        StepMemory memory;
        std::size_t count = 0;
        std::size_t number = 0; ///< never used twice
    };
    static std::vector<Record*> changedBy(std::span<const Step> steps);
    template <class Visit> static void forEach(const Step& step, bool backwards, Visit&& visit);
    Entry& add(Record* record, Form form, std::size_t bytes);
    void logLiveObject(Record* record, std::uint8_t flags);
    static void exchange(Entry& entry);
    static void exchangeAll(Step& step, bool backwards);
    static void drop(Step& step);
    static void drop(std::vector<Step>& steps);

    std::vector<Step> done_, undone_;
    Step open_;
    std::size_t lastNumber_ = 0;
    bool recording_ = false;
};

} // namespace qx::db
