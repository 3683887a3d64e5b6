#include "ed/SelectionPrompt.h"

#include "ed/forms.h"
#include "ed/picking.h"

#include <algorithm>
#include <utility>

namespace qx::ed {
namespace {

constexpr const char* optionsForThePerson =
    "需要点或 全部(ALL)/窗口(W)/窗交(C)/上一个(L)/前一个(P)/删除(R)/添加(A)。";

// Kept, but of a class that can't be measured or with data that make no sense, and so not to be selected;
// though a person sees such an object in the file.
bool isLeftOut(const db::Drawing& drawing, db::Record* record) {
    if (record->has(db::Record::erased)) return false;
    const AcDbEntity* entity = drawing.liveEntity(record);
    return entity ? !entity->isMeasurable() && entity->isVisible() : record->has(db::Record::unusable);
}

} // namespace

SelectionPrompt::SelectionPrompt(Session& session, std::string addPrompt, std::string removePrompt)
    : session_{session}, drawing_{*session.drawing()}, addPrompt_{std::move(addPrompt)},
      removePrompt_{std::move(removePrompt)}, set_{session.drawing()} {}

SelectionPrompt::End SelectionPrompt::run() {
    // Also when the dialogue throws.
    struct Shown {
        explicit Shown(Session& session, const RecordSet& set) : of{session} {
            of.selecting = &set;
            of.removing = false;
        }
        ~Shown() { of.selecting = nullptr; }
        Session& of;
    };
    const Shown shown{session_, set_};
    return askUntilEnter();
}

SelectionPrompt::End SelectionPrompt::askUntilEnter() {
    for (;;) {
        const Input input = askInput();
        if (input.kind == Input::Kind::cancel) return End::cancelled;
        if (input.kind == Input::Kind::enter) break;
        take(input);
    }
    if (set_.isEmpty()) return End::nothing;
    session_.previous = set_;
    return End::selected;
}

Input SelectionPrompt::askInput() {
    isPushedBack_ = pushedBack_.has_value();
    if (pushedBack_) return *std::exchange(pushedBack_, std::nullopt);
    return session_.line().ask(Ask::selection, session_.removing ? removePrompt_ : addPrompt_);
}

void SelectionPrompt::take(const Input& input) {
    if (const auto point = parsePoint(input.text)) {
        session_.lastPoint = session_.frame().resolved(*point, session_.lastPoint);
        return takePoint(session_.lastPoint);
    }
    if (takeOption(input.text) || takeEntity(input.text)) return;
    session_.line().refuse(optionsForThePerson, '"' + abridged(input.text) + "\" selects nothing");
    // It ended the rectangle all the same: whoever repeats the answers needs one that does no more.
    if (isPushedBack_)
        session_.line().noteAnswer({.kind = Input::Kind::text, .text = session_.removing ? "R" : "A"});
}

bool SelectionPrompt::takeOption(const std::string& text) {
    using Action = void (*)(SelectionPrompt&);
    static const std::pair<std::string_view, Action> actions[] = {
        {"ALL", [](SelectionPrompt& p) { p.takeAll(); }},
        {"Window", [](SelectionPrompt& p) { p.takeRectangle(Rectangle::window); }},
        {"Crossing", [](SelectionPrompt& p) { p.takeRectangle(Rectangle::crossing); }},
        {"Last", [](SelectionPrompt& p) { p.takeLast(); }},
        {"Previous", [](SelectionPrompt& p) { p.takePrevious(); }},
        {"Remove", [](SelectionPrompt& p) { p.session_.removing = true; }},
        {"Add", [](SelectionPrompt& p) { p.session_.removing = false; }},
    };
    static const Keywords keywords{"ALL Window Crossing Last Previous Remove Add"};
    const auto option = keywords.match(text);
    if (!option) return false;
    std::ranges::find(actions, *option, &std::pair<std::string_view, Action>::first)->second(*this);
    return true;
}

void SelectionPrompt::takeAll() {
    Records records;
    std::size_t leftOut = 0;
    drawing_.forEachInModelSpace([&](db::Record* record) {
        if (drawing_.isSelectable(record))
            records.push_back(record);
        else if (isLeftOut(drawing_, record))
            ++leftOut;
    });
    found(records);
    if (leftOut > 0) say(std::to_string(leftOut) + " 个对象不能选择：类别不能测量，或者数据不能使用。");
}

void SelectionPrompt::takeLast() {
    Records records;
    drawing_.forEachInModelSpace([&](db::Record* record) { records.push_back(record); });
    const auto last = std::find_if(records.rbegin(), records.rend(),
                                   [&](db::Record* record) { return drawing_.isSelectable(record); });
    found(last == records.rend() ? Records{} : Records{*last});
}

void SelectionPrompt::takePrevious() {
    if (session_.previous.isEmpty()) return say("没有前一个选择集。");
    Records records = session_.previous.members();
    std::erase_if(records, [&](db::Record* record) { return !drawing_.isSelectable(record); });
    found(records);
}

void SelectionPrompt::takePoint(AcGePoint3d user) {
    if (db::Record* picked = pickedAt(drawing_, session_.frame().toWorld(user), session_.pickReach()))
        return takePicked(picked);
    const auto opposite = askOpposite(user, OnEnter::endSelection);
    if (opposite) takeWindow(user, *opposite, opposite->x < user.x ? Rectangle::crossing : Rectangle::window);
}

void SelectionPrompt::takePicked(db::Record* picked) {
    std::size_t groups = 0;
    const Records records = withGroups(session_, picked, &groups);
    found(records, groups);
}

// What is erased is refused like what never was: in the saved file it isn't there, and scripts go on from
// that.
bool SelectionPrompt::takeEntity(const std::string& form) {
    const auto pick = parsePick(form);
    const auto handle = pick ? pick->handle : parseHandent(form);
    db::Record* record = handle ? drawing_.find(*handle) : nullptr;
    if (!record || record->has(db::Record::erased)) return false;
    if (!drawing_.isSelectable(record))
        found({});
    else if (pick)
        takePicked(record);
    else
        found({record});
    return true;
}

void SelectionPrompt::takeRectangle(Rectangle rectangle) {
    const auto first = askCorner("指定第一个角点: ", OnEnter::leaveWindow);
    if (!first) return;
    const auto second = askOpposite(*first, OnEnter::leaveWindow);
    if (second) takeWindow(*first, *second, rectangle);
}

// What is no point is an answer to the selection prompt instead, so that one missed pick does not upset all
// that follows it.
std::optional<AcGePoint3d> SelectionPrompt::askCorner(const std::string& prompt, OnEnter onEnter) {
    const Input input = session_.line().ask(Ask::point, prompt);
    if (input.kind == Input::Kind::enter && onEnter == OnEnter::leaveWindow) return std::nullopt;
    const auto point = input.kind == Input::Kind::text ? parsePoint(input.text) : std::nullopt;
    if (!point) {
        pushedBack_ = input;
        return std::nullopt;
    }
    session_.lastPoint = session_.frame().resolved(*point, session_.lastPoint);
    return session_.lastPoint;
}

std::optional<AcGePoint3d> SelectionPrompt::askOpposite(const AcGePoint3d& corner, OnEnter onEnter) {
    session_.rubberBand = {.from = session_.frame().toWorld(corner), .isRectangle = true};
    const auto opposite = askCorner("指定对角点: ", onEnter);
    session_.rubberBand.reset();
    return opposite;
}

void SelectionPrompt::takeWindow(const AcGePoint3d& first, const AcGePoint3d& second, Rectangle rectangle) {
    const UserFrame frame = session_.frame();
    found(foundIn(drawing_, frame.toWorld(first), frame.toWorld(second), rectangle));
}

void SelectionPrompt::found(const Records& records, std::size_t groups) {
    const bool isFirst = set_.isEmpty();
    std::string sentence = "找到 " + std::to_string(records.size()) + " 个";
    if (groups > 0) sentence += "，" + std::to_string(groups) + " 个编组";
    if (session_.removing)
        sentence += "，删除 " + std::to_string(set_.remove(records)) + " 个";
    else if (const std::size_t repeats = records.size() - set_.add(records); repeats > 0)
        sentence += " (" + std::to_string(repeats) + " 个重复)";
    if (!isFirst) sentence += "，总计 " + std::to_string(set_.size()) + " 个";
    say(sentence);
}

void SelectionPrompt::say(const std::string& sentence) { session_.line().transcript.remark(sentence); }

} // namespace qx::ed
