// One session of the editor: the open drawing, the dialogue, the system variables, and what is selected.
// Modules reach it through the functions of the host API; there is one session at a time.
#pragma once

#include "db/Drawing.h"
#include "ed/CommandLine.h"
#include "ed/Keywords.h"
#include "ed/SelectionSets.h"
#include "ed/UserFrame.h"
#include "ed/Variables.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class AcApDocument;

namespace qx::ed {

/// How a command ended, as far as the drawing goes.
enum class CommandEnd {
    unchanged,
    changed, ///< the history has a step that holds what it did
    rolledBack
};

/// Who wants to know what commands do.
class CommandObserver {
public:
    virtual ~CommandObserver() = default;
    virtual void commandBegins(const db::Drawing* drawing, const std::string& name) = 0;
    /// Another drawing, as yet without history, has taken the place of the open one.
    virtual void drawingChanges() = 0;
    /// A set that the running command was given.
    virtual void selected(const RecordSet& set) = 0;
    virtual void message(std::string_view text) = 0;
    /// An opening or transformation of the object was refused.
    virtual void refused(const db::Record* record, Acad::ErrorStatus status) = 0;
    virtual void commandEnds(db::Drawing* drawing, CommandEnd end) = 0;
};

/// What acedInitGet said about the next question.
struct InputRules {
    int bits = 0;
    std::string keywords;
};

class QX_HOST_API Session {
public:
    explicit Session(Transcript::Sink sink);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Null when there is no session.
    static Session* current() { return current_; }

    CommandLine& line() { return line_; }
    Variables& variables() { return variables_; }
    const Variables& variables() const { return variables_; }
    SelectionSets& sets() { return sets_; }

    /// Null when no drawing is open.
    db::Drawing* drawing() const { return drawing_.get(); }
    /// The document that modules see; null without a drawing.
    AcApDocument* document() const { return document_.get(); }
    /// Closes the open drawing, with everything that was selected in it, and opens this one; null for none.
    /// Modules are told of both.
    void setDrawing(std::unique_ptr<db::Drawing> drawing);
    /// The open drawing is the file of this name from now on.
    void renameDrawing(const std::string& path);
    /// Leaves the drawing to the end of the process, which frees it faster.
    void abandonDrawing() { static_cast<void>(drawing_.release()); }

    UserFrame frame() const { return UserFrame{drawing_->ucs()}; }
    /// How far from a point a pick reaches: PICKBOX pixels of the nominal view.
    double pickReach() const;
    /// In user coordinates.
    AcGePoint3d lastPoint;
    /// What the last selection by prompt gave.
    RecordSet previous;
    /// What is selected while no command runs.
    RecordSet pickFirst;

    /// What the running selection prompt has so far; null while none runs.
    const RecordSet* selecting = nullptr;
    bool removing = false; ///< from that set
    /// While a point is asked for: where a line, or a rectangle, to the cursor begins. World coordinates.
    struct RubberBand {
        AcGePoint3d from;
        bool isRectangle = false;
    };
    std::optional<RubberBand> rubberBand;

    /// Flags of the running command; -1 while none runs.
    int commandFlags = -1;
    bool isCommandActive() const { return commandFlags != -1; }
    void setRules(InputRules rules) { rules_ = std::move(rules); }
    /// What was said about the next question; it counts once.
    InputRules takeRules() { return std::exchange(rules_, {}); }
    /// The keyword that was given last.
    std::string lastKeyword;

    bool quitRequested = false;
    /// Commands that broke a rule of the host and were rolled back.
    std::size_t violations = 0;
    /// Selection sets that commands left behind.
    std::size_t reapedSets = 0;

    /// The running command was given this set: tells the observer, and follows the command's progress when
    /// the set is large and somebody looks.
    void noteSelection(const RecordSet& set);
    void endProgress();

    CommandObserver* observer = nullptr;
    /// Told of each drawing that is opened.
    std::function<void(const db::Drawing&)> opened;
    /// Told of the end of each command.
    std::function<void()> commandDone;
    /// Told how far a long job is; null where nobody looks.
    std::function<void(std::string_view job, std::uint64_t done, std::uint64_t total)> progress;

private:
    static Session* current_;

    CommandLine line_;
    Variables variables_;
    SelectionSets sets_;
    std::unique_ptr<db::Drawing> drawing_;
    std::unique_ptr<AcApDocument> document_;
    InputRules rules_;
    bool followsProgress_ = false;
};

} // namespace qx::ed
