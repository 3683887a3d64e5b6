// Small drawings for tests, written as DXF by the line: entities, layers, groups. A line from one corner to
// the opposite one is a box, and the simplest one.
#pragma once

#include "db/Drawing.h"
#include "dbidar.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qx::tests {

using Handle = std::uint64_t;

/// What a drawing holds. Layer "LOCKED" is locked, layer "0" is not.
class SmallDrawing {
public:
    Handle line(const AcGePoint3d& from, const AcGePoint3d& to, const std::string& layer = "0");
    Handle circle(const AcGePoint3d& centre, double radius, const std::string& layer = "0");
    /// A text that draws nothing and so has no extents.
    Handle blankText(const std::string& layer = "0");
    /// Any entity: its name, its class mark and its other tags.
    Handle entity(const std::string& name, const std::string& mark,
                  const std::vector<std::pair<int, std::string>>& tags, const std::string& layer = "0");
    Handle group(const std::string& name, const std::vector<Handle>& members);

    std::string bytes() const;

private:
    struct Group {
        std::string name;
        Handle handle;
    };
    std::string entities_, groupObjects_;
    std::vector<Group> groups_;
    Handle next_ = 0x100;
};

/// Throws when it can't be read.
std::unique_ptr<db::Drawing> read(const SmallDrawing& content);

/// Measured on a copy, so that it works whatever is open or refused. Of a text that draws nothing, its
/// position.
AcDbExtents boxOf(const db::Drawing& drawing, Handle handle);

/// The drawing, read, made the working database and locked as for a running command.
class OpenedDrawing {
public:
    explicit OpenedDrawing(const SmallDrawing& content);
    ~OpenedDrawing();

    db::Drawing& operator*() const { return *drawing_; }
    db::Drawing* operator->() const { return drawing_.get(); }

    AcDbObjectId id(Handle handle) const;
    AcDbObjectIdArray ids(const std::vector<Handle>& handles) const;

private:
    std::unique_ptr<db::Drawing> drawing_;
};

} // namespace qx::tests
