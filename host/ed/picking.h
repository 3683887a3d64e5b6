// What lies under a point or in a rectangle of the screen, seen along Z: entities of model space that can be
// selected. The view is nominal, 1024 x 768 pixels over the drawing as it was when it was opened, so that a
// script picks the same on every machine.
#pragma once

#include "db/Drawing.h"

#include <span>
#include <vector>

namespace qx::ed {

class Session;

/// Side of a pixel in drawing units; 1 for a drawing without extents.
QX_HOST_API double pixelSize(const db::Drawing& drawing);

/// The entity that comes nearest to the point, within `reach`; the newest of those that are equally near.
/// Null when nothing does. World coordinates.
QX_HOST_API db::Record* pickedAt(const db::Drawing& drawing, const AcGePoint3d& point, double reach);
/// The same among these only, which are in drawing order.
QX_HOST_API db::Record* pickedAt(const db::Drawing& drawing, std::span<db::Record* const> entities,
                                 const AcGePoint3d& point, double reach);

enum class Rectangle {
    window,  ///< takes what lies inside
    crossing ///< takes what touches it, too
};
/// In drawing order. World coordinates; only x and y count.
QX_HOST_API std::vector<db::Record*> foundIn(const db::Drawing& drawing, const AcGePoint3d& corner,
                                             const AcGePoint3d& opposite, Rectangle rectangle);
QX_HOST_API std::vector<db::Record*> foundIn(const db::Drawing& drawing,
                                             std::span<db::Record* const> entities, const AcGePoint3d& corner,
                                             const AcGePoint3d& opposite, Rectangle rectangle);

/// What picking the entity selects: itself and, when PICKSTYLE is 1 or 3, the selectable members of the
/// selectable groups that it belongs to, each once. `groups` counts these.
QX_HOST_API std::vector<db::Record*> withGroups(const Session& session, db::Record* picked,
                                                std::size_t* groups = nullptr);

} // namespace qx::ed
