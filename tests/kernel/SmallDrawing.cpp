#include "tests/kernel/SmallDrawing.h"

#include "dbapserv.h"
#include "dbents.h"
#include "shape/ExtentsSink.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace qx::tests {
namespace {
// Tags as "code value", with "|" between them.
constexpr const char* beforeHandleSeed = "0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|9 $HANDSEED|";
constexpr const char* betweenHandleSeedAndEntities =
    "0 ENDSEC|0 SECTION|2 TABLES|"
    "0 TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 2|"
    "0 LAYER|5 10|330 2|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 0|70 0|62 7|6 Continuous|"
    "0 LAYER|5 11|330 2|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 LOCKED|70 4|62 7|6 Continuous|"
    "0 ENDTAB|"
    "0 TABLE|2 BLOCK_RECORD|5 1|330 0|100 AcDbSymbolTable|70 1|"
    "0 BLOCK_RECORD|5 1F|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 *Model_Space|"
    "0 ENDTAB|0 ENDSEC|0 SECTION|2 BLOCKS|"
    "0 BLOCK|5 20|330 1F|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 *Model_Space|70 0|10 0|20 0|30 0|"
    "3 *Model_Space|1 |"
    "0 ENDBLK|5 21|330 1F|100 AcDbEntity|8 0|100 AcDbBlockEnd|"
    "0 ENDSEC|0 SECTION|2 ENTITIES|";
constexpr const char* betweenEntitiesAndGroups =
    "0 ENDSEC|0 SECTION|2 OBJECTS|"
    "0 DICTIONARY|5 C|330 0|100 AcDbDictionary|281 1|3 ACAD_GROUP|350 D|"
    "0 DICTIONARY|5 D|330 C|100 AcDbDictionary|281 1|";
constexpr const char* end = "0 ENDSEC|0 EOF|";

std::string written(std::string tags) {
    std::replace(tags.begin(), tags.end(), '|', '\n');
    for (std::size_t line = 0; line < tags.size();) {
        const std::size_t blank = tags.find(' ', line);
        tags[blank] = '\n';
        line = tags.find('\n', blank + 1) + 1;
    }
    return tags;
}

std::string tag(int code, const std::string& value) { return std::to_string(code) + "\n" + value + "\n"; }

std::string hex(Handle handle) {
    char text[17];
    std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
    return text;
}

std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::vector<std::pair<int, std::string>> point(int code, const AcGePoint3d& p) {
    return {{code, number(p.x)}, {code + 10, number(p.y)}, {code + 20, number(p.z)}};
}
} // namespace

Handle SmallDrawing::entity(const std::string& name, const std::string& mark,
                            const std::vector<std::pair<int, std::string>>& tags, const std::string& layer) {
    const Handle handle = next_++;
    entities_ += tag(0, name) + tag(5, hex(handle)) + tag(330, "1F") + tag(100, "AcDbEntity") +
                 tag(8, layer) + tag(100, mark);
    for (const auto& [code, value] : tags) entities_ += tag(code, value);
    return handle;
}

Handle SmallDrawing::line(const AcGePoint3d& from, const AcGePoint3d& to, const std::string& layer) {
    auto tags = point(10, from);
    for (auto& each : point(11, to)) tags.push_back(std::move(each));
    return entity("LINE", "AcDbLine", tags, layer);
}

Handle SmallDrawing::circle(const AcGePoint3d& centre, double radius, const std::string& layer) {
    auto tags = point(10, centre);
    tags.emplace_back(40, number(radius));
    return entity("CIRCLE", "AcDbCircle", tags, layer);
}

Handle SmallDrawing::blankText(const std::string& layer) {
    auto tags = point(10, {0, 0, 0});
    tags.insert(tags.end(), {{40, "2.5"}, {1, " "}, {100, "AcDbText"}});
    return entity("TEXT", "AcDbText", tags, layer);
}

Handle SmallDrawing::group(const std::string& name, const std::vector<Handle>& members) {
    const Handle handle = next_++;
    groups_.push_back({name, handle});
    groupObjects_ += tag(0, "GROUP") + tag(5, hex(handle)) + tag(330, "D") + tag(100, "AcDbGroup") +
                     tag(300, "") + tag(70, "0") + tag(71, "1");
    for (const Handle member : members) groupObjects_ += tag(340, hex(member));
    return handle;
}

std::string SmallDrawing::bytes() const {
    std::string bytes = written(beforeHandleSeed) + tag(5, hex(next_)) +
                        written(betweenHandleSeedAndEntities) + entities_ + written(betweenEntitiesAndGroups);
    for (const Group& each : groups_) bytes += tag(3, each.name) + tag(350, hex(each.handle));
    return bytes + groupObjects_ + written(end);
}

std::unique_ptr<db::Drawing> read(const SmallDrawing& content) {
    auto drawing = db::Drawing::fromBytes(content.bytes(), "test.dxf");
    if (!drawing) throw std::runtime_error{drawing.error()};
    return std::move(*drawing);
}

AcDbExtents boxOf(const db::Drawing& drawing, Handle handle) {
    const AcDbEntity* entity = drawing.liveEntity(drawing.find(handle));
    shape::ExtentsSink sink;
    entity->shape(sink);
    if (!sink.box().isEmpty()) return {sink.box().min, sink.box().max};
    const AcGePoint3d position = dynamic_cast<const AcDbText&>(*entity).position();
    return {position, position};
}

OpenedDrawing::OpenedDrawing(const SmallDrawing& content) : drawing_{read(content)} {
    drawing_->setLocked(true);
    acdbHostApplicationServices()->setWorkingDatabase(&drawing_->database());
}

OpenedDrawing::~OpenedDrawing() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

AcDbObjectId OpenedDrawing::id(Handle handle) const { return AcDbObjectId{drawing_->find(handle)}; }

AcDbObjectIdArray OpenedDrawing::ids(const std::vector<Handle>& handles) const {
    AcDbObjectIdArray list;
    for (const Handle each : handles) list.append(id(each));
    return list;
}

} // namespace qx::tests
