#include "objectalign/CommandRun.h"

#include "objectalign/command.h"
#include "rxregsvc.h"
#include "shape/Sink.h"

#include <cmath>
#include <numbers>
#include <sstream>

namespace qx::tests {
namespace {
using drawings::Handle;

std::string rounded(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.12g", std::round(value * 100) / 100 + 0.0);
    return text;
}

/// Where the first thing that is drawn begins and which way it goes; of arcs the centre and the way to where
/// they begin.
class Pose final : public shape::Sink {
public:
    void segment(const shape::Segment& segment) override { note(segment.start, segment.end - segment.start); }
    void arc(const shape::EllipticArc& arc) override { note(arc.centre, arc.u); }
    void text(const shape::TextRun& run) override { note(run.origin, run.along); }

    std::string text_;

private:
    void note(const AcGePoint3d& at, const AcGeVector3d& along) {
        if (!text_.empty()) return;
        const double degrees = std::atan2(along.y, along.x) * 180 / std::numbers::pi;
        const std::string turned = rounded(degrees < -0.005 ? degrees + 360 : degrees);
        text_ = rounded(at.x) + "," + rounded(at.y) + "<" + turned;
    }
};

std::string poseOf(const db::Drawing& drawing, Handle handle) {
    db::Record* record = drawing.find(handle);
    if (record->has(db::Record::erased)) return "gone";
    Pose pose;
    drawing.liveEntity(record)->shape(pose);
    return pose.text_;
}

/// A polyline with vertices of its own, on from the point (x, y).
std::vector<std::string> olderPolyline(double x, const std::string& flags, const std::string& vertexFlags) {
    std::vector<std::string> snippets{"POLYLINE|66 1|70 " + flags};
    for (const AcGePoint3d& each : {AcGePoint3d{x, 20, 0}, {x, 30, 0}, {x + 20, 30, 0}})
        snippets.push_back("VERTEX" + drawings::point(10, each) + "|70 " + vertexFlags);
    snippets.push_back("SEQEND");
    return snippets;
}

const std::map<std::string, std::string> phrases = {
    {"<base>", "{K@1100,5} 0,100"},
    {"<line>", "{H@50,0}"},
    {"<onLine>", "{H@20,0} 50,1"},
    {"<onCircle>", "{Z@50,-900} 50,-899"},
};

std::string typedOne(const std::string& input) {
    if (input == "-") return "";
    if (input == "^") return "^C";
    if (input.front() != '{') return input;
    const std::string entity = "(handent \"" + drawings::hex(plan()[input[1]]) + "\")";
    if (input[2] == '}') return entity;
    std::string point = input.substr(3, input.size() - 4);
    point[point.find(',')] = ' ';
    return "(list " + entity + " (list " + point + " 0))";
}

/// See CommandRun::person().
class Answers final : public ed::InputSource {
public:
    explicit Answers(std::vector<std::string> answers) : answers_{std::move(answers)} {}

