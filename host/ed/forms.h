// The forms in parentheses with which a script names objects: `(handent "2F")`, for a pick
// `(list (handent "2F") (list x y z))`, or `(list nil (list x y z))` for one that hits nothing, and
// `(select (handent "2F") ...)`. Words in any case, blanks between
// the parts as one likes; whatever else stands there makes it no form.
#pragma once

#include "db/Drawing.h"
#include "ed/points.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::ed {

/// Whether its handle means this object: of two that have the same one, it means the first.
QX_HOST_API bool hasOwnHandle(const db::Record* record);
/// `(handent "2F")`
QX_HOST_API std::string handentForm(std::uint64_t handle);
/// `(list (handent "2F") (list x y z))`; null: the pick hits nothing. User coordinates.
QX_HOST_API std::string pickForm(const db::Record* record, const AcGePoint3d& point);
/// The handle in the first.
QX_HOST_API std::optional<std::uint64_t> parseHandent(std::string_view form);

/// An object by its handle, and where it is picked.
struct TypedPick {
    std::optional<std::uint64_t> handle; ///< nothing: the pick hits nothing
    TypedPoint point;                    ///< in user coordinates; z is 0 when it was not given

    friend bool operator==(const TypedPick&, const TypedPick&) = default;
};
QX_HOST_API std::optional<TypedPick> parsePick(std::string_view form);

/// `(select (handent "2F") (handent "30"))`, which between commands says what is selected before the next
/// one, or
/// `(select add (handent "31"))`, which adds to that.
struct TypedSelection {
    std::vector<std::uint64_t> handles;
    bool adds = false;
};
QX_HOST_API std::optional<TypedSelection> parseSelection(std::string_view form);

} // namespace qx::ed
