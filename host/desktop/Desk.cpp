#include "desktop/Desk.h"

#include "accmd.h"
#include "desktop/marks.h"
#include "ed/Tokenizer.h"
#include "ed/prompts.h"
#include "rx/CommandStack.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace qx::desktop {
namespace {

using ed::Ask;
using ed::Input;

constexpr double dragged = 4; // pixels, from which on a press and a release are two corners

Desk* current = nullptr;

Input cancelling() { return {.kind = Input::Kind::cancel, .text = {}}; }

bool spaceBelongs(std::string_view line) {
    return line.find(' ') != std::string_view::npos && line.find_first_of("\n\"(") == std::string_view::npos;
}

} // namespace

/// What is shown of the open drawing.
struct Desk::Shown {
    explicit Shown(ed::Session& session)
        : list{*session.drawing()}, watch{*session.drawing()}, pointing{session,
                                                                        [this](const shape::Box& rectangle) {
                                                                            return list.meeting(rectangle);
                                                                        }} {}

    draw::DisplayList list;
    draw::ChangeWatch watch;
    ed::Pointing pointing;
};

Desk::Desk(ed::Session& session, std::function<bool()> wait)
    : session_{session}, wait_{std::move(wait)}, recovery_{session} {
    current = this;
    session_.observer = this;
    registerZoom();
}

Desk::~Desk() {
    rx::commandStack().removeGroup(L"QX_DESK");
    session_.observer = nullptr;
    current = nullptr;
}

// ---- the drawing

void Desk::drawingChanges() {
    shown_.reset();
    chosen_.clear();
    recovery_.drawingChanges();
    findingsTold_ = 0;
    becameStale(Stale::scene);
}

void Desk::showDrawing() {
    shown_ = std::make_unique<Shown>(session_);
    zoomExtents();
}

void Desk::follow() {
    if (session_.drawing() && !shown_) showDrawing();
    if (!shown_) return;
    const std::vector<db::Record*> changed = shown_->watch.take();
    becameStale(changed.empty() ? Stale::selection : Stale::scene);
    if (!changed.empty()) shown_->list.update(changed);
}

void Desk::becameStale(Stale what) {
    stale_ = std::max(stale_, what);
    needsPaint_ = true;
}

// ---- answers

Input Desk::next(Ask ask) {
    ask_ = ask;
    follow();
    const bool isCommand = ask == Ask::command;
    for (;;) {
        if (isCommand && std::exchange(isPausing_, false)) return {};
        if (!answers_.empty()) break;
        if (isOver_) return isCommand ? Input{} : cancelling();
        if (!lines_.empty()) {
            const std::string line = std::move(lines_.front());
            lines_.pop_front();
            takeLine(line);
        } else if (!isCommand && (isClosing_ || !deeds_.empty())) {
            return cancelling();
        } else if (isCommand && !deeds_.empty()) {
            const auto deed = std::move(deeds_.front());
            deeds_.pop_front();
            deed();
        } else if (isCommand && std::exchange(isClosing_, false)) {
            isOver_ = !mayClose || mayClose();
        } else {
            isOver_ = !wait_();
        }
    }
    Input input = std::move(answers_.front());
    answers_.pop_front();
    if (isCommand && input.kind == Input::Kind::text) lastCommand_ = input.text;
    return input;
}

// What a line means depends on the prompt that it comes to.
void Desk::type(std::string_view line) {
    if (answers_.empty() && lines_.empty()) return takeLine(line);
    lines_.emplace_back(line);
}

void Desk::takeLine(std::string_view line) {
    // A name may hold blanks; only quotes and forms mean anything there.
    const bool isName = ask_ == Ask::text && !line.empty() && spaceBelongs(line);
    if (isName) {
        answers_.push_back({.kind = Input::Kind::text, .text = std::string{line}, .quoted = true});
        return becameStale(Stale::selection);
    }
    ed::Tokenizer tokens{std::string{line} + '\n'};
    for (Input input = tokens.next(); input.kind != Input::Kind::end; input = tokens.next()) {
        // A form that was never closed takes the rest of its line.
        if (input.kind == Input::Kind::unfinished) input.kind = Input::Kind::text;
        const bool repeats = input.kind == Input::Kind::enter && ask_ == Ask::command && answers_.empty();
        if (repeats && !lastCommand_.empty()) input = {.kind = Input::Kind::text, .text = lastCommand_};
        answers_.push_back(std::move(input));
    }
    if (shown_) shown_->pointing.forgetCorner();
    becameStale(Stale::selection);
}

void Desk::forgetAnswers() {
    answers_.clear();
    lines_.clear();
}

void Desk::launch(std::string commandLine) {
    betweenCommands([this, line = std::move(commandLine)] { type(line); });
}

void Desk::betweenCommands(std::function<void()> deed) {
    forgetAnswers();
    deeds_.clear();
    deeds_.push_back(std::move(deed));
}

