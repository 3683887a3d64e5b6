// Writing a drawing: the file's bytes in whole runs, interrupted only where something changed.
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/patches.h"
#include "dbgroup.h"
#include "dxf/Tag.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <map>
#include <utility>

namespace qx::db {

namespace {

/// Attributes and vertices go with the entity that owns them, and named objects with their dictionary.
bool isGone(const Record* record) {
    return record->has(Record::erased) || (record->owner && record->owner->has(Record::erased));
}

} // namespace

class Writer {
public:
    using Sink = std::function<bool(std::string_view)>;
    Writer(const Drawing& drawing, Sink sink);

    /// False when the sink refused; then the rest was not written.
    bool write(const Progress& progress);

private:
    void lookOver();
    bool writesHandles(bool fileHasSome) const;
    bool isDropped(const Record* record) const;
    bool isTouched(const Record* record) const;
    void writeTouched(Record* record);
    void writePatched(Record* record);
    void writeGroup(const Record* record);
    void writeHeader(const Record* record);
    void writeNewBefore(const Record* record);
    void writeNewSection();
    void writeNew(const BlockDefinition& definition);
    const Record* placeOfNewSection() const;
    /// New entries of a dictionary by their folded names.
    using Entries = std::map<std::string, const NamedObject*>;
    bool getsEntries(const Record* record) const;
    Entries newEntriesOf(const Record* dictionary) const;
    void writeDictionary(const Record* record);
    void writeEntries(const Entries& entries);
    void writeNewObjects();
    void writeNew(const NamedObject& object);
    void writeMembers(const Record* group);
    const Record* placeOfNewObjects() const;
    void put(std::string_view bytes) {
        if (bytes.size() > buffer_.size() - buffered_) flush();
        if (bytes.size() > buffer_.size()) return hand(bytes);
        std::memcpy(buffer_.data() + buffered_, bytes.data(), bytes.size());
        buffered_ += bytes.size();
    }
    void putTag(int code, std::string_view value) { put(tagString(code, value, lineEnd_)); }
    void flush() { hand({buffer_.data(), std::exchange(buffered_, 0)}); }
    void hand(std::string_view bytes) { isGood_ = isGood_ && (bytes.empty() || sink_(bytes)); }
    void put(const char* from, const char* to) { put({from, static_cast<std::size_t>(to - from)}); }

