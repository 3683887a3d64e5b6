// A desk with a person at it: what they do is listed, and each deed is done when the desk has nothing left to
// do.
#pragma once

#include "desktop/Desk.h"
#include "drawings/DrawingText.h"
#include "os/TemporaryFolder.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace qx::tests {

class DeskOnTest {
public:
    static constexpr int width = 400, height = 300;

    /// The drawing is saved as plan.dxf in the folder, and opened.
    DeskOnTest(const TemporaryFolder& folder, const drawings::DrawingText& content);
    /// Opens the plan.dxf that is there.
    explicit DeskOnTest(const TemporaryFolder& folder);

    DeskOnTest& type(std::string line);
    DeskOnTest& escape();
    /// Without dragging, at a place in the drawing.
    DeskOnTest& click(double x, double y, bool shift = false);
    DeskOnTest& drag(double x, double y, double toX, double toY, bool shift = false);
    DeskOnTest& move(double x, double y);
    /// Looks at something meanwhile.
    DeskOnTest& then(std::function<void()> deed);
    /// Lets the person work; the desk stays open.
    void work();

    /// "A1 A2": what is selected between commands.
    std::string pickFirst() const;
    /// The script beside the drawing, without the marks and variables that it begins with; empty without one.
    std::string recoveryScript() const;
    std::vector<draw::Colour> picture();
    /// Sizes below a pixel are given a pixel of memory, as a window does.
    void resize(int width, int height);
    db::Drawing& drawing() { return *session.drawing(); }

    std::string transcript;
    ed::Session session;
    desktop::Desk desk;

private:
    bool doNext();
    AcGePoint2d placeOf(double x, double y) const { return desk.view().toScreen({x, y, 0}); }

    struct NoTexts : draw::TextPainter {
        void paint(const shape::TextRun&, const draw::View&, const draw::PixelRect&, draw::Colour) override {}
    } texts_;
    std::string path_;
    std::vector<draw::Colour> scene_;
    std::deque<std::function<void()>> deeds_;
};

} // namespace qx::tests
