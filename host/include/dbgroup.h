// Groups: ordered collections of entities that belong together without being owned.
#pragma once

#include "dbidar.h"
#include "dbmain.h"

#include <utility>
#include <vector>

class QX_HOST_API AcDbGroup : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbGroup)
    qx::db::Fields fields() override;
    bool afterReading(const qx::db::Drawing& drawing) override;

    /// Appends the members in the group's order, erased and missing ones left out; returns how many those
    /// are.
    Adesk::UInt32 allEntityIds(AcDbObjectIdArray& ids) const;
    bool has(const AcDbEntity* entity) const;
    Adesk::UInt32 numEntities() const;
    /// Whether picking one member picks them all.
    bool isSelectable() const { return data_.selectable != 0; }

    // Host side: the members as the drawing lists them, erased ones included.
    const std::vector<qx::db::Record*>& members() const { return members_; }
    /// For a group that is being made.
    void setMembers(std::vector<qx::db::Record*> members) { members_ = std::move(members); }

    struct Data {
        Adesk::Int32 selectable = 1;
    };

private:
    Data data_;
    std::vector<qx::db::Record*> members_;
};
