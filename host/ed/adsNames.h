// The two numbers by which modules name an entity or a selection set. The second one is a check sum of the
// first, of another sort for each kind, so that a name that nobody gave out is recognised without following
// it.
#pragma once

#include "adsdef.h"
#include "dbid.h"

#include <optional>

namespace qx::ed {

/// An entity's name; that of a null record is {0, 0}.
QX_HOST_API void nameEntity(ads_name name, db::Record* record);
/// The record of an entity's name, of a drawing that is still open; null for every other name.
QX_HOST_API db::Record* namedRecord(const ads_name name);

/// A selection set's name, made of its number in the session.
QX_HOST_API void nameSet(ads_name name, Adesk::Int64 number);
/// The number of a selection set's name, whether the set is still there or not; nothing for every other name.
QX_HOST_API std::optional<Adesk::Int64> namedSet(const ads_name name);

} // namespace qx::ed
