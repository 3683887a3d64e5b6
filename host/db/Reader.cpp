// Reading a drawing: one walk over the tags that cuts the file into records and finds out who owns them.
// Values are read later, when an object is first asked for.
//
// Old versions have no table of block records, no owners and often no handles. Records without bytes stand in
// for the table and for the block records, so that the rest of the host knows one form of drawing only.
#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/Oddities.h"
#include "db/TextEncoding.h"
#include "db/classes.h"
#include "dbsymtb.h"
#include "dxf/Tag.h"
#include "os/encoding.h"

#include <algorithm>
#include <cstring>

namespace qx::db {

namespace {

constexpr std::size_t bytesBetweenReports = std::size_t{8} << 20;
constexpr std::size_t bytesBetweenLooks = std::size_t{1} << 17; // they are still near then

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

/// EOF, and the byte that ends a text file in CP/M and its heirs.
bool isEndOfFile(std::string_view name) {
    while (!name.empty() && (name.back() == '\x1A' || name.back() == '\0' || name.back() == ' '))
        name.remove_suffix(1);
    return dxf::trimmed(name) == "EOF";
}

/// Whose group 5 was the name of a block before it had a handle, which is its group 105.
bool isDimensionStyle(const Record& record, const char* end) {
    dxf::TagCursor cursor{record.begin, end};
    dxf::Tag tag;
    return cursor.next(tag) && dxf::trimmed(tag.value) == "DIMSTYLE";
}

} // namespace

class Reader {
public:
    Reader(Drawing& drawing, const Progress& progress) : drawing_{drawing}, progress_{progress} {}

    /// Empty, or the sentence that refuses the file.
    std::string read();

private:
    /// In the order in which they have to be read.
    enum class Section { none, unnamed, header, tables, blocks, entities, objects, other };
    struct SectionStart {
        Section section;
        Record* record;
    };

    std::string refusedByContent() const;
    std::string_view bytes() const { return drawing_.bytes_.view(); }
    const char* endOfFile() const { return bytes().data() + bytes().size(); }
    void walk();
    void startRecord(const dxf::Tag& tag);
    void checkPlace();
    void beginRecord(Record* record);
    void headerTag(const dxf::Tag& tag);
    void enterSection(std::string_view name);
    bool isSecond(Section section);
    void finishRecord(const char* end);
    void chooseVersion();
    void finishTableRecord(std::string_view bytes);
    void finishBlockRecord(std::string_view bytes, const char* end);
    void noteBlockEnd();
    void finishEntity();
    Record* ownerOfEntity();
    Record* standIn(Kind kind, const char* at);
    void noteLayout(const BlockDefinition& definition);
    void completeTables(const char* at);
    void readAgain();
    void reportTexts();
    void refuse(const char* at, const std::string& what);
    bool isWhole(std::string_view text) const;
    void lookAt(const char* to);
    void noteWhatIsBehind(const char* end);

    Drawing& drawing_;
    const Progress& progress_;
    Oddities oddities_{drawing_};
    TextEncoding texts_;
    std::string error_;
    Section section_ = Section::none;
    Record* record_ = nullptr;
    Record* header_ = nullptr;           ///< the entity that vertices and attributes belong to
    Record* block_ = nullptr;            ///< block record of the definition being read
    const Record* blockBegin_ = nullptr; ///< its BLOCK
    Record* paperSpace_ = nullptr;
    bool isComplete_ = false;
    bool isOutOfOrder_ = false; ///< a section stands behind what refers to it
    std::vector<SectionStart> sections_;
    bool areTextsWhole_ = true;      ///< as far as was looked
    const char* lookedAt_ = nullptr; ///< so far
    const char* nextLook_ = nullptr;
    const char* nextReport_ = nullptr;

    // Of the record being read.
    std::string_view ownerHandle_; ///< empty when it gives none
    std::string_view blockName_;   ///< that it shows
    int markers_ = 0;              ///< of subclasses; owners stand before the second one
    ApplicationGroups groups_;
    bool isInPaper_ = false;