void Desk::afterwards(std::function<void()> deed) { deeds_.push_back(std::move(deed)); }

void Desk::cancel() {
    forgetAnswers();
    const bool hadCorner = shown_ && shown_->pointing.corner();
    if (hadCorner)
        shown_->pointing.forgetCorner();
    else
        answers_.push_back(cancelling());
    becameStale(Stale::selection);
}

bool Desk::spaceEnds(std::string_view typed) const {
    const bool isForm = typed.starts_with('(') || typed.starts_with('"');
    return !isForm && ask_ != Ask::text;
}

void Desk::answer(const std::vector<std::string>& texts) {
    for (const std::string& each : texts) answers_.push_back({.kind = Input::Kind::text, .text = each});
}

// ---- mouse

ed::Pointing::Cursor Desk::cursorAt(const AcGePoint2d& place, bool shift) const {
    return {.world = view_.toWorld(place),
            .pixel = view_.pixel() * dotsPerInch_ / 96,
            .removes = shift,
            .snaps = snaps_};
}

void Desk::moveTo(const AcGePoint2d& place) {
    cursor_ = place;
    becameStale(Stale::cursor);
}

void Desk::leave() {
    cursor_.reset();
    becameStale(Stale::cursor);
}

void Desk::press(const AcGePoint2d& place, bool shift) {
    cursor_ = place;
    pressedAt_ = shown_ && shown_->pointing.corner() ? std::nullopt : std::optional{place};
    click(place, shift);
}

void Desk::release(const AcGePoint2d& place, bool shift) {
    const auto from = std::exchange(pressedAt_, std::nullopt);
    if (from && shown_ && shown_->pointing.corner() && (place - *from).length() > dragged)
        click(place, shift);
}

void Desk::click(const AcGePoint2d& place, bool shift) {
    if (!shown_) return;
    answer(shown_->pointing.click(ask_, cursorAt(place, shift)));
    becameStale(Stale::selection);
}

// ---- the view

void Desk::setCanvas(draw::Colour* scene, int width, int height, draw::TextPainter& texts, int dotsPerInch) {
    const bool isFirst = !scene_;
    scene_ = scene;
    texts_ = &texts;
    dotsPerInch_ = dotsPerInch;
    view_.resize(width, height);
    if (isFirst) zoomExtents();
    becameStale(Stale::scene);
}

// Where coordinates end the view stops; then the pixels must not move on.
void Desk::pan(int right, int down) {
    const AcGePoint3d corner = view_.toWorld({0, 0});
    view_.pan(right, down);
    const AcGeVector2d moved = view_.toScreen(corner) - AcGePoint2d{0, 0};
    if ((moved - AcGeVector2d(right, down)).length() > 0.5) becameStale(Stale::scene);
    if (scene_ && stale_ != Stale::scene && shown_) {
        draw::Raster raster{scene_, view_.width(), view_.height()};
        for (const draw::PixelRect& each : raster.scroll(right, down)) {
            raster.setClip(each);
            raster.fill(each, groundColour(ground_));
            shown_->list.draw(raster, view_, ground_, *texts_);
        }
    }
    becameStale(Stale::selection);
}

void Desk::zoom(double factor, const AcGePoint2d& about) {
    view_.zoom(factor, about);
    becameStale(Stale::scene);
}

void Desk::zoomExtents() {
    view_.fit(shown_ ? shown_->list.extents() : shape::Box{});
    becameStale(Stale::scene);
}

void Desk::toggleSnaps() {
    snaps_ = !snaps_;
    becameStale(Stale::cursor);
}

void Desk::setGround(draw::Ground ground) {
    ground_ = ground;
    becameStale(Stale::scene);
}

void Desk::registerZoom() {
    rx::commandStack().addCommand(L"QX_DESK", L"ZOOM", nullptr, ACRX_CMD_SESSION | ACRX_CMD_NO_UNDO_MARKER,
                                  [] { current->zoomByCommand(); });
}

void Desk::zoomByCommand() {
    if (!session_.drawing()) return;
    const auto answered = askReal(session_.line(), {.prompt = "指定比例因子，或 [范围(E)/窗口(W)] <范围>: ",
                                                    .keywords = ed::Keywords{"Extents Window"},
                                                    .mayBeZero = false,
                                                    .mayBeNegative = false});
    if (answered.kind == ed::Answered::cancel) return;
    if (answered.kind == ed::Answered::value)
        return zoom(answered.value, {view_.width() * 0.5, view_.height() * 0.5});
    if (answered.keyword != "Window") return zoomExtents();
    shape::Box box;
    for (const char* prompt : {"指定第一个角点: ", "指定对角点: "}) {
        const auto corner = askPoint(session_.line(), {.prompt = prompt, .mayBeNone = false});
        if (corner.kind != ed::Answered::value) return session_.rubberBand.reset();
        session_.lastPoint = session_.frame().resolved(corner.value, session_.lastPoint);
        box.add(session_.frame().toWorld(session_.lastPoint));
        session_.rubberBand = {.from = session_.frame().toWorld(session_.lastPoint), .isRectangle = true};
    }
    session_.rubberBand.reset();
    view_.fit(box);
    becameStale(Stale::scene);
}

