#include "kernel/groupLookup.h"

#include "dbapserv.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbobjptr.h"
#include "kernel/IdSet.h"
#include "kernel/Opened.h"

#include <algorithm>

namespace qx::kernel {
namespace {
/// Opened for writing, as are the groups: who asks for groups is about to change what they hold, and a group
/// that somebody else has open is not ours to touch.
Opened<AcDbDictionary> openGroupDictionary() {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    AcDbDictionary* dictionary = nullptr;
    if (database && database->getGroupDictionary(dictionary, AcDb::kForWrite) != Acad::eOk)
        dictionary = nullptr;
    return Opened<AcDbDictionary>{dictionary};
}

bool holdsAny(const AcDbGroup& group, const IdSet& ids) {
    AcDbObjectIdArray members;
    group.allEntityIds(members);
    return std::any_of(members.begin(), members.end(), [&](AcDbObjectId id) { return ids.contains(id); });
}
} // namespace

AcDbObjectIdArray groupsContaining(const AcDbObjectIdArray& ids) {
    AcDbObjectIdArray touched;
    const Opened<AcDbDictionary> dictionary = openGroupDictionary();
    if (!dictionary) return touched;

    const IdSet wanted{ids};
    const std::unique_ptr<AcDbDictionaryIterator> entry{dictionary->newIterator()};
    for (; !entry->done(); entry->next()) {
        const AcDbObjectPointer<AcDbGroup> group{entry->objectId(), AcDb::kForWrite};
        if (group.openStatus() == Acad::eOk && holdsAny(*group.object(), wanted))
            touched.append(group->objectId());
    }
    return touched;
}

AcDbObjectIdArray groupMembers(AcDbObjectId id) {
    AcDbObjectIdArray members;
    const AcDbObjectPointer<AcDbGroup> group{id, AcDb::kForRead};
    if (group.openStatus() == Acad::eOk) group->allEntityIds(members);
    return members;
}

} // namespace qx::kernel
