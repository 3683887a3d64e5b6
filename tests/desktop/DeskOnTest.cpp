#include "desktop/DeskOnTest.h"

#include "dxf/Tag.h"

#include <stdexcept>
#include <utility>

namespace qx::tests {

DeskOnTest::DeskOnTest(const TemporaryFolder& folder, const drawings::DrawingText& content)
    : DeskOnTest{(put(folder / "plan.dxf", content.bytes()), folder)} {}

DeskOnTest::DeskOnTest(const TemporaryFolder& folder)
    : session{[this](std::string_view text) { transcript += text; }},
      desk{session, [this] { return doNext(); }}, path_{folder / "plan.dxf"},
      scene_(std::size_t{width} * height) {
    auto drawing = db::Drawing::read(path_);
    if (!drawing) throw std::runtime_error{drawing.error()};
    session.setDrawing(std::move(*drawing));
    desk.setCanvas(scene_.data(), width, height, texts_);
    deeds_.push_back([] {}); // lets the desk look at the drawing
    work();
}

bool DeskOnTest::doNext() {
    if (deeds_.empty()) return false;
    const auto deed = std::move(deeds_.front());
    deeds_.pop_front();
    deed();
    return true;
}

// The runner comes back when there is nothing left to do, and can be called again.
void DeskOnTest::work() {
    deeds_.push_back([this] { desk.pause(); });
    ed::CommandRunner{session}.run(desk);
}

DeskOnTest& DeskOnTest::then(std::function<void()> deed) {
    deeds_.push_back(std::move(deed));
    return *this;
}

DeskOnTest& DeskOnTest::type(std::string line) {
    return then([this, line = std::move(line)] { desk.type(line); });
}

DeskOnTest& DeskOnTest::escape() {
    return then([this] { desk.cancel(); });
}

DeskOnTest& DeskOnTest::click(double x, double y, bool shift) { return drag(x, y, x, y, shift); }

DeskOnTest& DeskOnTest::drag(double x, double y, double toX, double toY, bool shift) {
    return then([=, this] {
        desk.moveTo(placeOf(x, y));
        desk.press(placeOf(x, y), shift);
        desk.moveTo(placeOf(toX, toY));
        desk.release(placeOf(toX, toY), shift);
    });
}

DeskOnTest& DeskOnTest::move(double x, double y) {
    return then([=, this] { desk.moveTo(placeOf(x, y)); });
}

std::string DeskOnTest::pickFirst() const {
    std::string handles;
    for (const db::Record* each : session.pickFirst.members())
        handles += (handles.empty() ? "" : " ") + dxf::handleText(each->handle);
    return handles;
}

std::string DeskOnTest::recoveryScript() const {
    std::string text = contentOf(desktop::RecoveryLog::pathFor(path_));
    while (text.starts_with(';') || text.starts_with("SETVAR ")) text.erase(0, text.find('\n') + 1);
    return text;
}

void DeskOnTest::resize(int newWidth, int newHeight) {
    scene_.assign(static_cast<std::size_t>(std::max(newWidth, 1)) *
                      static_cast<std::size_t>(std::max(newHeight, 1)),
                  0);
    desk.setCanvas(scene_.data(), newWidth, newHeight, texts_);
}

std::vector<draw::Colour> DeskOnTest::picture() {
    std::vector<draw::Colour> frame(scene_.size());
    desk.compose(frame.data());
    return frame;
}

} // namespace qx::tests
