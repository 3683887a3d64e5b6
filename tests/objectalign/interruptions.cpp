// Runs that are broken off, that are refused something, or that somebody answers at random: they leave
// nothing behind.
#include "objectalign/CommandRun.h"

#include <random>

namespace qx::tests {
namespace {
using drawings::Handle;

/// A run that goes through everything that one way of aligning asks for and draws.
struct Course {
    const char* name;
    const char* inputs;
    std::size_t needed; ///< inputs up to the alignment itself; turning it over comes after
    int drawn;          ///< construction entities
};

const Course courses[] = {
    {"each to a line", "O S 5 L {A} {T} {E} {U} {N} - {H@50,0} 9,9 9,9 -", 11, 0},
    {"each to a segment", "O S 5 L {A} {M} {C} {P} - {Q@510,30} 9,9 -", 10, 1},
    {"each at a line", "O S 5 P {A} {B} {U} {C} {Q} - {H@50,0} 50,50 50,1 9,9 -", 13, 0},
    {"each at a circle", "O S 5 P {A} {R} {U} {E} - {Z@50,-900} 50,-900 9,9 -", 11, 1},
    {"each at a segment", "O S - P {A} {T} - {P@400,25} 400,24 9,9 -", 9, 1},
    {"each at a polyline's arc", "O S - P {A} {T} - {W@1310,10} 1302.93,12.93 9,9 -", 9, 2},
    {"polylines to a segment", "P 5 L {P@400,25} {A@0,0} {R@600,25} - {Q@510,30} 9,9 -", 8, 1},
    {"polylines at a 2D polyline", "P 5 P {P@400,25} {R@600,25} - {Q@510,30} 500,24 9,9 -", 8, 1},
    {"polylines at an arc", "P - P {P@400,25} {P@410,30} - {U@700,50} 700,50 9,9 -", 8, 1},
    {"whole by two points to a segment", "O W 5 L {A} {T} - - 7,0 7,9 0,100 {P@410,30} 9,9 -", 12, 2},
    {"whole by a segment at a line", "O W 5 P {A} {T} - {T@0,0} {P@400,25} 0,100 {H@50,0} 50,1 9,9 -", 12, 1},
    {"whole by a segment at a polyline's arc",
     "O W - P {A} {T} - {Q@500,25} 0,100 {W@1310,10} 1302.93,12.93 9,9 -", 11, 3},
    {"groups by a line to a line", "G 5 L {A} {C} - {K@0,0} 0,100 {X@1610,40} 9,9 -", 9, 1},
    {"groups by two points at a circle", "G - P {A} {C} - - 7,0 7,9 0,100 {Z@50,-900} 50,-900 9,9 -", 12, 2},
};

/// What holds after every run: "" or what is wrong.
std::string disorder(CommandRun& run, const std::string& mayBeAdded = "") {
    std::string found;
    if (run.drawing().openCount() != 0) found += " objects left open;";
    if (run.editor.session.violations != 0) found += " rolled back;";
    if (run.setsLeft() != 0) found += " selection sets left;";
    if (run.editor.session.line().hasFailed()) found += run.editor.session.line().failure() + ";";
    if (run.added() != mayBeAdded) found += " added: " + run.added();
    return found;
}

std::vector<std::string> first(std::size_t count, const std::vector<std::string>& all, const char* then) {
    std::vector<std::string> some(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
    some.push_back(then);
    return some;
}

TEST(Interruptions, CutAfterAnyInputItKeepsOnlyWhatWasFinished) {
    for (const Course& course : courses) {
        const auto inputs = typed(course.inputs);
        for (const char* then : {"^C", ""}) // a person who presses Esc at last has all further Enters
            for (std::size_t k = 0; k <= inputs.size(); ++k) {
                SCOPED_TRACE(std::string{course.name} + ", cut after " + std::to_string(k) +
                             (*then ? " by Esc" : " by Enter"));
                CommandRun run;
                run.person(first(k, inputs, then));
                EXPECT_EQ(disorder(run), "") << run.shown;
                if (k < course.needed) {
                    EXPECT_TRUE(run.hasTheFilesBytes());
                    continue;
                }
                CommandRun uncut;
                uncut.person(first(std::min(k, inputs.size() - 1), inputs, ""));
                EXPECT_FALSE(run.changes().empty());
                EXPECT_EQ(run.changes(), uncut.changes());
                EXPECT_TRUE(run.isUndoneToTheBytes());
            }
    }
}

TEST(Interruptions, AScriptThatEndsWithinTheCommandChangesNothing) {
    for (const Course& course : courses) {
        CommandRun run;
        std::string inputs = course.inputs;
        inputs.resize(inputs.size() - 2); // without the Enter at the end
        EXPECT_FALSE(run.script("KV_ObjectAlign " + inputs)) << course.name;
        EXPECT_TRUE(run.hasTheFilesBytes()) << course.name;
        EXPECT_EQ(run.setsLeft(), 0u) << course.name;
    }
}

// ---- refusals

using Action = db::Drawing::Action;

/// A run of the course in which the k-th opening or transformation is refused.
struct RefusedRun {
    RefusedRun(const Course& course, int k) {
        db::Drawing& drawing = run.drawing();
        drawing.setFault([&, k](Action action, const db::Record* record) {
            if (requests++ != k) return Acad::eOk;
            const bool isNew = record && drawing.lineOf(record) == 0;
            // What was drawn is opened for writing by nobody but who erases it.
            if (isNew && action == Action::openForWrite)
                kept = std::to_string(static_cast<const AcDbEntity*>(record->live)->colorIndex());
            return Acad::eWasOpenForWrite;
        });
        run.person(course.inputs);
        drawing.setFault(nullptr);
    }

    CommandRun run;
    int requests = 0;
    std::string kept; ///< colour of what could not be erased
};

TEST(Interruptions, AnyRefusalLeavesNothingOpenAndCanBeUndone) {
    for (const Course& course : courses) {
        int keeping = 0;
        const int requests = RefusedRun{course, -1}.requests;
        for (int k = 0; k < requests; ++k) {
            RefusedRun refused{course, k};
            SCOPED_TRACE(std::string{course.name} + ", request " + std::to_string(k));
            EXPECT_EQ(disorder(refused.run, refused.kept), "") << refused.run.shown;
            EXPECT_TRUE(refused.run.isUndoneToTheBytes());
            keeping += !refused.kept.empty();
        }
        EXPECT_GE(requests, 8) << course.name;
        EXPECT_EQ(keeping, course.drawn) << course.name;
    }
}

TEST(Interruptions, ARefusedObjectDoesNotKeepTheOthers) {
    const struct {
        const char* name;
        const char* inputs;
        char refused;
        Action action;
        const char* changes;
    } cases[] = {
        {"not opened, each", "O S - L {A} {T} - {H@50,0} -", 'A', Action::openForRead, "T 200,40<0"},
        {"not turned, each", "O S 5 L {A} {T} - {H@50,0} -", 'A', Action::transform, "T 200,-5<0"},
        {"not turned, whole", "O W - L {A} {T} - {K@0,0} 0,100 {H@50,0} -", 'A', Action::openForWrite,
         "T -60,-100<300"},
        {"a member of a group", "G - L {A} - {K@0,0} 0,100 {H@50,0} -", 'T', Action::transform,
         "A -80,90<0"},
        {"a polyline is no obstacle before it", "P - L {P@400,25} {R@600,25} - {H@50,0} 9,9 -", 'R',
         Action::transform, "P 410,-20<180"},
        {"but stops those behind it", "P - L {R@600,25} {P@400,25} - {H@50,0} 9,9 -", 'R',
         Action::transform, ""},
        {"a polyline that can't be opened is not picked", "P - L {R@600,25} {P@400,25} - {H@50,0} -", 'R',
         Action::openForRead, "P 400,20<0"},
        {"a base line that can't be opened is asked for again",
         "O W - L {A} - {K@0,0} {P@400,25} 0,100 {H@50,0} -", 'K', Action::openForRead, "A -80,90<0"},
        {"the alignment line", "O S - L {A} - {H@50,0} -", 'H', Action::openForRead, ""},
        {"the curve, and so no point is on it", "O S - P {A} - {H@50,0} 50,0 50,0 ^", 'H',
         Action::openForRead, ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        run.drawing().setFault([&](Action action, const db::Record* record) {
            const bool isRefused = record == run.drawing().find(plan()[each.refused]);
            return isRefused && action == each.action ? Acad::eWasOpenForNotify : Acad::eOk;
        });
        run.person(each.inputs);
        run.drawing().setFault(nullptr);
        EXPECT_EQ(run.changes(), each.changes) << run.shown;
        EXPECT_EQ(disorder(run), "");
        EXPECT_TRUE(run.isUndoneToTheBytes());
    }
}

// ---- at random

/// Makes drawings, and answers questions with what was drawn in them.
class RandomPerson final : public ed::InputSource {
public:
    explicit RandomPerson(unsigned seed) : random_{seed} {
        for (int i = 3 + below(12); i > 0; --i) draw();
        for (int i = below(4); i > 0; --i)
            content.group("G" + std::to_string(i), {any(handles_), any(handles_), any(handles_)});
    }

    ed::Input next(ed::Ask what) override {
        using Kind = ed::Input::Kind;
        if (what == ed::Ask::command)
            return {.kind = std::exchange(hasBegun_, true) ? Kind::end : Kind::text, .text = "KV_ObjectAlign"};
        if (++questions_ > 60 || below(60) == 0) return {.kind = Kind::cancel, .text = {}};
        const std::string answer = answerTo(what);
        return {.kind = answer.empty() ? Kind::enter : Kind::text, .text = answer};
    }
    bool isInteractive() const override { return true; }
    std::string name() const override { return "random"; }

    drawings::DrawingText content;

private:
    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    template <class Each> Each any(const std::vector<Each>& all) {
        return all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
    }

    std::string point() { return std::to_string(below(400) - 200) + "," + std::to_string(below(400) - 200); }
    std::string groups(int code, const std::string& point) {
        const std::size_t comma = point.find(',');
        return "|" + std::to_string(code) + " " + point.substr(0, comma) + "|" + std::to_string(code + 10) +
               " " + point.substr(comma + 1);
    }
    std::string entity(const std::string& at) {
        switch (below(10)) {
        case 0:
            return "CIRCLE" + groups(10, at) + "|40 2";
        case 1:
            return "ARC" + groups(10, at) + "|40 2.5|50 " + std::to_string(below(360)) + "|51 77";
        case 2:
            return "TEXT" + groups(10, at) + "|40 9|1 abc|50 " + std::to_string(below(360));
        case 3:
            return "ELLIPSE" + groups(10, at) + "|11 5|21 " + std::to_string(below(9)) + "|40 0.5";
        case 4:
            return "LWPOLYLINE|90 3|70 " + std::to_string(below(2)) + groups(10, at) + groups(10, point()) +
                   (below(2) ? "|42 0.5" : "") + groups(10, point());
        default:
            return "LINE|8 " + std::string{below(8) ? "0" : "LOCKED"} + groups(10, at) + "|30 " +
                   std::to_string(below(2)) + groups(11, point());
        }
    }
    void draw() {
        points_.push_back(point());
        handles_.push_back(content.add(entity(points_.back())));
    }

    std::string named() { return "(handent \"" + drawings::hex(any(handles_)) + "\")"; }
    /// Something at a point of it, which may be asked for next.
    std::string pick() {
        const auto which = static_cast<std::size_t>(below(static_cast<int>(handles_.size())));
        lastPick_ = points_[which];
        std::string at = lastPick_;
        at[at.find(',')] = ' ';
        return "(list (handent \"" + drawings::hex(handles_[which]) + "\") (list " + at + " 0))";
    }
    std::string answerTo(ed::Ask what) {
        switch (what) {
        case ed::Ask::selection:
            return any(std::vector<std::string>{"ALL", named(), named(), "", any(points_)});
        case ed::Ask::entity:
            return below(5) ? pick() : below(2) ? any(points_) : "";
        case ed::Ask::point:
            return below(12) == 0 ? "" : below(3) && !lastPick_.empty() ? lastPick_ : point();
        case ed::Ask::real:
            return below(2) ? std::to_string(below(40) - 10) : "";
        default:
            return any(std::vector<std::string>{"G", "P", "O", "S", "W", "L", "P", "L"});
        }
    }

    std::mt19937 random_;
    std::vector<Handle> handles_;
    std::vector<std::string> points_;
    std::string lastPick_;
    int questions_ = 0;
    bool hasBegun_ = false;
};

std::vector<Handle> livingHandles(const db::Drawing& drawing) {
    std::vector<Handle> all;
    drawing.forEachInModelSpace([&](const db::Record* each) {
        if (!each->has(db::Record::erased)) all.push_back(each->handle);
    });
    return all;
}

TEST(Interruptions, NoAnswersAtRandomLeaveAnythingBehind) {
    constexpr unsigned runs = 600;
    unsigned changing = 0;
    for (unsigned seed = 1; seed <= runs; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomPerson person{seed};
        CommandRun run{person.content.bytes()};
        const auto before = livingHandles(run.drawing());
        ed::CommandRunner{run.editor.session}.run(person);
        EXPECT_EQ(disorder(run), "") << run.shown;
        EXPECT_EQ(livingHandles(run.drawing()), before) << run.shown;
        changing += !run.hasTheFilesBytes();
        EXPECT_TRUE(run.isUndoneToTheBytes()) << run.shown;
    }
    EXPECT_GE(changing, runs / 6) << "answers that come to nothing try nothing";
}
} // namespace
} // namespace qx::tests