    const Drawing& drawing_;
    Sink sink_;
    std::string_view lineEnd_;
    NewObjectForm form_;
    Patcher patcher_;
    bool hasErased_ = false;
    const Record* newSectionBefore_ = nullptr; ///< where entities get a section; null: they have one
    std::vector<const NamedObject*> newNamed_; ///< as far as they are written
    const Record* newObjectsBefore_ = nullptr; ///< where those go; null: there are none
    std::uint64_t newestHandle_ = 0;           ///< of the new objects that are written; 0: none
    bool isGood_ = true;
    std::array<char, 1 << 16> buffer_; ///< many pieces are no longer than a number
    std::size_t buffered_ = 0;
};

Writer::Writer(const Drawing& drawing, Sink sink)
    : drawing_{drawing}, sink_{std::move(sink)},
      lineEnd_{drawing.bytes_.view().substr(0, 4096).find("\r\n") == std::string_view::npos ? "\n" : "\r\n"},
      patcher_{lineEnd_} {
    lookOver();
}

void Writer::lookOver() {
    bool hasHandles = false;
    for (const Record* each = drawing_.firstRecord(); each; each = RecordChain::next(each)) {
        hasErased_ = hasErased_ || (each->has(Record::erased) && !each->has(Record::isNew));
        hasHandles = hasHandles || (each->handle != 0 && !each->has(Record::isNew));
        if (each->has(Record::isNew) && !each->has(Record::erased))
            newestHandle_ = std::max(newestHandle_, each->handle);
    }
    const Version& version = drawing_.version();
    form_ = {writesHandles(hasHandles), version.hasOwners(), version.hasSubclasses(), lineEnd_};
    if (newestHandle_ && !drawing_.entities_) newSectionBefore_ = placeOfNewSection();
    for (const NamedObject& each : drawing_.newNamed())
        if (!isGone(each.record) && each.record->live) newNamed_.push_back(&each);
    if (!newNamed_.empty()) newObjectsBefore_ = placeOfNewObjects();
}

// Up to R12 a drawing may do without handles.
bool Writer::writesHandles(bool fileHasSome) const {
    if (drawing_.version().hasSubclasses()) return true;
    const std::string_view handling = drawing_.headerValue("$HANDLING", 70);
    return handling.empty() ? fileHasSome : dxf::toReal(handling).value_or(0) != 0;
}

bool Writer::isDropped(const Record* record) const { return hasErased_ && isGone(record); }

bool Writer::isTouched(const Record* record) const {
    if (record->has(Record::changed) || isDropped(record)) return true;
    if (hasErased_ && record->kind == Kind::group) return true;
    return newestHandle_ &&
           (record == drawing_.header_ || record == newSectionBefore_ || record == newObjectsBefore_ ||
            record->kind == Kind::endSection || record->kind == Kind::endBlock || getsEntries(record));
}

bool Writer::write(const Progress& progress) {
    constexpr std::size_t bytesBetweenReports = std::size_t{16} << 20;
    const std::string_view all = drawing_.bytes_.view();
    const char* runBegin = all.data();
    const char* nextReport = runBegin + bytesBetweenReports;
    for (Record* each = drawing_.firstRecord(); each && isGood_; each = RecordChain::next(each)) {
        if (!each->begin || !isTouched(each)) continue;
        put(runBegin, each->begin);
        writeTouched(each);
        runBegin = each->begin + drawing_.bytesOf(each).size();
        if (!progress || runBegin < nextReport) continue;
        progress(static_cast<std::size_t>(runBegin - all.data()), all.size());
        nextReport = runBegin + bytesBetweenReports;
    }
    put(runBegin, all.data() + all.size());
    flush();
    return isGood_;
}

void Writer::writeTouched(Record* record) {
    writeNewBefore(record);
    if (isDropped(record)) return;
    if (record == drawing_.header_)
        writeHeader(record);
    else if (record->kind == Kind::group && hasErased_)
        writeGroup(record);
    else if (getsEntries(record))
        writeDictionary(record);
    else if (record->has(Record::changed) && record->live)
        writePatched(record);
    else
        put(drawing_.bytesOf(record));
}

void Writer::writePatched(Record* record) {
    const std::string_view bytes = drawing_.bytesOf(record);
    const char* at = bytes.data();
    for (const Patch& patch : patcher_.patchesFor(bytes, *record->live)) {
        put(at, patch.at);
        put(patch.text.view());
        at = patch.at + patch.replaced;
    }
    put(at, bytes.data() + bytes.size());
}

// Members that were erased leave the group; whatever else the file lists stays.
void Writer::writeGroup(const Record* record) {
    const std::string_view bytes = drawing_.bytesOf(record);
    const char* at = bytes.data();
    dxf::TagCursor cursor{at, at + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag);) {
        const Record* member =
            tag.code == 340 ? drawing_.find(dxf::toHandle(tag.value).value_or(0)) : nullptr;
        if (!member || !isDropped(member)) continue;
        put(at, tag.begin);
        at = tag.end;
    }
    put(at, bytes.data() + bytes.size());
}

void Writer::writeHeader(const Record* record) {
    const std::string_view bytes = drawing_.bytesOf(record);
    const std::string_view seed = drawing_.headerValue("$HANDSEED", 5);
    if (seed.empty() || !form_.hasHandle || dxf::toHandle(seed).value_or(0) > newestHandle_)
        return put(bytes);
    put(bytes.data(), seed.data());
    put(dxf::handleText(newestHandle_ + 1));
    put(seed.data() + seed.size(), bytes.data() + bytes.size());
}

// Entities of model and paper space stand in a section of their own, those of other blocks before their
// ENDBLK.
void Writer::writeNewBefore(const Record* record) {
    if (!newestHandle_) return;
    if (record == newSectionBefore_) writeNewSection();
    if (record == newObjectsBefore_) writeNewObjects();
    if (record->kind == Kind::endBlock) {
        const BlockDefinition* definition = drawing_.blocks().of(record->owner);
        if (definition && definition->end == record && !definition->isInSection()) writeNew(*definition);
    } else if (record->kind == Kind::endSection && record == Drawing::endOf(drawing_.entities_)) {
        for (const BlockDefinition& definition : drawing_.blocks().all())
            if (definition.isInSection()) writeNew(definition);
    }
}

// The usual place: behind all that entities refer to, before the objects.
const Record* Writer::placeOfNewSection() const {
    const Record* place = nullptr;
    for (const Record* each = drawing_.firstRecord(); each; each = RecordChain::next(each)) {
        if (drawing_.bytesOf(each).empty()) continue; // it only stands in for one
        if (each->kind == Kind::table || each->kind == Kind::block) place = nullptr;
        if (each == drawing_.objects_ || (!place && each->kind == Kind::endOfFile)) place = each;
    }
    return place;
}

void Writer::writeNewSection() {
    const auto hasNew = [](const BlockDefinition& definition) {
        return definition.isInSection() && std::ranges::any_of(definition.made, [](const Record* each) {
                   return !each->has(Record::erased);
               });
    };
    if (std::ranges::none_of(drawing_.blocks().all(), hasNew)) return;
    putTag(0, "SECTION"), putTag(2, "ENTITIES");
    for (const BlockDefinition& definition : drawing_.blocks().all())
        if (definition.isInSection()) writeNew(definition);
    putTag(0, "ENDSEC");
}