    // Neighbours mostly share an owner.
    std::string_view lastOwnerHandle_;
    Record* lastOwner_ = nullptr; ///< null when nobody has that handle
};

void Reader::refuse(const char* at, const std::string& what) {
    if (error_.empty()) error_ = drawing_.path_ + ":" + std::to_string(drawing_.lineOf(at)) + ": " + what;
}

std::string Reader::refusedByContent() const {
    const std::string_view file = bytes();
    const auto refused = [&](const std::string& what) { return drawing_.path_ + ":1: " + what; };
    if (file.empty()) return refused("the file is empty");
    if (file.starts_with("AutoCAD Binary DXF"))
        return refused("this is a binary DXF file; only text DXF is read");
    const bool isDwg = file.starts_with("AC1") || file.starts_with("AC2.") || file.starts_with("MC0.0");
    if (isDwg && file.size() >= 6 && file.substr(0, 6).find('\n') == std::string_view::npos)
        return refused("this is a DWG file; only text DXF is read");
    if (file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF"))
        return refused(
            "this file is in UTF-16; only single-byte texts, East Asian code pages and UTF-8 are read");
    if (file.substr(0, file.find('\n') + 1).ends_with("\r\r\n"))
        return refused("the lines end with CR CR LF, as after a wrong conversion; only LF and CRLF line ends "
                       "are read");
    if (file.find('\n') == std::string_view::npos && file.find('\r') < file.size() - 1)
        return refused("the lines end with carriage returns alone; only LF and CRLF line ends are read");
    return {};
}

std::string Reader::read() {
    error_ = refusedByContent();
    if (error_.empty()) walk();
    if (!error_.empty()) return error_;
    if (!drawing_.encoding_) chooseVersion();
    if (isOutOfOrder_) readAgain();
    completeTables(endOfFile());
    reportTexts();
    oddities_.report();
    return {};
}

void Reader::walk() {
    const char* begin = bytes().data();
    const char* end = endOfFile();
    if (bytes().starts_with("\xEF\xBB\xBF")) begin += 3;
    lookedAt_ = nextLook_ = begin;
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
    lookAt(cursor.position());
    noteWhatIsBehind(cursor.position());
}

// Some programs fill the last block of a file with zeros, or end it as CP/M did.
void Reader::noteWhatIsBehind(const char* end) {
    const auto isFiller = [](char c) { return c == '\0' || c == '\x1A' || std::strchr(" \t\r\n", c); };
    const char* found = std::find_if_not(end, endOfFile(), isFiller);
    if (found != endOfFile())
        drawing_.addFindingAt(found, "the file goes on behind EOF; the rest is kept and means nothing");
}

void Reader::startRecord(const dxf::Tag& tag) {
    if (record_) finishRecord(tag.begin);
    const bool isAmongEntities = section_ == Section::entities || section_ == Section::blocks;
    Record* record = drawing_.records_.append();
    record->begin = tag.begin;
    record->kind = kindOf(dxf::trimmed(tag.value), isAmongEntities);
    if (section_ == Section::none && record->kind == Kind::otherObject && isEndOfFile(tag.value))
        record->kind = Kind::endOfFile;
    beginRecord(record);
    checkPlace();
    if (tag.begin >= nextLook_) lookAt(tag.begin);
}

void Reader::beginRecord(Record* record) {
    record_ = record;
    ownerHandle_ = blockName_ = {};
    markers_ = 0;
    groups_ = {};
    isInPaper_ = false;
}

void Reader::checkPlace() {
    const bool isOutside = section_ == Section::none;
    if (record_->kind == Kind::section) {
        if (!isOutside) refuse(record_->begin, "a section begins before the one before it has ended");
        section_ = Section::unnamed;
    } else if (record_->kind == Kind::endOfFile) {
        if (!isOutside) refuse(record_->begin, "EOF stands inside a section");
        isComplete_ = true;
    } else if (isOutside) {
        oddities_.noteOutside(record_);
    }
}

// The few groups that say what a record is and whose; all other values wait until the object is opened.
void Reader::headerTag(const dxf::Tag& tag) {
    switch (tag.code) {
    case 2:
        if (section_ == Section::unnamed) enterSection(dxf::trimmed(tag.value));
        if (!showsBlock(record_->kind)) break;
        blockName_ = tag.value;
        if (tag.value.starts_with('*') && drawing_.blocks_) drawing_.blocks_->noteUse(tag.value);
        break;
    case 5:
    case 105:
        if (record_->handle == 0 && !groups_.isInside() && record_->kind != Kind::section &&
            (tag.code == 105 || section_ != Section::tables || !isDimensionStyle(*record_, tag.begin)))
            record_->handle = dxf::toHandle(tag.value).value_or(0);
        break;
    case 67:
        isInPaper_ = dxf::trimmed(tag.value) == "1";
        break;
    case 100:
        ++markers_;
        break;
    case 102:
        groups_.step(tag);
        break;
    case 330:
        if (!groups_.isInside() && markers_ < 2 && ownerHandle_.empty())
            ownerHandle_ = dxf::trimmed(tag.value);
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
    if (isSecond(section_)) section_ = Section::other;
    const auto precedes = [&](const SectionStart& each) { return each.section > section_; };
    const bool isReferredTo = section_ == Section::header || section_ == Section::tables;
    isOutOfOrder_ = isOutOfOrder_ || (isReferredTo && std::ranges::any_of(sections_, precedes));
    if (section_ != Section::other) sections_.push_back({section_, record_});
    header_ = block_ = nullptr;
    if (section_ == Section::header) drawing_.header_ = record_;
    if (section_ == Section::entities) drawing_.entities_ = record_;
    if (section_ == Section::objects) drawing_.objects_ = record_;
    if (section_ != Section::header && section_ != Section::other && !drawing_.encoding_) chooseVersion();
}

// Tables and blocks may well be spread over several sections.
bool Reader::isSecond(Section section) {
    const bool isSecond = (section == Section::header && drawing_.header_) ||
                          (section == Section::entities && drawing_.entities_) ||
                          (section == Section::objects && drawing_.objects_);
    if (isSecond && section == Section::entities)
        drawing_.addFinding(record_, "a second section ENTITIES; its objects are kept and can't be used");
    else if (isSecond)
        drawing_.addFinding(record_, "a second section of this name; it is kept, but the first one counts");
    return isSecond;
}

void Reader::finishRecord(const char* end) {
    const std::string_view bytes{record_->begin, static_cast<std::size_t>(end - record_->begin)};
    if (section_ == Section::unnamed) refuse(record_->begin, "a section without a name");
    switch (section_) {
    case Section::header:
        if (record_->kind == Kind::endSection) chooseVersion();
        break;
    case Section::tables:
        finishTableRecord(bytes);
        break;
    case Section::blocks:
        finishBlockRecord(bytes, end);
        break;
    case Section::entities:
        if (record_->kind == Kind::section) completeTables(end);
        finishEntity();
        break;
    default:
        break;
    }
    if (section_ == Section::none)
        record_->handle = 0; // it must not be found in place of another
    else if (section_ != Section::other)
        oddities_.note(record_, bytes);
    if (record_->kind == Kind::endSection) section_ = Section::none;
}

void Reader::chooseVersion() {
    if (drawing_.encoding_) return;
    drawing_.version_ = Version{drawing_.headerValue("$ACADVER", 1)};
    const std::string_view codePage = drawing_.headerValue("$DWGCODEPAGE", 3);
    texts_ = textEncodingOf(bytes(), drawing_.version_, codePage);
    drawing_.encoding_ = texts_.encoding;
    drawing_.layers_ = std::make_unique<Layers>(*drawing_.encoding_);
    drawing_.blocks_ = std::make_unique<Blocks>(drawing_);
}

void Reader::finishTableRecord(std::string_view bytes) {
    if (record_->kind == Kind::layer && !drawing_.layers_->add(record_, bytes))
        oddities_.noteSameName(record_);
    if (record_->kind == Kind::table && newObject(Kind::table, bytes)->isKindOf(AcDbBlockTable::desc()))
        drawing_.blockTable_ = record_;
    if (record_->kind == Kind::blockRecord)
        noteLayout(drawing_.blocks_->addRecord(record_, Blocks::nameIn(bytes)));
}

void Reader::finishBlockRecord(std::string_view bytes, const char* end) {
    noteBlockEnd();
    if (record_->kind == Kind::block) {
        const std::string_view name = Blocks::nameIn(bytes);
        if (!name.empty() && !drawing_.blocks_->named(name))
            noteLayout(drawing_.blocks_->addRecord(standIn(Kind::blockRecord, end), name));
        const BlockDefinition* definition = drawing_.blocks_->addBegin(record_, bytes);
        if (!definition && !name.empty()) oddities_.noteSameName(record_);
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

void Reader::noteBlockEnd() {
    const bool ends = record_->kind == Kind::endBlock || record_->kind == Kind::endSection;
    if (!ends && record_->kind != Kind::block) return;
    if (blockBegin_ && record_->kind != Kind::endBlock) oddities_.noteEndlessBlock(blockBegin_);
    blockBegin_ = ends ? nullptr : record_;
}

void Reader::finishEntity() {
    const bool isPart = record_->kind == Kind::attribute || record_->kind == Kind::vertex ||
                        record_->kind == Kind::sequenceEnd;
    if (isPart && header_) {
        record_->owner = header_;
        if (record_->kind == Kind::sequenceEnd) header_ = nullptr;
        return;
    }
    if (isPart) oddities_.noteStrayPart(record_);
    if (record_->kind == Kind::insert) oddities_.noteInsertion(record_, blockName_);
    if (!isMainEntity(record_->kind)) return;
    header_ = record_->kind == Kind::insert || record_->kind == Kind::polyline ? record_ : nullptr;
    record_->owner = section_ == Section::blocks ? block_ : ownerOfEntity();
}

Record* Reader::ownerOfEntity() {
    if (!ownerHandle_.empty() && ownerHandle_ != lastOwnerHandle_) {
        const BlockDefinition* owner = drawing_.blocks_->withHandle(dxf::toHandle(ownerHandle_).value_or(0));
        lastOwnerHandle_ = ownerHandle_;
        lastOwner_ = owner ? owner->record : nullptr;
    }
    if (!ownerHandle_.empty() && lastOwner_) return lastOwner_;
    if (!ownerHandle_.empty() && ownerHandle_ != "0") oddities_.noteLostOwner(record_);
    return isInPaper_ ? paperSpace_ : drawing_.modelSpace_;
}

/// A record without bytes; `at` is where the record being read ends.
Record* Reader::standIn(Kind kind, const char* at) {
    Record* record = drawing_.records_.append();
    record->begin = isComplete_ ? endOfFile() : at;
    record->kind = kind;
    return record;
}

void Reader::noteLayout(const BlockDefinition& definition) {
    if (!definition.isCurrent) return;
    Record*& layout = definition.isPaper ? paperSpace_ : drawing_.modelSpace_;
    layout = definition.record;
}

void Reader::completeTables(const char* at) {
    if (!drawing_.blockTable_) drawing_.blockTable_ = standIn(Kind::table, at);
    const auto addLayout = [&](const char* name) {
        noteLayout(drawing_.blocks_->addRecord(standIn(Kind::blockRecord, at), name));
    };
    if (!drawing_.modelSpace_) addLayout("*Model_Space");
    if (!paperSpace_) addLayout("*Paper_Space");
}

// Records stay what and where they are; only what they mean to each other is found out once more.
void Reader::readAgain() {
    for (Record* each = drawing_.firstRecord(); each; each = RecordChain::next(each)) each->owner = nullptr;
    drawing_.encoding_ = nullptr;
    drawing_.modelSpace_ = drawing_.blockTable_ = paperSpace_ = lastOwner_ = nullptr;
    lastOwnerHandle_ = {};
    oddities_.forgetRecords();
    std::ranges::stable_sort(sections_, {}, &SectionStart::section);
    for (const auto& [section, start] : sections_) {
        section_ = section;
        header_ = block_ = nullptr;
        if (section != Section::header) chooseVersion();
        for (Record* each = start; section_ != Section::none; each = RecordChain::next(each)) {
            const std::string_view part = drawing_.bytesOf(each);
            if (part.empty()) continue;
            beginRecord(each);
            dxf::TagCursor cursor{part.data(), part.data() + part.size()};
            for (dxf::Tag tag; cursor.next(tag);)
                if (tag.code != 0) headerTag(tag);
            finishRecord(part.data() + part.size());
        }
    }
}

void Reader::reportTexts() {
    const auto place = [&](const char* name, int code) { return drawing_.headerValue(name, code).data(); };
    if (const std::string& sentence = drawing_.version_.finding(); !sentence.empty())
        drawing_.addFindingAt(place("$ACADVER", 1), sentence);
    const char* begin = bytes().data();
    if (!texts_.finding.empty())
        drawing_.addFindingAt(texts_.isMarked ? begin : place("$DWGCODEPAGE", 3), texts_.finding);
    if (areTextsWhole_) return;
    const BrokenLines broken = linesWithBrokenText({begin, lookedAt_}, *texts_.encoding);
    if (broken.count == 0) return;
    drawing_.addFindingAt(
        begin + broken.first,
        (broken.count == 1 ? "a line holds" : std::to_string(broken.count) + " lines hold") +
            std::string{texts_.encoding->isUtf8() ? " bytes that are no UTF-8"
                                                  : " bytes that the code page does not have"} +
            (broken.count == 1 ? "" : ", this is the first") + "; they are kept, and shown as \xEF\xBF\xBD");
}

bool Reader::isWhole(std::string_view text) const {
    const bool isUtf8 = drawing_.encoding_ && drawing_.encoding_->isUtf8();
    return isUtf8 ? os::brokenUtf8In(text) == text.size() : os::isAscii(text);
}

// What was walked over a moment ago is looked at cheaply.
void Reader::lookAt(const char* to) {
    areTextsWhole_ = areTextsWhole_ && isWhole({lookedAt_, to});
    lookedAt_ = to;
    nextLook_ = to + bytesBetweenLooks;
    if (to < nextReport_) return;
    nextReport_ = to + bytesBetweenReports;
    if (progress_) progress_(static_cast<std::size_t>(to - bytes().data()), bytes().size());
}

Result<std::unique_ptr<Drawing>> Drawing::read(const std::string& path, const Progress& progress) {
    const auto before = os::stampOf(path);
    auto bytes = os::readFile(path, progress);
    if (!bytes) return Result<std::unique_ptr<Drawing>>::failure(bytes.error());
    if (os::stampOf(path) != before)
        return Result<std::unique_ptr<Drawing>>::failure("Can't read " + path +
                                                         ": another program changed it meanwhile.");
    auto drawing = fromBytes(std::move(*bytes), path, progress);
    if (drawing) (*drawing)->stamp_ = before;
    return drawing;
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
