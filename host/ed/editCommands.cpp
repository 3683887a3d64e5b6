#include "acedads.h"
#include "dbidar.h"
#include "dbobjptr.h"
#include "dxf/Tag.h"
#include "ed/hostCommands.h"
#include "ed/prompts.h"
#include "os/encoding.h"

#include <cmath>

namespace qx::ed {
namespace {

std::string extentsOf(const AcDbEntity& entity) {
    AcDbExtents extents;
    if (entity.getGeomExtents(extents) != Acad::eOk) return "无范围";
    return "范围 " + textOf(extents.minPoint()) + " 至 " + textOf(extents.maxPoint());
}

bool takeBack(Session& session) {
    const std::string name = session.drawing()->history().undo();
    say(session, name.empty() ? "没有可放弃的操作。" : "已放弃 " + name);
    return !name.empty();
}

} // namespace

std::vector<AcDbObjectId> askObjects() {
    std::vector<AcDbObjectId> ids;
    ads_name set{}, name{};
    if (acedSSGet(nullptr, nullptr, nullptr, nullptr, set) != RTNORM) return ids;
    AcDbObjectId id;
    for (int i = 0; acedSSName(set, i, name) == RTNORM; ++i)
        if (acdbGetObjectId(id, name) == Acad::eOk) ids.push_back(id);
    acedSSFree(set);
    return ids;
}

void undoCommand() {
    Session& session = *Session::current();
    if (hasDrawing(session)) takeBack(session);
}

void undoManyCommand() {
    Session& session = *Session::current();
    if (!hasDrawing(session)) return;
    const Request request{.prompt = "输入要放弃的操作数目 <1>: ", .mayBeZero = false, .mayBeNegative = false};
    auto answer = askReal(session.line(), request);
    while (answer.kind == Answered::value && answer.value != std::floor(answer.value)) {
        session.line().refuse("需要整数。", "the number is not a whole one");
        answer = askReal(session.line(), request);
    }
    if (answer.kind == Answered::cancel) return;
    double count = answer.kind == Answered::value ? answer.value : 1;
    while (count-- > 0 && takeBack(session)) continue;
}

void redoCommand() {
    Session& session = *Session::current();
    if (!hasDrawing(session)) return;
    const std::string name = session.drawing()->history().redo();
    say(session, name.empty() ? "没有可重做的操作。" : "已重做 " + name);
}

void eraseCommand() {
    std::size_t refused = 0;
    for (const AcDbObjectId id : askObjects()) {
        AcDbObjectPointer<AcDbEntity> entity{id, AcDb::kForWrite};
        if (entity.openStatus() != Acad::eOk || entity->erase() != Acad::eOk) ++refused;
    }
    if (refused > 0) say(*Session::current(), std::to_string(refused) + " 个对象在锁定的图层上，没有删除。");
}

// The prompt itself makes it the previous selection.
void selectCommand() { askObjects(); }

void identifyPointCommand() {
    Session& session = *Session::current();
    const auto answer = askPoint(session.line(), {.prompt = "指定点: ", .mayBeNone = false});
    if (answer.kind != Answered::value) return;
    session.lastPoint = session.frame().resolved(answer.value, session.lastPoint);
    say(session, "坐标 " + textOf(session.lastPoint));
}

void listCommand() {
    Session& session = *Session::current();
    for (const AcDbObjectId id : askObjects()) {
        const AcDbObjectPointer<AcDbEntity> entity{id};
        if (entity.openStatus() != Acad::eOk) continue;
        say(session, os::toUtf8(entity->isA()->name()) + "  句柄 " + dxf::handleText(id.handle().value()) +
                         "  图层 " + os::withoutControls(entity->layerState().name) + "  " +
                         extentsOf(*entity));
    }
}

} // namespace qx::ed
