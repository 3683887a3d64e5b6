#include "ed/UserFrame.h"

namespace qx::ed {

UserFrame::UserFrame(const db::UserCoordinateSystem& system)
    : origin_{system.origin}, x_{system.xAxis}, y_{system.yAxis}, z_{x_.crossProduct(y_)} {}

AcGePoint3d UserFrame::toWorld(const AcGePoint3d& user) const {
    return origin_ + (x_ * user.x + y_ * user.y + z_ * user.z);
}

AcGePoint3d UserFrame::toUser(const AcGePoint3d& world) const {
    const AcGeVector3d v = world - origin_;
    return {v.dotProduct(x_), v.dotProduct(y_), v.dotProduct(z_)};
}

AcGePoint3d UserFrame::resolved(const TypedPoint& typed, const AcGePoint3d& last) const {
    const auto& [x, y, z] = typed.coordinates;
    switch (typed.frame) {
    case TypedPoint::Frame::relative:
        return {last.x + x, last.y + y, last.z + z};
    case TypedPoint::Frame::world:
        return toUser({x, y, z});
    case TypedPoint::Frame::user:
        break;
    }
    return {x, y, z};
}

} // namespace qx::ed
