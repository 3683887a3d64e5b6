// The groups of a drawing and the dictionary that names them.
#include "db/Drawing.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "os/encoding.h"

#include <algorithm>

namespace qx::db {

namespace {

constexpr const char* groupsName = "ACAD_GROUP";

const AcDbDictionary* dictionaryAt(const Drawing& drawing, Record* record) {
    return record ? static_cast<const AcDbDictionary*>(drawing.live(record)) : nullptr;
}

} // namespace

// The first dictionary of the objects; all others are named by it, or by one that it names.
Record* Drawing::rootDictionary() const {
    for (Record* each = objects_; each && each->kind != Kind::endSection; each = RecordChain::next(each))
        if (each->kind == Kind::dictionary && !each->has(Record::erased)) return each;
    const auto isRoot = [](const NamedObject& each) {
        return !each.record->owner && !each.record->has(Record::erased);
    };
    const auto made = std::ranges::find_if(newNamed_, isRoot);
    return made == newNamed_.end() ? nullptr : made->record;
}

Record* Drawing::groupDictionary() const {
    const auto* root = dictionaryAt(*this, rootDictionary());
    if (!root) return nullptr;
    for (const auto& entry : root->entries())
        if (entry.key == foldedName(groupsName) && entry.id.record()->kind == Kind::dictionary &&
            !entry.id.isErased())
            return entry.id.record();
    return nullptr;
}

std::vector<Record*> Drawing::groups() const {
    std::vector<Record*> found;
    const auto* dictionary = dictionaryAt(*this, groupDictionary());
    if (!dictionary) return found;
    for (const auto& entry : dictionary->entries())
        if (entry.id.record()->kind == Kind::group && !entry.id.isErased())
            found.push_back(entry.id.record());
    return found;
}

bool Drawing::hasGroup(std::string_view name) const {
    const auto* dictionary = dictionaryAt(*this, groupDictionary());
    return dictionary && dictionary->has(os::toWide(name).c_str());
}

std::string Drawing::freeGroupName() const {
    for (std::size_t number = 1;; ++number)
        if (std::string name = "*A" + std::to_string(number); !hasGroup(name)) return name;
}

Record* Drawing::addNamed(Kind kind, std::unique_ptr<AcDbObject> object, Record* owner, std::string name) {
    Record* record = addNew(kind, object.release(), owner);
    newNamed_.push_back({record, std::move(name)});
    if (AcDbObject* dictionary = owner ? live(owner) : nullptr) dictionary->afterReading(*this);
    return record;
}

Record* Drawing::makeGroup(std::string name, std::vector<Record*> members) {
    Record* dictionary = groupDictionary();
    if (!dictionary) {
        Record* root = rootDictionary();
        if (!root) root = addNamed(Kind::dictionary, std::make_unique<AcDbDictionary>(), nullptr, {});
        dictionary = addNamed(Kind::dictionary, std::make_unique<AcDbDictionary>(), root, groupsName);
    }
    auto group = std::make_unique<AcDbGroup>();
    group->setMembers(std::move(members));
    return addNamed(Kind::group, std::move(group), dictionary, std::move(name));
}

} // namespace qx::db
