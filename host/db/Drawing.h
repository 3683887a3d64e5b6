// A drawing: the file's bytes, one record per object, live objects for those that were opened, and the undo
// history. Reading keeps every byte; saving writes the bytes back and touches only what really differs.
//
// One drawing belongs to one thread. Objects are opened and closed under the host's rules; a command's
// changes form one undo step.
#pragma once

#include "db/Blocks.h"
#include "db/FieldMove.h"
#include "db/Finding.h"
#include "db/HandleIndex.h"
#include "db/History.h"
#include "db/Layers.h"
#include "db/Record.h"
#include "db/Version.h"
#include "dbmain.h"
#include "dxf/Encoding.h"
#include "os/Result.h"
#include "os/files.h"
#include "shape/Primitives.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qx::db {

/// Called now and then with the bytes done and all there are.
using Progress = os::Progress;

/// The drawing's own frame for typed points, in world coordinates.
struct UserCoordinateSystem {
    AcGePoint3d origin;
    AcGeVector3d xAxis{1, 0, 0}, yAxis{0, 1, 0};
};

/// How a style draws its characters.
struct TextStyle {
    double widthFactor = 1, obliqueDegrees = 0;
};

/// A group or dictionary that was made in this session. The record's owner is the dictionary that names it;
/// the root dictionary has neither.
struct NamedObject {
    Record* record = nullptr;
    std::string name; ///< UTF-8
};

class QX_HOST_API Drawing {
public:
    /// A drawing, or one sentence that names the file and, where there is one, the line: text DXF of any
    /// version, cut off nowhere.
    static Result<std::unique_ptr<Drawing>> read(const std::string& path, const Progress& progress = {});
    /// The same from bytes; `name` stands in the sentences.
    static Result<std::unique_ptr<Drawing>> fromBytes(std::string_view bytes, const std::string& name);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    AcDbDatabase& database() { return database_; }
    const std::string& path() const { return path_; }
    /// Whether the file is no longer what was read or saved last.
    bool isFileChangedByOthers() const {
        const auto now = os::stampOf(path_);
        return stamp_ && now && now != stamp_;
    }
    /// From now on it is the drawing in that file.
    void rename(std::string path) {
        path_ = std::move(path);
        stamp_ = os::stampOf(path_);
    }
    const dxf::Encoding& encoding() const { return *encoding_; }
    const Version& version() const { return version_; }
    /// What was noticed while reading, and later when an object's fields were read or drawn.
    const std::vector<Finding>& findings() const { return findings_; }
    /// The same sentence about the same record is kept once.
    void addFinding(const Record* where, std::string sentence) const {
        addFindingAt(where ? where->begin : nullptr, std::move(sentence));
    }
    /// The same about an object that can only be kept, and why.
    void addUnusable(const Record* where, const std::string& why) const {
        addFinding(where, why + "; the object is kept as it is and can't be used");
    }
    /// `where` points into the bytes of the file; null: the whole file is meant.
    void addFindingAt(const char* where, std::string sentence) const;
    /// 1-based line of the file on which that byte stands; 0 for null.
    std::size_t lineOf(const char* where) const;

    // Saving. Erased objects are left out, new ones spliced in before the end of their section.

    /// Replaces the file in one go, or leaves it as it is. Refuses to replace the drawing's own file when
    /// somebody else has changed that since.
    Outcome save(const std::string& path, os::Backup backup, const Progress& progress = {}) const;
    /// The bytes that saving writes.
    std::string toBytes() const;
    /// True when steps were done or taken back since the drawing was read or marked as saved.
    bool isModified() const { return history_.position() != savedAt_; }
    /// It differs from its file whatever is undone.
    void markChanged() { savedAt_ = static_cast<std::size_t>(-1); }
    void markSaved() {
        savedAt_ = history_.position();
        stamp_ = os::stampOf(path_);
    }

    // Finding objects.

