// Names of database objects: the handle that a drawing stores, and the id that a running program holds.
#pragma once

#include "acdb.h"
#include "qxexport.h"

#include <cstddef>
#include <functional>

class AcDbDatabase;
namespace qx::db {
struct Record;
}

/// The number by which a drawing file names an object; 0 names none.
class AcDbHandle {
public:
    AcDbHandle() = default;
    explicit AcDbHandle(Adesk::UInt64 value) : value_{value} {}

    bool isNull() const { return value_ == 0; }
    Adesk::UInt64 value() const { return value_; }
    friend bool operator==(const AcDbHandle&, const AcDbHandle&) = default;

private:
    Adesk::UInt64 value_ = 0;
};

/// Names an object for as long as the process lives; opening an id whose drawing was closed is refused.
class AcDbObjectId {
public:
    constexpr AcDbObjectId() = default;
    /// Host side: the id of a record.
    constexpr explicit AcDbObjectId(qx::db::Record* record) : record_{record} {}

    static const AcDbObjectId kNull;

    constexpr bool isNull() const { return record_ == nullptr; }
    /// True when the id names an object of a drawing that is still open, erased ones included.
    QX_HOST_API bool isValid() const;
    QX_HOST_API bool isErased() const;
    constexpr void setNull() { record_ = nullptr; }
    Adesk::Int64 asOldId() const { return reinterpret_cast<Adesk::Int64>(record_); }
    QX_HOST_API AcDbDatabase* database() const;
    QX_HOST_API AcDbHandle handle() const;

    /// Host side: the record that the id names.
    constexpr qx::db::Record* record() const { return record_; }

    friend constexpr bool operator==(AcDbObjectId a, AcDbObjectId b) { return a.record_ == b.record_; }
    friend bool operator<(AcDbObjectId a, AcDbObjectId b) {
        return std::less<const qx::db::Record*>{}(a.record_, b.record_);
    }

private:
    qx::db::Record* record_ = nullptr;
};

inline constexpr AcDbObjectId AcDbObjectId::kNull{};

template <> struct std::hash<AcDbObjectId> {
    std::size_t operator()(AcDbObjectId id) const noexcept {
        return std::hash<const qx::db::Record*>{}(id.record());
    }
};
