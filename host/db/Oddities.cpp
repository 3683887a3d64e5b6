#include "db/Oddities.h"

#include "db/Drawing.h"
#include "db/FieldTable.h"
#include "db/classes.h"
#include "dbgroup.h"
#include "dxf/Tag.h"

#include <algorithm>
#include <map>

namespace qx::db {
namespace {

constexpr std::size_t mostRepeats = 20;                                     // told one by one
constexpr std::size_t mostClasses = 8;                                      // named
constexpr std::uint64_t largest = std::uint64_t{1} << 26, bitsPerWord = 64; // of handles in bits

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

// Of most kinds every object can be measured; the others ask their class.
bool isKeptOnly(const Drawing& drawing, Kind kind, std::string_view bytes) {
    if (kind == Kind::otherEntity) return true;
    if (kind == Kind::dimension) return !drawing.blocks().shownByDimension(bytes);
    if (kind < Kind::polyline) return false;
    return !static_cast<AcDbEntity&>(*newObject(kind, bytes)).isMeasurable();
}

std::string className(const Drawing& drawing, const Record* record) {
    const std::string_view bytes = drawing.bytesOf(record);
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    dxf::Tag tag;
    cursor.next(tag);
    std::string name{dxf::trimmed(tag.value).substr(0, 40)};
    std::ranges::replace_if(
        name, [](char c) { return c < 0x20 || c > 0x7E; }, '?');
    return record->kind == Kind::dimension ? name + " without a block" : name;
}

} // namespace

bool HandleSet::add(std::uint64_t handle) {
    if (handle >= largest) return large_.insert(handle).second;
    const auto word = static_cast<std::size_t>(handle / bitsPerWord);
    if (word >= bits_.size()) bits_.resize(std::max(word + 1, 2 * bits_.size()));
    const std::uint64_t bit = std::uint64_t{1} << (handle % bitsPerWord);
    const bool isNew = (bits_[word] & bit) == 0;
    bits_[word] |= bit;
    return isNew;
}

bool HandleSet::contains(std::uint64_t handle) const {
    if (handle >= largest) return large_.contains(handle);
    const auto word = static_cast<std::size_t>(handle / bitsPerWord);
    return word < bits_.size() && (bits_[word] >> handle % bitsPerWord & 1);
}

void Oddities::forgetRecords() {
    handles_ = others_ = {};
    insertions_.clear();
    lastInsertions_ = {};
    for (auto* each : {&repeats_, &handleless_, &ownerless_, &sameNames_, &strayParts_, &endlessBlocks_,
                       &groups_, &keptOnly_})
        each->clear();
}

void Oddities::note(const Record* record, std::string_view bytes) {
    const bool isNew = record->handle == 0 || handles_.add(record->handle);
    if (!isNew) repeats_.push_back(record);
    if (record->kind == Kind::group) groups_.push_back(record);
    if (!isMainEntity(record->kind)) {
        if (isNew && record->handle != 0) others_.add(record->handle);
        return;
    }
    if (record->handle == 0) handleless_.push_back(record);
    if (record->owner && record->owner == drawing_.modelSpace() && isKeptOnly(drawing_, record->kind, bytes))
        keptOnly_.push_back(record);
}

void Oddities::noteInsertion(const Record* record, std::string_view block) {
    const std::size_t place =
        block.size() * 11 + (block.empty() ? 0u : static_cast<unsigned char>(block.back()));
    auto*& last = lastInsertions_[place % lastInsertions_.size()];
    if (!last || last->first != block) last = &*insertions_.try_emplace(block, Insertions{record}).first;
    ++last->second.count;
}

void Oddities::report() {
    reportHandles();
    reportAll(handleless_, "entity has no handle; no script and no group can name it",
              "entities have no handle, this is the first; no script and no group can name them");
    reportAll(
        ownerless_, "entity names an owner that is not there; it counts to the drawing's own space",
        "entities name owners that are not there, this is the first; they count to the drawing's own space");
    reportAll(outside_, "record stands outside of all sections; it is kept and means nothing",
              "records stand outside of all sections, this is the first; they are kept and mean nothing");
    reportAll(
        sameNames_, "layer or block has a name that is given before; the first one counts",
        "layers or blocks have names that are given before, this is the first; the first of a name counts");
    reportAll(
        strayParts_, "vertex, attribute or sequence end belongs to no entity; it is kept and not shown",
        "vertices, attributes or sequence ends belong to no entity, this is the first; they are kept and "
        "not shown");
    reportAll(endlessBlocks_, "block has no ENDBLK", "blocks have no ENDBLK, this is the first");
    reportLostBlocks();
    reportLostMembers();
    if (!keptOnly_.empty()) reportKeptOnly();
}

void Oddities::reportHandles() const {
    for (std::size_t i = 0; i < std::min(repeats_.size(), mostRepeats); ++i)
        drawing_.addFinding(repeats_[i],
                            "the handle " + dxf::handleText(repeats_[i]->handle) +
                                " is given a second time; it means the object that had it first");
    if (repeats_.size() > mostRepeats)
        drawing_.addFinding(repeats_[mostRepeats], "from here on " +
                                                       counted(repeats_.size() - mostRepeats,
                                                               "more object has", "more objects have") +
                                                       " a handle that is given a second time");
}

void Oddities::reportAll(const std::vector<const Record*>& records, const char* one, const char* many) const {
    if (!records.empty()) drawing_.addFinding(records.front(), counted(records.size(), one, many));
}

void Oddities::reportLostMembers() const {
    std::size_t told = 0, more = 0;
    for (const Record* group : groups_) {
        const std::size_t lost = lostMembersOf(group);
        if (lost == 0) continue;
        if (++told <= mostRepeats)
            drawing_.addFinding(
                group, counted(lost, "member of this group is no entity that is there; it is passed over",
                               "members of this group are no entities that are there; they "
                               "are passed over"));
        else
            ++more;
    }
    if (more > 0)
        drawing_.addFinding(nullptr, counted(more, "more group has", "more groups have") +
                                         " members that are no entities that are there");
}

void Oddities::reportLostBlocks() const {
    std::size_t lost = 0;
    const Record* first = nullptr;
    for (const auto& [name, insertions] : insertions_) {
        if (drawing_.blocks().named(name)) continue;
        lost += insertions.count;
        if (!first || insertions.first->begin < first->begin) first = insertions.first;
    }
    if (lost == 0) return;
    drawing_.addFinding(
        first, counted(lost, "insertion is of a block that is not there; it shows nothing",
                       "insertions are of blocks that are not there, this is the first; they show nothing"));
}

std::size_t Oddities::lostMembersOf(const Record* group) const {
    std::size_t lost = 0;
    FieldTags tags{drawing_.bytesOf(group)};
    for (dxf::Tag tag; tags.next(tag);) {
        const auto handle = tag.code == 340 ? dxf::toHandle(tag.value) : std::nullopt;
        lost += tag.code == 340 && (!handle || !handles_.contains(*handle) || others_.contains(*handle));
    }
    return lost;
}

void Oddities::reportKeptOnly() const {
    drawing_.addFinding(nullptr, counted(keptOnly_.size(), "object", "objects") +
                                     " of classes that are only kept (" + classesOf(keptOnly_) +
                                     ") can't be selected");
    const auto members = !groups_.empty() ? keptOnlyMembersOfGroups() : std::vector<const Record*>{};
    if (!members.empty())
        drawing_.addFinding(nullptr,
                            counted(members.size(), "member", "members") + " of groups of such classes (" +
                                classesOf(members) +
                                (members.size() == 1 ? ") stays where it is when its group moves"
                                                     : ") stay where they are when their group moves"));
}

std::vector<const Record*> Oddities::keptOnlyMembersOfGroups() const {
    std::unordered_set<const Record*> waiting{keptOnly_.begin(), keptOnly_.end()};
    std::vector<const Record*> members;
    for (Record* each : drawing_.groups())
        if (const auto* group = AcDbGroup::cast(drawing_.live(each)))
            for (const Record* member : group->members())
                if (waiting.erase(member) > 0) members.push_back(member);
    return members;
}

std::string Oddities::classesOf(const std::vector<const Record*>& records) const {
    std::map<std::string, std::size_t> counts;
    for (const Record* each : records) ++counts[className(drawing_, each)];
    std::vector<std::pair<std::string, std::size_t>> classes{counts.begin(), counts.end()};
    std::ranges::stable_sort(classes, std::greater{}, &std::pair<std::string, std::size_t>::second);
    std::string text;
    for (std::size_t i = 0; i < std::min(classes.size(), mostClasses); ++i)
        text += (i > 0 ? ", " : "") + classes[i].first + ' ' + std::to_string(classes[i].second);
    if (classes.size() > mostClasses)
        text += " and " + counted(classes.size() - mostClasses, "more class", "more classes");
    return text;
}

} // namespace qx::db
