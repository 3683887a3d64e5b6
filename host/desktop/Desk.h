// What a drawing window does, without a window: it turns mouse and keys into answers to prompts, keeps the
// view and what is shown in step with the drawing, and composes the picture. Whoever owns a real window hands
// over what a person does, asks for the picture when `needsPaint()` says so, and lets `wait` handle what
// happens while a prompt waits.
#pragma once

#include "desktop/Recovery.h"
#include "draw/ChangeWatch.h"
#include "draw/DisplayList.h"
#include "ed/CommandRunner.h"
#include "ed/Pointing.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::desktop {

class Desk final : public ed::InputSource, public ed::CommandObserver {
public:
    /// `wait` handles what happens next and may take its time; false when the program has to end at once.
    Desk(ed::Session& session, std::function<bool()> wait);
    ~Desk() override;

    // What a person does. Positions are pixels from the top left corner of the picture.

    /// A line of text, as if it had been typed at the command line.
    void type(std::string_view line);
    /// Gives the running command up and starts this one.
    void launch(std::string commandLine);
    /// Gives the running command up, and does this when it has ended.
    void betweenCommands(std::function<void()> deed);
    /// As soon as what was typed so far is done, and no command runs.
    void afterwards(std::function<void()> deed);
    void cancel();
    void moveTo(const AcGePoint2d& place);
    void leave();
    void press(const AcGePoint2d& place, bool shift);
    /// The second corner of a rectangle that was drawn with the button down.
    void release(const AcGePoint2d& place, bool shift);
    /// The button will come up where nobody sees it: what it pressed was a click.
    void letGo() { pressedAt_.reset(); }
    void pan(int right, int down);
    void zoom(double factor, const AcGePoint2d& about);
    void zoomExtents();
    void toggleSnaps();
    bool areSnapsOn() const { return snaps_; }
    void setGround(draw::Ground ground);
    draw::Ground ground() const { return ground_; }
    /// Gives the running command up and ends, if `mayClose` agrees then.
    void close() { isClosing_ = true; }
    std::function<bool()> mayClose;
    /// It was closed, or nothing can be waited for any more.
    bool isOver() const { return isOver_; }
    bool showsDrawing() const { return shown_ != nullptr; }
    /// The source ends the next time that a command is asked for, and may be read on later.
    void pause() { isPausing_ = true; }

    /// A space that is typed behind `typed` ends the answer, instead of being a part of it.
    bool spaceEnds(std::string_view typed) const;
    /// Whether a command runs, as far as a person can see.
    bool isBusy() const { return ask_ != ed::Ask::command; }

    // What it shows.

    /// Memory of width * height pixels for the scene without marks, and who draws text into it. Both stay
    /// until the next call. `dotsPerInch` says how large marks are.
    void setCanvas(draw::Colour* scene, int width, int height, draw::TextPainter& texts,
                   int dotsPerInch = 96);
    bool needsPaint() const { return needsPaint_; }
    /// What was noticed about the drawing since the last time, in the dialogue; by itself after each command.
    void tellFindings();
    /// Brings what is shown in step with the drawing; done by itself whenever a prompt waits.
    void follow();
    /// The whole picture; `frame` is as large as the scene.
    void compose(draw::Colour* frame);
    const draw::View& view() const { return view_; }
    /// Coordinates under the cursor, and what it snaps to.
    std::string status() const;

    /// Notes what the session does.
    Recovery& recovery() { return recovery_; }
    const Recovery& recovery() const { return recovery_; }

    // InputSource

    ed::Input next(ed::Ask ask) override;
    bool isInteractive() const override { return true; }
    std::string name() const override { return "window"; }

    // CommandObserver

    void commandBegins(const db::Drawing* drawing, const std::string& name) override;
    void drawingChanges() override;
    void selected(const ed::RecordSet& set) override;
    void message(std::string_view) override {}
    void refused(const db::Record*, Acad::ErrorStatus) override {}
    void commandEnds(db::Drawing* drawing, ed::CommandEnd end) override;

private:
    struct Shown; ///< of the open drawing
    enum class Stale { nothing, cursor, selection, scene };

    void showDrawing();
    void becameStale(Stale what);
    ed::Pointing::Cursor cursorAt(const AcGePoint2d& place, bool shift) const;
    void click(const AcGePoint2d& place, bool shift);
    void answer(const std::vector<std::string>& texts);
    void takeLine(std::string_view line);
    void forgetAnswers();
    std::vector<db::Record*> markedRecords() const;
    std::size_t pixelCount() const {
        return static_cast<std::size_t>(view_.width()) * static_cast<std::size_t>(view_.height());
    }
    void drawScene();
    void drawSelection();
    void drawCursor(draw::Raster& frame) const;
    void registerZoom();
    void zoomByCommand();

    ed::Session& session_;
    std::function<bool()> wait_;
    std::deque<ed::Input> answers_;
    std::deque<std::string> lines_;           ///< typed behind those, not yet taken apart
    std::deque<std::function<void()>> deeds_; ///< between commands
    std::string lastCommand_;
    bool isOver_ = false, isClosing_ = false, isPausing_ = false;
    ed::Ask ask_ = ed::Ask::command;

    draw::View view_{1, 1};
    draw::Ground ground_ = draw::Ground::dark;
    std::unique_ptr<Shown> shown_;
    draw::Colour* scene_ = nullptr;
    std::vector<draw::Colour> withSelection_; ///< the scene with what is selected; empty: nothing is
    draw::TextPainter* texts_ = nullptr;
    int dotsPerInch_ = 96;
    Stale stale_ = Stale::scene;
    bool needsPaint_ = true;
    std::optional<AcGePoint2d> cursor_;
    std::optional<AcGePoint2d> pressedAt_;
    bool snaps_ = true;
    std::vector<db::Record*> chosen_; ///< by the running command

    Recovery recovery_;
    std::size_t findingsTold_ = 0;
};

} // namespace qx::desktop
