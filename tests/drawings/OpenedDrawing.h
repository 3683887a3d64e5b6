// A small drawing as a running command has it.
#pragma once

#include "dbapserv.h"
#include "dbidar.h"
#include "drawings/DrawingText.h"
#include "shape/ExtentsSink.h"

namespace drawings {

/// Measured on a copy, so that it works whatever is open or refused. Of a text that draws nothing, its
/// position.
inline AcDbExtents boxOf(const qx::db::Drawing& drawing, Handle handle) {
    const AcDbEntity* entity = drawing.liveEntity(drawing.find(handle));
    qx::shape::ExtentsSink sink;
    entity->shape(sink);
    if (!sink.box().isEmpty()) return {sink.box().min, sink.box().max};
    const AcGePoint3d position = dynamic_cast<const AcDbText&>(*entity).position();
    return {position, position};
}

/// The drawing, read, made the working database and locked for changes.
class OpenedDrawing {
public:
    explicit OpenedDrawing(const DrawingText& content) : drawing_{read(content)} {
        acdbHostApplicationServices()->setWorkingDatabase(&drawing_->database());
    }
    ~OpenedDrawing() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    qx::db::Drawing& operator*() const { return *drawing_; }
    qx::db::Drawing* operator->() const { return drawing_.get(); }

    AcDbObjectId id(Handle handle) const { return idOf(*drawing_, handle); }
    AcDbObjectIdArray ids(const std::vector<Handle>& handles) const {
        AcDbObjectIdArray list;
        for (const Handle each : handles) list.append(id(each));
        return list;
    }

private:
    std::unique_ptr<qx::db::Drawing> drawing_;
};

} // namespace drawings
