// Runs that are broken off, that are refused something, or that somebody answers at random: they leave
// nothing behind.
#include "objectalign/CommandRun.h"

#include <random>

namespace qx::tests {
namespace {
using drawings::Handle;

/// A run that goes through everything that one way of aligning asks for and draws.
struct Course {
    const char *name, *inputs;
    std::size_t needed; ///< inputs up to the alignment itself; turning it over comes after
    int drawn;          ///< construction entities
};

const Course courses[] = {
    {"each to a segment", "O S 5 L {A} {M} {C} {P} - {Q@510,30} 9,9 9,9 -", 10, 1},
    {"each on a line", "O S 5 P {A} {B} {U} {N} {Q} - {H@50,0} 50,50 50,1 9,9 -", 13, 0},
    {"each on a circle", "O S - P {A} {R} {T} {E} - {Z@50,-900} 50,-900 9,9 -", 11, 1},
    {"polylines to a segment", "P 5 L {P@400,25} {A@0,0} {R@600,25} - {Q@510,30} 9,9 -", 8, 1},
    {"polylines on a segment", "P 5 P {P@400,25} {R@600,25} - {Q@510,30} 500,24 9,9 -", 8, 1},
    {"polylines on an arc", "P - P {P@400,25} {P@410,30} - {U@700,50} 700,50 9,9 -", 8, 1},
    {"whole to a segment", "O W 5 L {A} {T} - - 7,0 7,9 0,100 {P@410,30} 9,9 -", 12, 2},
    {"whole on a line", "O W 5 P {A} {T} - {T@0,0} {P@400,25} 0,100 {H@50,0} 50,1 9,9 -", 12, 1},
    {"whole on a polyline's arc", "O W - P {A} - {Q@500,25} 0,100 {W@1310,10} 1302.93,12.93 9,9 -", 10, 3},
    {"groups to a line", "G 5 L {A} {C} - {K@0,0} 0,100 {X@1610,40} 9,9 -", 9, 1},
    {"groups on a circle", "G - P {A} {C} - - 7,0 7,9 0,100 {Z@50,-900} 50,-900 9,9 -", 12, 2},
};

std::vector<std::string> first(std::size_t count, std::vector<std::string> all, const char* then) {
    all.resize(std::min(count, all.size()));
    all.push_back(then);
    return all;
}

std::string changesOf(const std::vector<std::string>& answers) {
    CommandRun run;
    run.person(answers);
    return run.changes();
}

TEST(Interruptions, CutAfterAnyInputItKeepsOnlyWhatWasFinished) {
    for (const Course& course : courses) {
        const auto inputs = typed(course.inputs);
        for (const char* then : {"^C", ""}) // after the Enter all that is asked is cancelled
            for (std::size_t k = 0; k <= inputs.size(); ++k) {
                SCOPED_TRACE(course.name + (", cut after " + std::to_string(k)) +
                             (*then ? ": Esc" : ": Enter"));
                const std::string ended = k < course.needed ? "" : changesOf(first(k, inputs, ""));
                CommandRun run;
                run.person(first(k, inputs, then));
                EXPECT_EQ(run.disorder(), "") << run.shown;
                EXPECT_EQ(run.changes(), ended);
                EXPECT_EQ(run.hasTheFilesBytes(), k < course.needed);
                EXPECT_TRUE(run.isUndoneToTheBytes());
            }
    }
}

// ---- refusals

using Action = db::Drawing::Action;

/// A run of the course in which the k-th opening or transformation is refused, or all from there on.
struct RefusedRun {
    RefusedRun(const Course& course, int k, bool andAllAfter = false) {
        const db::Drawing& drawing = run.drawing();
        run.drawing().setFault([&, k, andAllAfter](Action action, const db::Record* record) {
            const int request = requests++;
            if (request < k || (request > k && !andAllAfter)) return Acad::eOk;
            // What is drawn is opened for writing by nobody but who erases it.
            if (record && drawing.lineOf(record) == 0 && action == Action::openForWrite)
                kept += (kept.empty() ? "" : " ") + std::to_string(colourOf(record));
            return Acad::eWasOpenForWrite;
        });
        run.person(typed(course.inputs));
        run.drawing().setFault(nullptr);
    }
    static int colourOf(const db::Record* record) {
        return static_cast<const AcDbEntity*>(record->live)->colorIndex();
    }

