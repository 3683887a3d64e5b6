// A drawing: the file's bytes, one record per object, live objects for those that were opened, and the undo
// history. Reading keeps every byte; saving writes the bytes back and touches only what really differs.
//
// One drawing belongs to one thread. Objects are opened and closed under the host's rules; a command's changes
// form one undo step.
#pragma once

#include "db/Finding.h"
#include "db/History.h"
#include "db/Record.h"
#include "dbmain.h"
#include "dxf/Encoding.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qx::db {

/// State of a layer, at a stable address.
struct LayerState {
    std::string_view name; ///< in the drawing's encoding
    Record* record = nullptr;
    int colour = 7;
    bool off = false, frozen = false, locked = false;
    bool isVisible() const { return !off && !frozen; }
};

/// Called now and then with the bytes or objects done and all there are.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

/// Points that a header gives in world coordinates.
struct UserCoordinateSystem {
    AcGePoint3d origin;
    AcGeVector3d xAxis{1, 0, 0}, yAxis{0, 1, 0};
};

class Blocks;
class Layers;

class QX_HOST_API Drawing {
public:
    /// Either a drawing or one sentence that names the file and, where there is one, the line.
    struct ReadResult {
        std::unique_ptr<Drawing> drawing;
        std::string error;
    };
    static ReadResult read(const std::string& path, const Progress& progress = {});
    /// The same from bytes; `name` stands in the sentences.
    static ReadResult fromBytes(std::string_view bytes, const std::string& name);
    /// An empty drawing (AC1024), as a new one begins.
    static std::unique_ptr<Drawing> empty();
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    AcDbDatabase& database() { return database_; }
    const std::string& path() const { return path_; }
    const dxf::Encoding& encoding() const { return *encoding_; }
    /// What was noticed while reading, and later when an object's fields were read.
    const std::vector<Finding>& findings() const { return findings_; }
    void addFinding(const Record* where, std::string sentence) const;
    /// 1-based line on which the record begins; 0 for a new object.
    std::size_t lineOf(const Record* record) const;

    // Saving (save.cpp). Erased objects are left out, new ones spliced in.

    /// Writes to a temporary file beside the target and renames it; an empty string, or one sentence.
    std::string save(const std::string& path, bool keepBackup, const Progress& progress = {}) const;
    /// The bytes that saving would write.
    std::string toBytes() const;
    /// True when saving would not give the file's bytes back, as far as is known without comparing.
    bool isModified() const { return history_.stepsDone() != savedAtStep_; }
    void markSaved() { savedAtStep_ = history_.stepsDone(); }

    // Finding objects.

    /// Null when there is no such handle. Builds the index on first use.
    Record* find(std::uint64_t handle) const;
    Record* firstRecord() const { return records_.first(); }
    /// Entities of model space in file order, then new ones; erased ones included, attributes and vertices not.
    void forEachInModelSpace(const std::function<void(Record*)>& visit) const;
    /// Of the block record's definition; the same order.
    void forEachInBlock(const Record* blockRecord, const std::function<void(Record*)>& visit) const;
    Record* modelSpace() const;
    /// Attributes or vertices of an entity, in order, without the sequence end.
    template <class Visit> void forEachOwned(const Record* header, Visit&& visit) const {
        for (Record* each = RecordChain::next(header); each && each->owner == header;
             each = RecordChain::next(each))
            if (each->kind != Kind::sequenceEnd) visit(each);
    }
    /// Block record by name, without regard to case; null when there is none.
    Record* findBlock(std::string_view nameUtf8) const;
    Record* groupDictionary() const;
    /// Group records in the order of their names.
    const std::vector<Record*>& groups() const;
    const Layers& layers() const { return *layers_; }
    Blocks& blocks() const { return *blocks_; }
    /// A header variable's value text of the first tag after its name, or of the tag with that code; empty when
    /// it is not there.
    std::string_view headerValue(std::string_view name, int code) const;
    UserCoordinateSystem ucs() const;

    // Objects.

    /// The live object, made from the file when needed; null when it can't be read. Ignores the open rules.
    AcDbObject* live(Record* record) const;
    /// The same, as an entity; null for anything else.
    AcDbEntity* liveEntity(Record* record) const;
    /// A separate copy of the object as the file has it; null for new objects.
    std::unique_ptr<AcDbObject> asInFile(const Record* record) const;
    /// Main entity of model space that is neither erased nor invisible, on a visible layer, of a class that can be
    /// measured.
    bool isSelectable(Record* record) const;
    /// Tight box of all selectable entities of model space as they were when the file was read.
    shape::Box extentsAtOpening() const;

    Acad::ErrorStatus open(Record* record, AcDb::OpenMode mode, bool openErased, AcDbObject*& object);
    void close(Record* record);
    /// Objects that are open now; 0 between commands.
    std::size_t openCount() const { return openCount_; }
    /// Closes whatever is still open and says how many objects that were.
    std::size_t closeAll();
    /// A new entity into a block; the drawing takes it over, open for writing.
    Record* append(Record* blockRecord, AcDbEntity* entity);

    /// Opening for writing is refused with eLockViolation while the drawing is not locked for a command.
    bool isLocked() const { return locked_; }
    void setLocked(bool locked) { locked_ = locked; }

    // Undo. A step is what one command changed; a step without changes leaves no trace.

    History& history() { return history_; }
    /// Called by every change before it happens.
    void aboutToChange(Record* record);

    /// A test's wrench in the works: asked before each opening and each transformation; a status other than eOk
    /// is returned instead of doing it.
    enum class Action { openForRead, openForWrite, transform };
    std::function<Acad::ErrorStatus(Action, const Record*)> fault;

    std::uint32_t nextMark() const { return ++mark_; }

private:
    friend class Reader;
    friend class Writer;
    Drawing();

    std::string path_;
    std::unique_ptr<char, void (*)(void*)> bytes_;
    std::size_t size_ = 0;
    const dxf::Encoding* encoding_ = nullptr;
    // (filled in by the implementation)
};

} // namespace qx::db