    ed::Input next(ed::Ask what) override {
        using Kind = ed::Input::Kind;
        if (what == ed::Ask::command)
            return {.kind = std::exchange(hasBegun_, true) ? Kind::end : Kind::text,
                    .text = "KV_ObjectAlign"};
        const std::string answer = at_ < answers_.size() ? answers_[at_++] : "^C";
        return {.kind = answer == "^C"   ? Kind::cancel
                        : answer.empty() ? Kind::enter
                                         : Kind::text,
                .text = answer};
    }
    bool isInteractive() const override { return true; }
    std::string name() const override { return "person"; }

private:
    std::vector<std::string> answers_;
    std::size_t at_ = 0;
    bool hasBegun_ = false;
};
} // namespace

Plan::Plan() {
    const auto add = [this](char name, const std::vector<std::string>& snippets) {
        names += name;
        handles[name] = content.add(snippets.front());
        for (std::size_t i = 1; i < snippets.size(); ++i) content.add(snippets[i]);
    };
    const std::string angle = "10 400|20 20|10 400|20 30|10 420|20 30";
    add('H', {"LINE|10 0|20 0|11 100|21 0"});
    add('A', {"LINE|10 10|20 20|11 10|21 30"});
    add('T', {"TEXT|10 200|20 40|40 2.5|1 abc|50 30"});
    add('B', {"INSERT|2 BLOCK|10 300|20 40|50 90"});
    add('P', {"LWPOLYLINE|90 3|70 0|" + angle});
    add('Q', olderPolyline(500, "0", "0"));
    add('R', olderPolyline(600, "8", "32"));
    add('U', {"ARC|10 700|20 40|40 10|50 0|51 180"});
    add('C', {"CIRCLE|10 800|20 40|40 10"});
    add('E', {"ELLIPSE|10 900|20 40|11 0|21 20|40 0.5"});
    add('N', {"POINT|10 1000|20 40"});
    add('K', {"LINE|10 1100|20 0|11 1100|21 10"});
    add('M', {"MTEXT|10 1200|20 40|40 2.5|71 7|1 abc|11 0|21 1"});
    add('W', {"LWPOLYLINE|90 2|70 0|10 1300|20 20|42 1|10 1320|20 20"});
    add('S', {"CIRCLE|10 1500|20 40|40 2"});
    add('X', {"LINE|10 1600|20 40|30 5|11 1620|21 40|31 5"});
    add('Z', {"CIRCLE|10 50|20 -1000|40 100"});
    content.blocks = {{"BLOCK", {"LINE|10 0|20 0|11 20|21 0"}}};
    content.group("AT", {handles['A'], handles['T']});
    content.group("CP", {handles['C'], handles['P']});
}

const Plan& plan() {
    static const Plan only;
    return only;
}

std::vector<std::string> typed(const std::string& inputs) {
    std::vector<std::string> all;
    std::istringstream stream{inputs};
    for (std::string each; stream >> each;) {
        const auto phrase = phrases.find(each);
        const auto meant = phrase == phrases.end() ? std::vector{typedOne(each)} : typed(phrase->second);
        all.insert(all.end(), meant.begin(), meant.end());
    }
    return all;
}

CommandRun::CommandRun(const std::string& bytes) : editor{bytes}, bytes_{bytes}, before_{poses()} {
    acedRegCmds->addCommand(L"QX_TEST", L"KV_ObjectAlign", L"KV_ObjectAlign", ACRX_CMD_MODAL,
                            objectalign::runCommand);
    editor.session.observer = this;
}

bool CommandRun::script(const std::string& inputs) {
    std::string text = "KV_ObjectAlign\n";
    for (const std::string& each : typed(inputs)) text += each + "\n";
    return editor.run(text).end == ed::RunEnd::sourceEnded;
}

void CommandRun::person(const std::vector<std::string>& answers) {
    Answers source{answers};
    ed::CommandRunner{editor.session}.run(source);
}

std::vector<std::string> CommandRun::poses() const {
    std::vector<std::string> all;
    const db::Drawing& drawing = *editor.session.drawing();
    for (const char name : plan().names)
        if (drawing.find(plan()[name])) all.push_back(name + (" " + poseOf(drawing, plan()[name])));
    return all;
}

std::string CommandRun::changes() const {
    std::string text;
    const auto after = poses();
    for (std::size_t i = 0; i < after.size(); ++i)
        if (after[i] != before_[i]) text += (text.empty() ? "" : ", ") + after[i];
    return text;
}

std::string CommandRun::added() const {
    std::string colours;
    const db::Drawing& drawing = *editor.session.drawing();
    drawing.forEachInModelSpace([&](db::Record* each) {
        if (drawing.lineOf(each) != 0 || each->has(db::Record::erased)) return;
        colours += (colours.empty() ? "" : " ") + std::to_string(drawing.liveEntity(each)->colorIndex());
    });
    return colours;
}

std::string CommandRun::disorder(const std::string& mayBeAdded) {
    std::string found = editor.session.line().failure();
    if (drawing().openCount() != 0) found += " objects left open";
    if (editor.session.violations != 0) found += " rolled back";
    if (editor.session.reapedSets + editor.session.sets().count() != 0) found += " selection sets left";
    if (added() != mayBeAdded) found += " added: " + added();
    return found;
}

bool CommandRun::isUndoneToTheBytes() {
    if (drawing().history().stepsDone() > 0) drawing().history().undo();
    return hasTheFilesBytes();
}

} // namespace qx::tests