    CommandRun run;
    int requests = 0;
    std::string kept; ///< colours of what could not be erased
};

TEST(Interruptions, AnyRefusalLeavesNothingOpenAndCanBeUndone) {
    for (const Course& course : courses) {
        const int requests = RefusedRun{course, 1 << 30}.requests;
        int keeping = 0;
        for (const bool andAllAfter : {false, true})
            for (int k = 0; k < requests; ++k) {
                SCOPED_TRACE(std::string{course.name} + ", request " + std::to_string(k));
                RefusedRun refused{course, k, andAllAfter};
                EXPECT_EQ(refused.run.disorder(refused.kept), "") << refused.run.shown;
                EXPECT_TRUE(refused.run.isUndoneToTheBytes());
                if (!andAllAfter && !refused.kept.empty()) ++keeping;
            }
        EXPECT_EQ(keeping, course.drawn) << course.name;
    }
}

TEST(Interruptions, WhatIsRefusedHasItsPlace) {
    const struct {
        const char *name, *inputs;
        char refused;
        Action action;
        const char* changes;
    } cases[] = {
        {"each: left out", "O S - L {A} {T} - <line> -", 'A', Action::openForRead, "T 200,40<0"},
        {"whole: left out", "O W - L {A} {T} - <base> <line> -", 'A', Action::openForWrite, "T -60,-100<300"},
        {"a group's member: left out", "G - L {A} - <base> <line> -", 'T', Action::transform, "A -80,90<0"},
        {"polylines: the end of it", "P - L {P@400,25} {R@600,25} {Q@500,25} - <line> 9,9 -", 'R',
         Action::transform, "P 410,-20<180"},
        {"a polyline is not picked", "P - L {R@600,25} {P@400,25} - <line> -", 'R', Action::openForRead,
         "P 400,20<0"},
        {"a base line is asked for again", "O W - L {A} - {K@0,0} {P@400,25} 0,100 <line> -", 'K',
         Action::openForRead, "A -80,90<0"},
        {"an alignment line", "O S - L {A} - <line> -", 'H', Action::openForRead, ""},
        {"no point is on a curve", "O S - P {A} - {H@50,0} 50,0 50,0 ^", 'H', Action::openForRead, ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        run.drawing().setFault([&](Action action, const db::Record* record) {
            const bool isRefused = record == run.drawing().find(plan()[each.refused]);
            return isRefused && action == each.action ? Acad::eWasOpenForNotify : Acad::eOk;
        });
        run.person(typed(each.inputs));
        run.drawing().setFault(nullptr);
        EXPECT_EQ(run.changes(), each.changes) << run.shown;
        EXPECT_EQ(run.disorder(), "");
    }
}

// ---- at random

/// Makes a drawing, and answers questions with what was drawn in it.
class RandomPerson final : public ed::InputSource {
public:
    explicit RandomPerson(unsigned seed) : random_{seed} {
        for (int i = 3 + below(12); i > 0; --i) {
            points_.push_back(std::to_string(below(400)) + " " + std::to_string(below(400)));
            handles_.push_back(content.add(entity()));
        }
        for (int i = below(4); i > 0; --i)
            content.group("G" + std::to_string(i), {any(handles_), any(handles_), any(handles_)});
    }

    ed::Input next(ed::Ask what) override {
        using Kind = ed::Input::Kind;
        if (what == ed::Ask::command)
            return {.kind = std::exchange(hasBegun_, true) ? Kind::end : Kind::text,
                    .text = "KV_ObjectAlign"};
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
    template <class... Text> std::string oneOf(Text... texts) {
        return any(std::vector<std::string>{texts...});
    }

    static std::string groups(int code, const std::string& point) {
        const std::size_t blank = point.find(' ');
        return tag(code) + point.substr(0, blank) + tag(code + 10) + point.substr(blank + 1);
    }
    static std::string tag(int code) { return "|" + std::to_string(code) + " "; }
    /// At the last of the points.
    std::string entity() {
        const std::string at = groups(10, points_.back()), other = any(points_);
        const std::string line =
            groups(11, std::to_string(below(400)) + " 7") + "|30 " + std::to_string(below(2));
        return oneOf("CIRCLE|40 2" + at, "ARC|40 2.5|51 77|50 " + std::to_string(below(360)) + at,
                     "TEXT|40 9|1 abc|50 " + std::to_string(below(360)) + at, "ELLIPSE|11 5|21 3|40 0.5" + at,
                     "LWPOLYLINE|90 3|70 1" + at + groups(10, other) + "|10 50|20 7" + oneOf("", "|42 0.5"),
                     "LINE" + at + line, "LINE" + at + line, "LINE|8 LOCKED" + at + line);
    }

    std::string named() { return "(handent \"" + drawings::hex(any(handles_)) + "\")"; }
    /// Something at a point of it, which is likely to be asked for next.
    std::string pick() {
        const auto which = static_cast<std::size_t>(below(static_cast<int>(handles_.size())));
        picked_ = points_[which];
        return "(list (handent \"" + drawings::hex(handles_[which]) + "\") (list " + picked_ + " 0))";
    }
    static std::string typedPoint(std::string point) {
        point[point.find(' ')] = ',';
        return point;
    }
    std::string answerTo(ed::Ask what) {
        switch (what) {
        case ed::Ask::selection:
            return oneOf("ALL", named(), named(), std::string{}, typedPoint(any(points_)));
        case ed::Ask::entity:
            return below(5) ? pick() : oneOf(std::string{}, typedPoint(any(points_)));
        case ed::Ask::point:
            return below(12) ? typedPoint(below(3) && !picked_.empty() ? picked_ : any(points_)) : "";
        case ed::Ask::real:
            return oneOf(std::to_string(below(40) - 10), std::string{});
        default:
            return oneOf("G", "P", "O", "S", "W", "L", "P", "L");
        }
    }

    std::mt19937 random_;
    std::vector<Handle> handles_;
    std::vector<std::string> points_;
    std::string picked_;
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
        EXPECT_EQ(run.disorder(), "") << run.shown;
        EXPECT_EQ(livingHandles(run.drawing()), before) << run.shown;
        if (!run.hasTheFilesBytes()) ++changing;
        EXPECT_TRUE(run.isUndoneToTheBytes()) << run.shown;
    }
    EXPECT_GE(changing, runs / 6) << "answers that come to nothing try nothing";
}
} // namespace
} // namespace qx::tests