    /// Null when there is no such handle. Builds an index on first use.
    Record* find(std::uint64_t handle) const;
    Record* firstRecord() const { return records_.first(); }
    /// The record's part of the file; empty for a new object.
    std::string_view bytesOf(const Record* record) const;
    Record* modelSpace() const { return modelSpace_; }
    /// Main entities of a block in file order, then new ones; erased ones included, attributes and vertices
    /// not.
    template <class Visit> void forEachInBlock(const Record* blockRecord, Visit&& visit) const;
    /// Everything in the section of entities, whosever it is; new entities left out.
    template <class Visit> void forEachInSection(Visit&& visit) const {
        Record* each = entities_ ? RecordChain::next(entities_) : nullptr;
        for (; each && each->kind != Kind::endSection; each = RecordChain::next(each)) visit(each);
    }
    template <class Visit> void forEachInModelSpace(Visit&& visit) const {
        forEachInBlock(modelSpace_, visit);
    }
    /// Attributes or vertices of an entity, in order, without the sequence end.
    template <class Visit> void forEachOwned(const Record* header, Visit&& visit) const {
        for (Record* each = RecordChain::next(header); each && each->owner == header;
             each = RecordChain::next(each))
            if (each->kind != Kind::sequenceEnd) visit(each);
    }
    /// Whether the record has attributes or vertices, or at least a sequence end of its own.
    static bool hasParts(const Record* record) {
        if (record->kind != Kind::insert && record->kind != Kind::polyline) return false;
        const Record* next = RecordChain::next(record);
        return next && next->owner == record;
    }
    /// Block record by name (UTF-8), without regard to case; null when there is none.
    Record* findBlock(std::string_view name) const;
    Record* blockTable() const { return blockTable_; }
    /// Null when the drawing has none.
    Record* groupDictionary() const;
    /// Group records in the order of their names, erased ones left out.
    std::vector<Record*> groups() const;
    /// Whether the group dictionary names something so, without regard to case.
    bool hasGroup(std::string_view name) const;
    /// For an unnamed group: the first of *A1, *A2, ... that is free.
    std::string freeGroupName() const;
    const Layers& layers() const { return *layers_; }
    Blocks& blocks() const { return *blocks_; }
    /// By name, as the file spells it; a plain one when there is none.
    TextStyle textStyle(std::string_view name) const;
    /// The value of a header variable's tag with that code; empty when it is not there.
    std::string_view headerValue(std::string_view name, int code) const;
    UserCoordinateSystem ucs() const;

    // Objects.

    /// The live object, made from the file when needed; null when it can't be read. Ignores the open rules.
    AcDbObject* live(Record* record) const {
        return record->live || record->has(Record::unusable) ? record->live : read(record);
    }
    /// The same, as an entity; null for anything else.
    AcDbEntity* liveEntity(Record* record) const {
        return isEntity(record->kind) ? static_cast<AcDbEntity*>(live(record)) : nullptr;
    }
    /// A separate copy of the object as the file has it; null for new objects and for what can't be read.
    std::unique_ptr<AcDbObject> asInFile(Record* record) const;
    /// Main entity of model space that is neither erased nor invisible, on a visible layer, of a class that
    /// can be measured.
    bool isSelectable(Record* record) const;
    /// Box of the selectable entities of model space as the file has them; new ones don't count.
    shape::Box extentsAtOpening() const;

    /// The rules of opening and closing are those of acdbOpenAcDbObject() and AcDbObject::close().
    Acad::ErrorStatus open(Record* record, AcDb::OpenMode mode, bool openErased, AcDbObject*& object);
    Acad::ErrorStatus close(Record* record);
    Acad::ErrorStatus upgrade(Record* record);
    /// Takes the parts of an entity along, both ways.
    Acad::ErrorStatus erase(Record* record, bool erasing);
    /// Objects that are open now; 0 between commands.
    std::size_t openCount() const { return openCount_; }
    /// Closes whatever is still open and says how many objects that were.
    std::size_t closeAll();
    /// False for a block that the file only names: saving has no place for its entities; and for a class that
    /// came after the drawing's version.
    bool canAppend(const Record* blockRecord, const AcDbEntity& entity) const;
    /// A new entity into such a block; the drawing takes it over, open for writing.
    Record* append(Record* blockRecord, AcDbEntity* entity);
    /// A new group under a name (UTF-8, without backslashes) that hasGroup() does not know, with the
    /// dictionaries that it needs; one whose name begins with an asterisk is unnamed. The members are main
    /// entities that find() finds by their handles. The version must have groups.
    Record* makeGroup(std::string name, std::vector<Record*> members);
    /// Groups and dictionaries made in this session, erased ones included, owners before what they own.
    const std::vector<NamedObject>& newNamed() const { return newNamed_; }

    /// Opening for writing is refused with eLockViolation while the drawing is not locked for a command.
    bool isLocked() const { return locked_; }
    void setLocked(bool locked) { locked_ = locked; }

    // Undo. A step is what one command changed; a step without changes leaves no trace.

    History& history() { return history_; }
    const History& history() const { return history_; }
    /// Called by the history when it has exchanged the object's state.
    void noteSwap(Record* record) {
        forgetBox(*record);
        if (record->owner != modelSpace_) noteChangeOfPart(record);
    }
    /// Called by every change before it happens.
    void aboutToChange(Record* record) {
        history_.logChange(record);
        noteChange(record);
    }
    /// The same for a translation: where Shift::apply() stores what it replaces, or null.
    double* aboutToTranslate(Record* record, const Shift& shift) {
        double* replaced = history_.logTranslation(record, shift.axes(), shift.coordinateCount());
        noteChange(record);
        return replaced;
    }

    /// Asked before each opening and each transformation, so that tests can make any of them fail; a status
    /// other than eOk is returned instead of doing it.
    enum class Action { openForRead, openForWrite, transform };
    using Fault = std::function<Acad::ErrorStatus(Action, const Record*)>;
    void setFault(Fault fault) { fault_ = std::move(fault); }
    /// Told of each object that is opened for writing; reading costs nothing more by it.
    using WriteListener = std::function<void()>;
    void setWriteListener(WriteListener listener) { writeListener_ = std::move(listener); }
    /// Told of every opening and every transformation that is refused, and why.
    using RefusalListener = std::function<void(const Record*, Acad::ErrorStatus)>;
    void setRefusalListener(RefusalListener listener) { refusalListener_ = std::move(listener); }
    /// Passes the status on, and tells the listener unless it is eOk.
    Acad::ErrorStatus noted(const Record* record, Acad::ErrorStatus status) const {
        if (status != Acad::eOk && refusalListener_) refusalListener_(record, status);
        return status;
    }
    Acad::ErrorStatus faultAt(Action action, const Record* record) const {
        return fault_ ? fault_(action, record) : Acad::eOk;
    }

