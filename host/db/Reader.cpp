// Reading a drawing: one walk over the tags that cuts the file into records and finds out who owns them.
// Values are read later, when an object is first asked for.
#include "db/Drawing.h"
#include "db/Oddities.h"
#include "db/classes.h"
#include "dbsymtb.h"
#include "dxf/Tag.h"

#include <algorithm>
#include <cstring>

namespace qx::db {

namespace {

constexpr std::string_view oldestVersion = "AC1015";
constexpr std::size_t bytesBetweenReports = std::size_t{8} << 20;

std::string quoted(std::string_view text) {
    constexpr std::size_t most = 40;
    std::string shown;
    for (char c : text.substr(0, most)) shown += static_cast<unsigned char>(c) < 0x20 ? '?' : c;
    return '"' + shown + (text.size() > most ? "..." : "") + '"';
}

std::string_view lineAt(const char* at, const char* end) {
    const char* stop = std::find(at, end, '\n');
    return {at, static_cast<std::size_t>(stop - at)};
}

} // namespace

class Reader {
public:
    Reader(Drawing& drawing, const Progress& progress) : drawing_{drawing}, progress_{progress} {}

    /// Empty, or the sentence that refuses the file.
    std::string read();

private:
    enum class Section { none, unnamed, header, tables, blocks, entities, objects, other };

    std::string refusedByContent() const;
    void walk();
    void startRecord(const dxf::Tag& tag);
    void headerTag(const dxf::Tag& tag);
    void enterSection(std::string_view name);
    void finishRecord(const char* end);
    void finishHeader();
    void finishTableRecord(std::string_view bytes);
    void finishBlockRecord(std::string_view bytes);
    void finishEntity();
    Record* ownerOfEntity();
    void makeModelSpace(const char* at);
    void refuseVersion(std::string_view version);
    void refuse(const char* at, const std::string& what);
    void report(const char* at);

    Drawing& drawing_;
    const Progress& progress_;
    Oddities oddities_{drawing_};
    std::string error_;
    Section section_ = Section::none;
    Record* record_ = nullptr;
    Record* header_ = nullptr; ///< the entity that vertices and attributes belong to
    Record* block_ = nullptr;  ///< block record of the definition being read
    Record* paperSpace_ = nullptr;
    bool isComplete_ = false;
    const char* nextReport_ = nullptr;

    // Of the record being read.
    std::string_view ownerHandle_; ///< empty when it gives none
    bool isInGroup_ = false;       ///< between 102 { and 102 }
    bool isInPaper_ = false;