void Writer::writeNew(const BlockDefinition& definition) {
    for (const Record* each : definition.made)
        if (!each->has(Record::erased))
            put(newObjectBytes(static_cast<AcDbEntity&>(*each->live), definition, form_));
}

// ---- groups and the dictionaries that name them

bool Writer::getsEntries(const Record* record) const {
    const auto isOwned = [&](const NamedObject* each) { return each->record->owner == record; };
    return record->kind == Kind::dictionary && std::ranges::any_of(newNamed_, isOwned);
}

Writer::Entries Writer::newEntriesOf(const Record* dictionary) const {
    Entries entries;
    for (const NamedObject* each : newNamed_)
        if (each->record->owner == dictionary) entries.emplace(foldedName(each->name), each);
    return entries;
}

// A name that stands there already, of an object that is gone, comes to mean the new one.
void Writer::writeDictionary(const Record* record) {
    const std::string_view bytes = drawing_.bytesOf(record);
    const char* at = bytes.data();
    const auto replace = [&](std::string_view what, std::string_view with) {
        put(at, what.data());
        put(with);
        at = what.data() + what.size();
    };
    Entries entries = newEntriesOf(record);
    std::string_view name;
    FieldTags tags{bytes};
    for (dxf::Tag tag; tags.next(tag);) {
        if (tag.code == 3) name = tag.value;
        if ((tag.code != 350 && tag.code != 360) || name.empty()) continue;
        if (const auto entry = entries.extract(foldedName(drawing_.encoding().toUtf8(name)))) {
            replace(name, drawing_.encoding().fromUtf8(entry.mapped()->name));
            replace(tag.value, dxf::handleText(entry.mapped()->record->handle));
        }
        name = {};
    }
    const char* end = bytes.data() + bytes.size();
    put(at, tags.end() ? tags.end() : end);
    writeEntries(entries);
    if (tags.end()) put(tags.end(), end);
}

void Writer::writeEntries(const Entries& entries) {
    for (const auto& [key, each] : entries) {
        putTag(3, drawing_.encoding().fromUtf8(each->name));
        putTag(350, dxf::handleText(each->record->handle));
    }
}

// The root dictionary is the first of the objects, all else comes last. The section itself stands behind that
// of the entities.
const Record* Writer::placeOfNewObjects() const {
    if (!drawing_.objects_)
        return drawing_.entities_ ? RecordChain::next(Drawing::endOf(drawing_.entities_)) : newSectionBefore_;
    const bool isRootNew = !newNamed_.front()->record->owner;
    return isRootNew ? RecordChain::next(drawing_.objects_) : Drawing::endOf(drawing_.objects_);
}

void Writer::writeNewObjects() {
    if (!drawing_.objects_) putTag(0, "SECTION"), putTag(2, "OBJECTS");
    for (const NamedObject* each : newNamed_) writeNew(*each);
    if (!drawing_.objects_) putTag(0, "ENDSEC");
}

void Writer::writeNew(const NamedObject& object) {
    const Record* record = object.record;
    const bool isGroup = record->kind == Kind::group;
    const std::uint64_t owner = record->owner ? record->owner->handle : 0;
    putTag(0, isGroup ? "GROUP" : "DICTIONARY");
    putTag(5, dxf::handleText(record->handle));
    if (owner) putTag(102, "{ACAD_REACTORS"), putTag(330, dxf::handleText(owner)), putTag(102, "}");
    if (form_.hasOwner) putTag(330, dxf::handleText(owner));
    putTag(100, isGroup ? "AcDbGroup" : "AcDbDictionary");
    if (isGroup) {
        putTag(300, "");
        putTag(70, object.name.starts_with('*') ? "     1" : "     0");
        putTag(71, "     1");
        return writeMembers(record);
    }
    if (form_.hasOwner) putTag(281, "     1");
    writeEntries(newEntriesOf(record));
}

void Writer::writeMembers(const Record* group) {
    for (const Record* each : static_cast<const AcDbGroup*>(group->live)->members())
        if (!isGone(each)) putTag(340, dxf::handleText(each->handle));
}

Outcome Drawing::save(const std::string& path, os::Backup backup, const Progress& progress) const {
    if (os::isSameFile(path, path_) && isFileChangedByOthers())
        return Outcome::failure("Can't write " + path +
                                ": another program has changed it since it was opened.");
    auto file = os::AtomicFile::create(path);
    if (!file) return Outcome::failure(file.error());
    Writer writer{*this, [&](std::string_view bytes) { return file->write(bytes); }};
    writer.write(progress);
    return file->commit(backup);
}

std::string Drawing::toBytes() const {
    std::string bytes;
    Writer writer{*this, [&](std::string_view more) {
                      bytes += more;
                      return true;
                  }};
    writer.write({});
    return bytes;
}

} // namespace qx::db