    /// A number for Record::mark that no walk has used.
    std::uint32_t nextMark() const { return ++mark_; }
    /// An object that this drawing holds was deleted by somebody else; the next takeDeletions() says so.
    void noteDeletion(const Record*) { ++deletions_; }
    std::size_t takeDeletions() { return std::exchange(deletions_, 0); }

private:
    friend class Reader;
    friend class Writer;
    Drawing(os::Bytes bytes, std::string name);
    static Result<std::unique_ptr<Drawing>> fromBytes(os::Bytes bytes, const std::string& name,
                                                      const Progress& progress);
    void noteChange(Record* record) {
        record->set(Record::changed);
        if (record->owner != modelSpace_) noteChangeOfPart(record);
    }
    void noteChangeOfPart(const Record* record);
    static void forgetBox(Record& record) {
        if (record.live && isEntity(record.kind)) static_cast<AcDbEntity*>(record.live)->forgetBox();
    }
    AcDbObject* read(Record* record) const;
    void addAsAtOpening(Record* record, shape::Sink& sink) const;
    std::unique_ptr<AcDbObject> decoded(Record* record) const;
    Acad::ErrorStatus tryOpen(Record* record, AcDb::OpenMode mode, bool openErased, AcDbObject*& object);
    Acad::ErrorStatus tryUpgrade(Record* record);
    Acad::ErrorStatus refusal(const Record* record, AcDb::OpenMode mode, bool openErased) const;
    bool isOnLockedLayer(Record* record) const;
    const LayerState& currentLayer() const;
    std::uint64_t takeHandle();
    Record* addNew(Kind kind, AcDbObject* object, Record* owner);
    Record* addNamed(Kind kind, std::unique_ptr<AcDbObject> object, Record* owner, std::string name);
    Record* rootDictionary() const;
    static const Record* endOf(const Record* section);

    std::string path_;
    std::optional<os::FileStamp>
        stamp_; ///< of the file when it was read or saved; nothing: it came from none
    os::Bytes bytes_;
    Version version_;
    const dxf::Encoding* encoding_ = nullptr;
    RecordChain records_{*this};
    std::unique_ptr<Layers> layers_;
    std::unique_ptr<Blocks> blocks_;
    Record* modelSpace_ = nullptr;
    Record* blockTable_ = nullptr;
    Record* header_ = nullptr;   ///< the section with the variables
    Record* entities_ = nullptr; ///< the section
    Record* objects_ = nullptr;  ///< the section
    std::vector<NamedObject> newNamed_;
    History history_;
    std::size_t savedAt_ = 0;
    std::size_t openCount_ = 0;
    std::size_t deletions_ = 0;
    bool locked_ = false;
    Fault fault_;
    WriteListener writeListener_;
    RefusalListener refusalListener_;
    mutable std::vector<Finding> findings_;
    mutable std::optional<UserCoordinateSystem> ucs_;  ///< once it was asked for, since a header may be long
    mutable const LayerState* currentLayer_ = nullptr; ///< the same
    mutable std::vector<std::size_t> linesBefore_;     ///< each stretch of the file, as far as was asked
    mutable std::optional<std::unordered_map<std::string, TextStyle>> textStyles_; ///< by folded name
    mutable std::set<std::pair<const char*, std::string>> noted_; ///< what the findings say, and where
    mutable HandleIndex index_;                                   ///< built when it is first used
    mutable std::uint32_t mark_ = 0;
    std::uint64_t nextHandle_ = 0; ///< 0 until the first new object asks for one
    bool takesGaps_ = false;       ///< there are none behind all others any more
    AcDbDatabase database_{*this};
};

template <class Visit> void Drawing::forEachInBlock(const Record* blockRecord, Visit&& visit) const {
    const BlockDefinition* definition = blocks_->of(blockRecord);
    if (!definition) return;
    const auto visitOwn = [&](Record* each) {
        if (each->owner == blockRecord) visit(each);
    };
    const auto endsBlock = [](const Record* each) {
        return each->kind == Kind::endBlock || each->kind == Kind::block || each->kind == Kind::endSection;
    };
    if (definition->begin) {
        Record* each = RecordChain::next(definition->begin);
        for (; each && !endsBlock(each); each = RecordChain::next(each)) visitOwn(each);
    }
    if (blockRecord == modelSpace_)
        forEachInSection(visitOwn);
    else if (definition->isLayout)
        for (Record* each : blocks_->onSheet(*definition)) visit(each);
    for (Record* each : definition->made) visit(each);
}

} // namespace qx::db
