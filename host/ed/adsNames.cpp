#include "ed/adsNames.h"

#include "db/Record.h"
#include "dbmain.h"

namespace qx::ed {
namespace {

constexpr Adesk::UInt64 entityTag = 0xE17177A35C0FFEE1u;
constexpr Adesk::UInt64 setTag = 0x5E1EC7105E751A7Bu;

Adesk::Int64 checkSum(Adesk::Int64 value, Adesk::UInt64 tag) {
    const auto bits = static_cast<Adesk::UInt64>(value);
    return static_cast<Adesk::Int64>((bits * 0x9E3779B97F4A7C15u) ^ tag);
}

} // namespace

void nameEntity(ads_name name, db::Record* record) {
    name[0] = reinterpret_cast<std::intptr_t>(record);
    name[1] = record ? checkSum(name[0], entityTag) : 0;
}

db::Record* namedRecord(const ads_name name) {
    if (name[0] == 0 || name[1] != checkSum(name[0], entityTag)) return nullptr;
    auto* record = reinterpret_cast<db::Record*>(static_cast<std::intptr_t>(name[0]));
    return AcDbObjectId{record}.isValid() ? record : nullptr;
}

void nameSet(ads_name name, Adesk::Int64 number) {
    name[0] = number;
    name[1] = checkSum(number, setTag);
}

std::optional<Adesk::Int64> namedSet(const ads_name name) {
    if (name[1] != checkSum(name[0], setTag)) return std::nullopt;
    return name[0];
}

} // namespace qx::ed

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    qx::db::Record* record = name ? qx::ed::namedRecord(name) : nullptr;
    if (!record) return Acad::eInvalidAdsName;
    id = AcDbObjectId{record};
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId id) {
    if (id.isNull()) return Acad::eNullObjectId;
    qx::ed::nameEntity(name, id.record());
    return Acad::eOk;
}
