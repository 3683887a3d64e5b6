#include "ed/Pointing.h"

#include "ed/forms.h"
#include "ed/picking.h"
#include "shape/NearestSink.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qx::ed {
namespace {

constexpr double aperturePixels = 10; // of object snaps

/// A point that nobody means to a hundredth of a pixel doesn't need more digits.
AcGePoint3d rounded(const AcGePoint3d& world, double pixel) {
    const double step = std::pow(10, std::floor(std::log10(pixel / 100)));
    const auto nearest = [&](double value) {
        // Divided by a whole number where that is possible: 0.1 is none.
        const double steps = std::round(step < 1 ? value * std::round(1 / step) : value / step);
        const double result = step < 1 ? steps / std::round(1 / step) : steps * step;
        return std::isfinite(result) ? result : value;
    };
    return {nearest(world.x), nearest(world.y), world.z};
}

/// Where a pick can't miss the entity, however little it reaches.
AcGePoint3d pointOn(const AcDbEntity& entity, const AcGePoint3d& world) {
    shape::NearestSink nearest{world};
    entity.shape(nearest);
    return nearest.hasFoot() ? AcGePoint3d{nearest.foot().x, nearest.foot().y, world.z} : world;
}

} // namespace

Pointing::Pointing(Session& session, Candidates candidates)
    : session_{session}, candidates_{std::move(candidates)} {}

std::vector<db::Record*> Pointing::aroundCursor(const Cursor& cursor, double reach) const {
    const AcGeVector3d aside{reach, reach, 0};
    return candidates_({cursor.world - aside, cursor.world + aside});
}

db::Record* Pointing::under(Ask ask, const Cursor& cursor) const {
    const bool picks = ask == Ask::command || ask == Ask::selection || ask == Ask::entity;
    if (!picks || corner_ || !session_.drawing()) return nullptr;
    const double reach = cursor.pixel * session_.variables().number("PICKBOX");
    return pickedAt(*session_.drawing(), aroundCursor(cursor, reach), cursor.world, reach);
}

std::vector<db::Record*> Pointing::taken(Ask ask, const Cursor& cursor) const {
    db::Record* record = under(ask, cursor);
    if (!record) return {};
    return ask == Ask::entity ? std::vector<db::Record*>{record} : withGroups(session_, record);
}

std::optional<Snap> Pointing::snap(Ask ask, const Cursor& cursor) const {
    const bool isCorner = session_.selecting != nullptr;
    if (ask != Ask::point || isCorner || !cursor.snaps || !session_.drawing()) return std::nullopt;
    const double reach = cursor.pixel * aperturePixels;
    return snapAt(*session_.drawing(), aroundCursor(cursor, reach), cursor.world, reach);
}

std::vector<std::string> Pointing::click(Ask ask, const Cursor& cursor) {
    if (!session_.drawing()) return {};
    switch (ask) {
    case Ask::point: {
        const auto snapped = snap(ask, cursor);
        return {answerFor(snapped ? snapped->point : rounded(cursor.world, cursor.pixel))};
    }
    case Ask::entity:
        return {answerForPick(under(ask, cursor), cursor)};
    case Ask::selection:
        return clickAtSelection(cursor);
    case Ask::command:
        clickBetweenCommands(cursor);
        return {};
    case Ask::real:
    case Ask::keyword:
    case Ask::text:
        break;
    }
    return {};
}

std::vector<std::string> Pointing::clickAtSelection(const Cursor& cursor) {
    std::vector<std::string> answers;
    if (db::Record* record = under(Ask::selection, cursor)) {
        answers.push_back(answerForSelected(record, cursor));
    } else if (!corner_) {
        corner_ = rounded(cursor.world, cursor.pixel);
        return {};
    } else {
        const AcGePoint3d first = *std::exchange(corner_, std::nullopt);
        const AcGePoint3d opposite = rounded(cursor.world, cursor.pixel);
        answers = {opposite.x < first.x ? "C" : "W", answerFor(first), answerFor(opposite)};
    }
    if (cursor.removes && !session_.removing) {
        answers.insert(answers.begin(), "R");
        answers.push_back("A");
    }
    return answers;
}

std::string Pointing::answerForPick(db::Record* record, const Cursor& cursor) const {
    if (record && !hasOwnHandle(record))
        return answerFor(pointOn(*session_.drawing()->liveEntity(record), cursor.world));
    return pickForm(record, session_.frame().toUser(rounded(cursor.world, cursor.pixel)));
}

std::string Pointing::answerForSelected(db::Record* record, const Cursor& cursor) const {
    const bool isAlone = withGroups(session_, record).size() == 1;
    return isAlone && hasOwnHandle(record) ? handentForm(record->handle) : answerForPick(record, cursor);
}

void Pointing::clickBetweenCommands(const Cursor& cursor) {
    if (db::Record* record = under(Ask::command, cursor)) {
        select(withGroups(session_, record), cursor.removes);
    } else if (!corner_) {
        corner_ = cursor.world;
    } else {
        const AcGePoint3d first = *std::exchange(corner_, std::nullopt);
        select(within(first, cursor.world), cursor.removes);
    }
}

std::vector<db::Record*> Pointing::within(const AcGePoint3d& corner, const AcGePoint3d& opposite) const {
    const shape::Box rectangle{{std::min(corner.x, opposite.x), std::min(corner.y, opposite.y), 0},
                               {std::max(corner.x, opposite.x), std::max(corner.y, opposite.y), 0}};
    return foundIn(*session_.drawing(), candidates_(rectangle), corner, opposite,
                   opposite.x < corner.x ? Rectangle::crossing : Rectangle::window);
}

void Pointing::select(const std::vector<db::Record*>& records, bool removes) {
    if (session_.pickFirst.drawing() != session_.drawing())
        session_.pickFirst = RecordSet{session_.drawing()};
    if (removes)
        session_.pickFirst.remove(records);
    else
        session_.pickFirst.add(records);
}

std::string Pointing::answerFor(const AcGePoint3d& world) const {
    return textOf(session_.frame().toUser(world), ',');
}

} // namespace qx::ed
