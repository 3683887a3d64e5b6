// The groups of a drawing as modules see them.
#pragma once

#include "dbdict.h"
#include "dbgroup.h"
#include "drawings/DrawingText.h"
#include "os/encoding.h"

namespace drawings {

/// "DESK: 101 100, *A1:", in the order of the dictionary; "none" without one.
inline std::string groupsIn(qx::db::Drawing& drawing) {
    AcDbDictionary* dictionary = nullptr;
    if (drawing.database().getGroupDictionary(dictionary) != Acad::eOk) return "none";
    std::string text;
    const std::unique_ptr<AcDbDictionaryIterator> each{dictionary->newIterator()};
    for (; !each->done(); each->next()) {
        text += (text.empty() ? "" : ", ") + qx::os::toUtf8(std::wstring_view{each->name()}) + ':';
        AcDbObjectPointer<AcDbGroup> group{each->objectId()};
        AcDbObjectIdArray ids;
        if (group.openStatus() != Acad::eOk) continue;
        EXPECT_EQ(group->allEntityIds(ids), group->numEntities());
        for (const AcDbObjectId id : ids) text += ' ' + hex(id.handle().value());
    }
    dictionary->close();
    return text;
}

} // namespace drawings
