#include "random/RandomPerson.h"

#include "db/RecordedShape.h"
#include "ed/UserFrame.h"
#include "ed/picking.h"

#include <algorithm>
#include <utility>

namespace qx::tests {
namespace {
using Record = db::Record;

constexpr int patience = 60; ///< questions; then Esc

constexpr double numbers[] = {0, 0, 5, -7, 2.5, 25, -100, 1e-7, 1e9, -1e14, 1e15, 1e200};

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

/// A kind that the prompt names, any kind where it names none.
bool suits(const Record& record, const std::string& prompt) {
    using db::Kind;
    const bool takesPolylines = contains(prompt, "多段线"), takesCurves = contains(prompt, "圆");
    if (prompt.empty()) return true;
    switch (record.kind) {
    case Kind::line:
        return contains(prompt, "直线") || contains(prompt, "对齐线");
    case Kind::lwPolyline:
    case Kind::polyline:
        return takesPolylines || contains(prompt, "对齐线");
    case Kind::circle:
    case Kind::arc:
        return takesCurves;
    default:
        return false;
    }
}
} // namespace

RandomPerson::RandomPerson(Chance& chance, db::Drawing& drawing, std::vector<std::uint64_t> objects,
                           const std::string& shown)
    : chance_{chance}, drawing_{drawing}, objects_{std::move(objects)}, shown_{shown} {}

void RandomPerson::begin(const std::string& command) {
    typed_.clear();
    for (std::size_t at = 0; at <= command.size(); at = command.find('\n', at) + 1) {
        typed_.insert(typed_.begin(), command.substr(at, command.find('\n', at) - at));
        if (command.find('\n', at) == std::string::npos) break;
    }
    firstAnswer.clear();
    picked.clear();
    hasCancelled = hasFlipped = false;
    largestNumber = 0;
    questions_ = 0;
}

ed::Input RandomPerson::next(ed::Ask what) {
    using Kind = ed::Input::Kind;
    if (what == ed::Ask::command && typed_.empty()) return {.kind = Kind::end, .text = {}};
    std::string answer;
    if (typed_.empty()) {
        answer = answerTo(what);
    } else {
        answer = typed_.back();
        typed_.pop_back();
    }
    script += answer + "\n";
    if (questions_++ == 1) firstAnswer = answer;
    if (answer != "^C") return {.kind = answer.empty() ? Kind::enter : Kind::text, .text = answer};
    hasCancelled = true;
    return {.kind = Kind::cancel, .text = {}};
}

std::string RandomPerson::answerTo(ed::Ask what) {
    hasFlipped = hasFlipped || contains(prompt(), "切换方向");
    if (questions_ > patience || chance_.oneIn(100)) return "^C";
    switch (what) {
    case ed::Ask::selection:
        return selection();
    case ed::Ask::entity:
        return pick();
    case ed::Ask::point:
        return pointAnswer();
    case ed::Ask::keyword:
        return keyword();
    default:
        return number();
    }
}

std::string RandomPerson::prompt() const { return shown_.substr(shown_.rfind('\n') + 1); }

std::string RandomPerson::selection() {
    constexpr const char* others[] = {"ALL", "C", "W", "L", "P", "R", "A"};
    if (questions_ > 9 || chance_.oneIn(questions_ > 5 ? 3 : 8)) return "";
    if (chance_.oneIn(3)) return others[chance_.below(std::size(others))];
    const std::uint64_t any = somethingFor("");
    if (chance_.oneIn(4)) return typed(pointOn(any));
    return "(handent \"" + drawings::hex(any) + "\")";
}

std::uint64_t RandomPerson::somethingFor(const std::string& asked) {
    std::vector<std::uint64_t> suitable;
    for (const std::uint64_t each : objects_) {
        db::Record* record = drawing_.find(each);
        if (drawing_.isSelectable(record) && suits(*record, asked)) suitable.push_back(each);
    }
    return suitable.empty() || chance_.oneIn(8) ? chance_.oneOf(objects_) : chance_.oneOf(suitable);
}

std::string RandomPerson::pick() {
    const bool takesSeveral = contains(prompt(), "请选择多段线");
    if (chance_.oneIn(takesSeveral ? 4 : 12) || questions_ > 30) return "";
    const std::uint64_t any = somethingFor(prompt());
    lastPick_ = pointOn(any);
    if (chance_.oneIn(4)) {
        const ed::UserFrame frame{drawing_.ucs()};
        picked.push_back(ed::pickedAt(drawing_, lastPick_, ed::pixelSize(drawing_) * 3));
        return typed(lastPick_);
    }
    picked.push_back(drawing_.find(any));
    std::string point = typed(lastPick_);
    std::ranges::replace(point, ',', ' ');
    return "(list (handent \"" + drawings::hex(any) + "\") (list " + point + "))";
}

std::string RandomPerson::pointAnswer() {
    if (contains(prompt(), "切换方向")) return chance_.oneIn(3) ? typed(chance_.place()) : "";
    if (chance_.oneIn(15)) return "";
    if (contains(prompt(), "对齐点:") && !chance_.oneIn(8)) return typed(lastPick_);
    if (chance_.oneIn(10)) return "@" + decimal(chance_.coordinate()) + "," + decimal(chance_.coordinate());
    return typed(chance_.oneIn(3) ? pointOn(chance_.oneOf(objects_)) : chance_.place());
}

std::string RandomPerson::number() {
    const double number = numbers[chance_.below(std::size(numbers))];
    if (chance_.oneIn(4)) return "";
    largestNumber = std::max(largestNumber, std::abs(number));
    return decimal(number);
}

/// One of those in parentheses.
std::string RandomPerson::keyword() {
    const std::string asked = prompt();
    std::vector<std::string> all{""};
    for (std::size_t at = 0; (at = asked.find('(', at)) != std::string::npos; ++at)
        all.push_back(asked.substr(at + 1, asked.find(')', at) - at - 1));
    return all[chance_.below(all.size() * 8) == 0 ? 0 : 1 + chance_.below(all.size() - 1)];
}

std::string RandomPerson::typed(const AcGePoint3d& point) {
    const AcGePoint3d user = ed::UserFrame{drawing_.ucs()}.toUser(point);
    return decimal(user.x) + "," + decimal(user.y) + (user.z == 0 ? "" : "," + decimal(user.z));
}

AcGePoint3d RandomPerson::pointOn(std::uint64_t handle) {
    const AcDbEntity* entity = drawing_.liveEntity(drawing_.find(handle));
    const auto points =
        entity ? RecordedShape{*entity, 1, RecordedShape::few}.points : std::vector<AcGePoint3d>{};
    if (points.empty()) return chance_.place();
    const std::size_t at = chance_.below(points.size());
    const AcGePoint3d &from = points[at], &to = points[std::min(at + 1, points.size() - 1)];
    return chance_.oneIn(3) ? from : from + (to - from) * chance_.number(0, 1);
}

} // namespace qx::tests
