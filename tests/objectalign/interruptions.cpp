// Runs that are broken off, that are refused something, or that somebody answers at random: they leave
// nothing behind.
#include "objectalign/CommandRun.h"

#include <iterator>
#include <random>
#include <sstream>

namespace qx::tests {
namespace {

/// A run that goes through everything that one way of aligning asks for and draws.
struct Course {
    const char *name, *inputs;
    std::size_t needed; ///< inputs up to the alignment itself; turning it over comes after
    int drawn;          ///< construction entities
};

const Course courses[] = {
    {"each to a segment", "O S 5 L {A} {M} {C} {P} - {Q@510,30} 9,9 9,9 -", 10, 1},
    {"each on a circle", "O S - P {A} {R} {T} {E} - {Z@50,-900} 50,-900 9,9 -", 11, 1},
    {"polylines on a segment", "P 5 P {P@400,25} {R@600,25} - {Q@510,30} 500,24 9,9 -", 8, 1},
    {"polylines on an arc", "P - P {P@400,25} {P@410,30} - {U@700,50} 700,50 9,9 -", 8, 1},
    {"whole to a segment", "O W 5 L {A} {T} - - 7,0 7,9 0,100 {P@410,30} 9,9 -", 12, 2},
    {"whole on a line", "O W 5 P {A} {T} - {T@0,0} {P@400,25} 0,100 {H@50,0} 50,1 9,9 -", 12, 1},
    {"whole on a polyline's arc", "O W - P {A} - {Q@500,25} 0,100 {W@1310,10} 1302.93,12.93 9,9 -", 10, 3},
    {"groups to a line", "G 5 L {A} {C} - {K@0,0} 0,100 {X@1610,40} 9,9 -", 9, 1},
    {"groups on a circle", "G - P {A} {C} - - 7,0 7,9 0,100 {Z@50,-900} 50,-900 9,9 -", 12, 2},
};

std::vector<std::string> cut(std::vector<std::string> answers, std::size_t count, const char* then) {
    answers.resize(std::min(count, answers.size()));
    answers.push_back(then);
    return answers;
}

std::string changesOf(const std::vector<std::string>& answers) {
    CommandRun run;
    run.person(answers);
    return run.changes();
}

TEST(Interruptions, CutAfterAnyInputItKeepsOnlyWhatWasFinished) {
    for (const Course& course : courses)
        for (const char* then : {"^C", ""}) // after the Enter all that is asked is cancelled
            for (std::size_t k = 0; k <= typed(course.inputs).size(); ++k) {
                SCOPED_TRACE(course.name + (", cut after " + std::to_string(k)) + " by " + then);
                const auto inputs = typed(course.inputs);
                const std::string ended = k < course.needed ? "" : changesOf(cut(inputs, k, ""));
                CommandRun run;
                run.person(cut(inputs, k, then));
                EXPECT_EQ(run.disorder(), "") << run.shown;
                EXPECT_EQ(run.changes(), ended);
                EXPECT_EQ(run.hasTheFilesBytes(), k < course.needed);
                EXPECT_TRUE(run.isUndoneToTheBytes());
            }
}

// ---- refusals

using Action = db::Drawing::Action;

/// A run of the course in which the k-th opening or transformation is refused, or all from there on.
struct RefusedRun : CommandRun {
    RefusedRun(const Course& course, int k, bool andAllAfter = false) {
        drawing().setFault([&, k, andAllAfter](Action action, const db::Record* record) {
            const int request = requests++;
            if (request < k || (request > k && !andAllAfter)) return Acad::eOk;
            // What is drawn is opened for writing by nobody but who erases it.
            if (record && record->handle > all().back() && action == Action::openForWrite)
                kept += (kept.empty() ? "" : " ") +
                        std::to_string(static_cast<const AcDbEntity*>(record->live)->colorIndex());
            return Acad::eWasOpenForWrite;
        });
        person(typed(course.inputs));
        drawing().setFault(nullptr);
    }

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
                EXPECT_EQ(refused.disorder(refused.kept), "") << refused.shown;
                EXPECT_TRUE(refused.isUndoneToTheBytes());
                if (!andAllAfter && !refused.kept.empty()) ++keeping;
            }
        EXPECT_EQ(keeping, course.drawn) << course.name;
    }
}