    // Neighbours mostly share an owner.
    std::string_view lastOwnerHandle_;
    Record* lastOwner_ = nullptr;
};

void Reader::refuse(const char* at, const std::string& what) {
    const auto line = 1 + std::count(drawing_.bytes_.view().data(), at, '\n');
    if (error_.empty()) error_ = drawing_.path_ + ":" + std::to_string(line) + ": " + what;
}

std::string Reader::refusedByContent() const {
    const std::string_view bytes = drawing_.bytes_.view();
    const auto refused = [&](const std::string& what) { return drawing_.path_ + ":1: " + what; };
    if (bytes.empty()) return refused("the file is empty");
    if (bytes.starts_with("AutoCAD Binary DXF"))
        return refused("this is a binary DXF file; only text DXF is read");
    if (bytes.size() >= 6 && bytes.starts_with("AC1") &&
        bytes.substr(0, 6).find('\n') == std::string_view::npos)
        return refused("this is a DWG file; only text DXF is read");
    return {};
}

std::string Reader::read() {
    error_ = refusedByContent();
    if (error_.empty()) walk();
    if (error_.empty() && !drawing_.encoding_) refuseVersion({});
    if (error_.empty() && !drawing_.modelSpace_)
        makeModelSpace(drawing_.bytes_.data() + drawing_.bytes_.size());
    if (error_.empty()) oddities_.report();
    return error_;
}

void Reader::walk() {
    const std::string_view bytes = drawing_.bytes_.view();
    const char* begin = bytes.data();
    const char* end = begin + bytes.size();
    if (bytes.starts_with("\xEF\xBB\xBF")) begin += 3;
    nextReport_ = begin + bytesBetweenReports;

    dxf::TagCursor cursor{begin, end};
    for (dxf::Tag tag; error_.empty() && !isComplete_ && cursor.next(tag);) {
        if (tag.code == 0)
            startRecord(tag);
        else if (record_)
            headerTag(tag);
        else if (tag.code != 999)
            refuse(tag.begin, "a drawing begins with group 0, not " + std::to_string(tag.code));
    }
    if (!error_.empty()) return;
    if (cursor.fault() == dxf::TagFault::codeIsNoNumber)
        refuse(cursor.position(), quoted(lineAt(cursor.position(), end)) + " is no group code");
    if (!isComplete_) refuse(end, "the file is cut off: it ends without EOF");
}

void Reader::startRecord(const dxf::Tag& tag) {
    if (record_) finishRecord(tag.begin);
    const bool isAmongEntities = section_ == Section::entities || section_ == Section::blocks;
    record_ = drawing_.records_.append();
    record_->begin = tag.begin;
    record_->kind = kindOf(dxf::trimmed(tag.value), isAmongEntities);
    ownerHandle_ = {};
    isInGroup_ = isInPaper_ = false;
    if (tag.begin >= nextReport_) report(tag.begin);

    const bool isOutside = section_ == Section::none;
    if (record_->kind == Kind::section) {
        if (!isOutside) refuse(tag.begin, "a section begins before the one before it has ended");
        section_ = Section::unnamed;
    } else if (record_->kind == Kind::endOfFile) {
        if (!isOutside) refuse(tag.begin, "EOF stands inside a section");
        isComplete_ = true;
    } else if (isOutside) {
        refuse(tag.begin, quoted(tag.value) + " stands outside of any section");
    }
}

// The few groups that say what a record is and whose; all other values wait until the object is opened.
void Reader::headerTag(const dxf::Tag& tag) {
    switch (tag.code) {
    case 2:
        if (section_ == Section::unnamed) enterSection(dxf::trimmed(tag.value));
        if (showsBlock(record_->kind) && tag.value.starts_with('*') && drawing_.blocks_)
            drawing_.blocks_->noteUse(tag.value);
        break;
    case 5:
    case 105:
        if (record_->handle == 0 && !isInGroup_ && record_->kind != Kind::section)
            record_->handle = dxf::toHandle(tag.value).value_or(0);
        break;
    case 67:
        isInPaper_ = dxf::trimmed(tag.value) == "1";
        break;
    case 102:
        isInGroup_ = dxf::trimmed(tag.value).starts_with('{');
        break;
    case 330:
        if (!isInGroup_ && ownerHandle_.empty()) ownerHandle_ = dxf::trimmed(tag.value);
        break;
    default:
        break;
    }
}

void Reader::enterSection(std::string_view name) {
    constexpr std::pair<std::string_view, Section> names[] = {
        {"HEADER", Section::header},     {"TABLES", Section::tables},   {"BLOCKS", Section::blocks},
        {"ENTITIES", Section::entities}, {"OBJECTS", Section::objects},
    };
    section_ = Section::other;
    for (const auto& [known, section] : names)
        if (known == name) section_ = section;
    if (section_ == Section::header && drawing_.header_) section_ = Section::other;
    if (section_ == Section::entities && drawing_.entities_) {
        section_ = Section::other;
        drawing_.addFinding(record_, "a second section ENTITIES; its objects are kept and can't be used");
    }
    if (section_ == Section::tables && (drawing_.entities_ || drawing_.modelSpace_))
        refuse(record_->begin, "the tables stand behind what refers to them");
    if (section_ == Section::header) drawing_.header_ = record_;
    if (section_ == Section::entities) drawing_.entities_ = record_;
    if (section_ == Section::objects) drawing_.objects_ = record_;
    if (section_ == Section::header || section_ == Section::other || drawing_.encoding_) return;
    refuseVersion({});
}

void Reader::refuseVersion(std::string_view version) {
    const char* where = version.empty() ? record_->begin : version.data();
    refuse(where, (version.empty() ? "the drawing does not say its version"
                                   : "version " + quoted(version) + " is too old") +
                      "; only AC1015 (2000) and later are read");
}

void Reader::finishRecord(const char* end) {
    const std::string_view bytes{record_->begin, static_cast<std::size_t>(end - record_->begin)};
    if (section_ == Section::unnamed) refuse(record_->begin, "a section without a name");
    switch (section_) {
    case Section::header:
        if (record_->kind == Kind::endSection) finishHeader();
        break;
    case Section::tables:
        finishTableRecord(bytes);
        break;
    case Section::blocks:
        finishBlockRecord(bytes);
        break;
    case Section::entities:
        if (!drawing_.modelSpace_) makeModelSpace(end);
        finishEntity();
        break;
    default:
        break;
    }
    if (section_ != Section::other) oddities_.note(record_, bytes);
    if (record_->kind == Kind::endSection) section_ = Section::none;
}

void Reader::finishHeader() {
    const std::string_view version = drawing_.headerValue("$ACADVER", 1);
    if (version < oldestVersion || !version.starts_with("AC1")) {
        record_ = drawing_.header_;
        return refuseVersion(version);
    }
    drawing_.encoding_ = &dxf::Encoding::of(version, drawing_.headerValue("$DWGCODEPAGE", 3));
    drawing_.layers_ = std::make_unique<Layers>(*drawing_.encoding_);
    drawing_.blocks_ = std::make_unique<Blocks>(drawing_);
}

void Reader::finishTableRecord(std::string_view bytes) {
    if (record_->kind == Kind::layer) drawing_.layers_->add(record_, bytes);
    if (record_->kind == Kind::table && newObject(Kind::table, bytes)->isKindOf(AcDbBlockTable::desc()))
        drawing_.blockTable_ = record_;
    if (record_->kind != Kind::blockRecord) return;
    drawing_.blocks_->addRecord(record_, bytes);
    const std::string name = foldedName(drawing_.blocks_->of(record_)->name);
    if (name == "*model_space") drawing_.modelSpace_ = record_;
    if (name == "*paper_space") paperSpace_ = record_;
}

void Reader::finishBlockRecord(std::string_view bytes) {
    if (record_->kind == Kind::block) {
        const BlockDefinition* definition = drawing_.blocks_->addBegin(record_, bytes);
        block_ = definition ? definition->record : nullptr;
        header_ = nullptr;
        record_->owner = block_;
    } else if (record_->kind == Kind::endBlock) {
        drawing_.blocks_->addEnd(record_);
        record_->owner = block_;
        block_ = nullptr;
    } else {
        finishEntity();
    }
}

void Reader::finishEntity() {
    const bool isPart = record_->kind == Kind::attribute || record_->kind == Kind::vertex ||
                        record_->kind == Kind::sequenceEnd;
    if (isPart && header_) {
        record_->owner = header_;
        if (record_->kind == Kind::sequenceEnd) header_ = nullptr;
        return;
    }
    if (!isMainEntity(record_->kind)) return;
    header_ = record_->kind == Kind::insert || record_->kind == Kind::polyline ? record_ : nullptr;
    record_->owner = section_ == Section::blocks ? block_ : ownerOfEntity();
}

Record* Reader::ownerOfEntity() {
    if (!ownerHandle_.empty() && ownerHandle_ == lastOwnerHandle_ && lastOwner_) return lastOwner_;
    const std::uint64_t handle = dxf::toHandle(ownerHandle_).value_or(0);
    for (const BlockDefinition& definition : drawing_.blocks_->all()) {
        if (handle == 0 || definition.record->handle != handle) continue;
        lastOwnerHandle_ = ownerHandle_;
        return lastOwner_ = definition.record;
    }
    return isInPaper_ ? paperSpace_ : drawing_.modelSpace_;
}

// A drawing without a record for model space still has its entities; the record that stands in has no bytes.
void Reader::makeModelSpace(const char* at) {
    Record* record = drawing_.records_.append();
    record->begin = at;
    record->kind = Kind::blockRecord;
    drawing_.blocks_->addRecord(record, "  0\nBLOCK_RECORD\n  2\n*Model_Space\n");
    drawing_.modelSpace_ = record;
}

void Reader::report(const char* at) {
    nextReport_ = at + bytesBetweenReports;
    if (progress_) progress_(static_cast<std::size_t>(at - drawing_.bytes_.data()), drawing_.bytes_.size());
}

Result<std::unique_ptr<Drawing>> Drawing::read(const std::string& path, const Progress& progress) {
    auto bytes = os::readFile(path, progress);
    if (!bytes) return Result<std::unique_ptr<Drawing>>::failure(bytes.error());
    return fromBytes(std::move(*bytes), path, progress);
}

Result<std::unique_ptr<Drawing>> Drawing::fromBytes(std::string_view bytes, const std::string& name) {
    char* copy = static_cast<char*>(os::allocatePages(bytes.size() + 1));
    std::memcpy(copy, bytes.data(), bytes.size());
    return fromBytes(os::Bytes{copy, bytes.size()}, name, {});
}

Result<std::unique_ptr<Drawing>> Drawing::fromBytes(os::Bytes bytes, const std::string& name,
                                                    const Progress& progress) {
    std::unique_ptr<Drawing> drawing{new Drawing{std::move(bytes), name}};
    const std::string error = Reader{*drawing, progress}.read();
    if (!error.empty()) return Result<std::unique_ptr<Drawing>>::failure(error);
    return drawing;
}

} // namespace qx::db