// ---- the picture

// Where only the cursor moves, a frame costs the same however much is selected.
void Desk::compose(draw::Colour* frame) {
    if (!scene_) return;
    if (stale_ == Stale::scene) drawScene();
    if (stale_ >= Stale::selection) drawSelection();
    stale_ = Stale::nothing;
    needsPaint_ = false;
    std::copy_n(withSelection_.empty() ? scene_ : withSelection_.data(), pixelCount(), frame);
    draw::Raster raster{frame, view_.width(), view_.height()};
    drawCursor(raster);
}

void Desk::drawScene() {
    draw::Raster raster{scene_, view_.width(), view_.height()};
    raster.fill(raster.bounds(), groundColour(ground_));
    if (shown_) shown_->list.draw(raster, view_, ground_, *texts_);
}

/// What is selected, as long as the running command has not begun to change it.
std::vector<db::Record*> Desk::markedRecords() const {
    if (session_.selecting) return session_.selecting->members();
    if (!isBusy() || !session_.pickFirst.isEmpty()) return session_.pickFirst.members();
    return session_.drawing()->history().changesSoFar() == 0 ? chosen_ : std::vector<db::Record*>{};
}

void Desk::drawSelection() {
    withSelection_.clear();
    const std::vector<db::Record*> marked = shown_ ? markedRecords() : std::vector<db::Record*>{};
    if (marked.empty()) return;
    withSelection_.assign(scene_, scene_ + pixelCount());
    draw::Raster raster{withSelection_.data(), view_.width(), view_.height()};
    shown_->list.drawAgain(marked, raster, view_, ground_, draw::Emphasis::dashed);
}

void Desk::drawCursor(draw::Raster& frame) const {
    if (!shown_ || !cursor_) return;
    const ed::Pointing::Cursor cursor = cursorAt(*cursor_, false);
    const auto taken = shown_->pointing.taken(ask_, cursor);
    shown_->list.drawAgain(taken, frame, view_, ground_, draw::Emphasis::strong);
    const auto snap = shown_->pointing.snap(ask_, cursor);
    const AcGePoint2d target = snap ? view_.toScreen(snap->point) : *cursor_;
    Marks marks{frame, ground_, dotsPerInch_};
    if (shown_->pointing.corner()) {
        marks.rectangle(view_.toScreen(*shown_->pointing.corner()), target);
    } else if (session_.rubberBand) {
        const AcGePoint2d from = view_.toScreen(session_.rubberBand->from);
        session_.rubberBand->isRectangle ? marks.rectangle(from, target) : marks.rubberBand(from, target);
    }
    if (snap) marks.snap(snap->kind, target);
    marks.cursor(*cursor_, ask_, session_.variables().number("PICKBOX"));
}

std::string Desk::status() const {
    if (!cursor_) return {};
    AcGePoint3d point = view_.toWorld(*cursor_);
    const auto snap = shown_ ? shown_->pointing.snap(ask_, cursorAt(*cursor_, false)) : std::nullopt;
    if (snap) point = snap->point;
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%.4f, %.4f", point.x, point.y);
    return text.data() + (snap ? "  " + nameOf(snap->kind) : std::string{});
}

// ---- commands

void Desk::commandBegins(const db::Drawing* drawing, const std::string& name) {
    chosen_.clear();
    becameStale(Stale::selection);
    recovery_.commandBegins(drawing, name);
}

void Desk::selected(const ed::RecordSet& set) {
    chosen_ = set.members();
    becameStale(Stale::selection);
}

void Desk::commandEnds(db::Drawing* drawing, ed::CommandEnd end) {
    chosen_.clear();
    follow();
    tellFindings();
    recovery_.commandEnds(drawing, end);
}

// What objects hold is found out when they are drawn or used for the first time.
void Desk::tellFindings() {
    constexpr std::size_t most = 20;
    if (!session_.drawing()) return;
    const auto& findings = session_.drawing()->findings();
    ed::Transcript& transcript = session_.line().transcript;
    std::size_t next = std::exchange(findingsTold_, findings.size());
    for (; next < std::min(findings.size(), most); ++next) {
        const std::string line =
            findings[next].line > 0 ? " (第 " + std::to_string(findings[next].line) + " 行)" : "";
        transcript.sentence("发现 " + std::to_string(next + 1) + line + ": " + findings[next].sentence);
    }
    if (next < findings.size())
        transcript.sentence("另有 " + std::to_string(findings.size() - next) + " 条发现没有列出。");
}

} // namespace qx::desktop