TEST(Interruptions, WhatIsRefusedHasItsPlace) {
    constexpr Handle modelSpace = DrawingText::modelSpace;
    const struct {
        const char *name, *inputs;
        Handle refused;
        Action action;
        const char* changes;
    } cases[] = {
        {"each: left out", "O S - L {A} {T} - <line> -", plan()['A'], Action::openForRead, "T 200,40<0"},
        {"a group's member: left out", "G - L {A} - <base> <line> -", plan()['T'], Action::transform,
         "A -80,90<0"},
        {"polylines: the end of it", "P - L {P@400,25} {R@600,25} {Q@500,25} - <line> 9,9 -", plan()['R'],
         Action::transform, "P 410,-20<180"},
        {"a polyline is not picked", "P - L {R@600,25} {P@400,25} - <line> -", plan()['R'],
         Action::openForRead, "P 400,20<0"},
        {"a base line that can't be drawn: the end of it", "O W - L {A} - {P@400,25} {K@0,0} 0,100 <line> -",
         modelSpace, Action::openForWrite, ""},
        {"nor an alignment line: no click turns anything", "O W - L {A} - {K@0,0} 0,100 {P@400,25} 9,9 -",
         modelSpace, Action::openForWrite, ""},
        {"a base line is asked for again", "O W - L {A} - {K@0,0} {P@400,25} 0,100 <line> -", plan()['K'],
         Action::openForRead, "A -80,90<0"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        run.drawing().setFault([&](Action action, const db::Record* record) {
            const bool isRefused = record == run.drawing().find(each.refused);
            return isRefused && action == each.action ? Acad::eWasOpenForNotify : Acad::eOk;
        });
        run.person(typed(each.inputs));
        run.drawing().setFault(nullptr);
        EXPECT_EQ(run.changes(), each.changes) << run.shown;
        EXPECT_EQ(run.disorder(), "");
    }
}

// ---- at random

/// Whatever may be an answer about the plan. A curve's point is likely to be asked for after the curve.
class RandomPerson {
public:
    explicit RandomPerson(unsigned seed) : random_{seed} {}

    std::string operator()(ed::Ask what) {
        if (++questions_ > 60 || random_() % 60 == 0) return "^C";
        const auto answers = answersTo.find(what);
        std::istringstream words{answers == answersTo.end() ? "G P O S W L P L" : answers->second};
        const std::vector<std::string> all{std::istream_iterator<std::string>{words}, {}};
        const std::string& one = all[random_() % all.size()];
        if (what == ed::Ask::point && !picked_.empty() && random_() % 3 > 0) return picked_;
        if (what == ed::Ask::entity && one[0] == '{') picked_ = one.substr(3, one.size() - 4);
        return typed(one).at(0);
    }

private:
    inline static const std::map<ed::Ask, const char*> answersTo = {
        {ed::Ask::selection, "ALL {A} {T} {B} {P} {Q} {R} {U} {C} {E} {M} {W} - - 9,9"},
        {ed::Ask::entity, "{H@50,0} {K@1100,5} {P@400,25} {Q@510,30} {R@600,25} {W@1310,10} {U@700,50} "
                          "{Z@50,-900} {X@1610,40} {T@200,40} {M@0,0} - 7777,7777"},
        {ed::Ask::point, "50,0 1100,5 400,24 510,30 1310,10 700,50 50,-900 9,9 0,100 -"},
        {ed::Ask::real, "5 -7 0 -"},
    };
    std::mt19937 random_;
    std::string picked_;
    int questions_ = 0;
};

TEST(Interruptions, NoAnswersAtRandomLeaveAnythingBehind) {
    unsigned changing = 0;
    for (unsigned seed = 1; seed <= 600; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CommandRun run;
        run.person(RandomPerson{seed});
        EXPECT_EQ(run.disorder(), "") << run.shown;
        if (!run.hasTheFilesBytes()) ++changing;
        EXPECT_TRUE(run.isUndoneToTheBytes()) << run.shown;
    }
    EXPECT_GE(changing, 100u) << "answers that come to nothing try nothing";
}
} // namespace
} // namespace qx::tests
