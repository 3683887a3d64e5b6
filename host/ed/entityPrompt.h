// The question for one object: a point to pick it at, or `(list (handent "2F") (list x y z))`. One answer is
// enough: a pick that hits nothing, `(list nil (list x y z))`, is an answer, too. Groups don't matter here.
#pragma once

#include "ed/Session.h"
#include "ed/prompts.h"

namespace qx::ed {

struct EntityPick {
    db::Record* entity = nullptr; ///< a main entity; null: the pick hit nothing
    AcGePoint3d point;            ///< as it was given, in user coordinates
};

/// Of the request only the prompt and the keywords count: Enter is always an answer. What names an object
/// that is not there, is erased or can't be selected is refused.
QX_HOST_API Answer<EntityPick> askEntity(Session& session, const Request& request);

} // namespace qx::ed
