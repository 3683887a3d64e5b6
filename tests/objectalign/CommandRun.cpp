#include "objectalign/CommandRun.h"

#include "objectalign/command.h"
#include "rxregsvc.h"

#include <sstream>

namespace qx::tests {
namespace {
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

/// Runs the command once; what is answered says `answer`, "^C" for Esc.
class Answers final : public ed::InputSource {
public:
    explicit Answers(CommandRun::Answer answer) : answer_{std::move(answer)} {}

    ed::Input next(ed::Ask what) override {
        using Kind = ed::Input::Kind;
        if (what == ed::Ask::command)
            return {.kind = std::exchange(hasBegun_, true) ? Kind::end : Kind::text,
                    .text = "KV_ObjectAlign"};
        const std::string answer = answer_(what);
        const Kind kind = answer == "^C" ? Kind::cancel : answer.empty() ? Kind::enter : Kind::text;
        return {.kind = kind, .text = answer};
    }
    bool isInteractive() const override { return true; }
    std::string name() const override { return "person"; }

private:
    CommandRun::Answer answer_;
    bool hasBegun_ = false;
};
} // namespace

Plan::Plan() {
    const struct {
        char name;
        const char* object;
    } all[] = {
        {'H', "line 0,0 100,0"},
        {'A', "line 10,20 10,30"},
        {'T', "TEXT|10 200|20 40|40 2.5|1 abc|50 30"},
        {'B', "INSERT|2 BLOCK|10 300|20 40|50 90"},
        {'P', "lw 400,20 400,30 420,30"},
        {'Q', "2d 500,20 500,30 520,30"},
        {'R', "3d 600,20 600,30 620,30"},
        {'U', "arc 700,40 r10 a0..180"},
        {'C', "circle 800,40 r10"},
        {'E', "ELLIPSE 900,40 0,20 r0.5"},
        {'N', "POINT 1000,40"},
        {'K', "line 1100,0 1100,10"},
        {'M', "MTEXT|10 1200|20 40|40 2.5|71 7|1 abc|11 0|21 1"},
        {'W', "lw 1300,20 b1 1320,20"},
        {'S', "circle 1500,40 r2"},
        {'X', "line 1600,40,5 1620,40,5"},
        {'Z', "circle 50,-1000 r100"},
    };
    for (const auto& each : all) {
        names += each.name;
        handles[each.name] = draw(content, each.object);
    }
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

CommandRun::CommandRun(const DrawingText& content) : Sheet{content}, before_{poses()} {
    acedRegCmds->addCommand(L"QX_TEST", L"KV_ObjectAlign", L"KV_ObjectAlign", ACRX_CMD_MODAL,
                            objectalign::runCommand);
    editor.session.line().transcript.onMessage = [this](std::string_view text) {
        for (const char each : text) messages += each == '\n' ? '/' : each;
    };
}

bool CommandRun::script(const std::string& inputs) {
    std::string text = "KV_ObjectAlign\n";
    for (const std::string& each : typed(inputs)) text += each + "\n";
    return editor.run(text).end == ed::RunEnd::sourceEnded;
}

void CommandRun::person(const std::vector<std::string>& answers) {
    person([&, at = std::size_t{0}](ed::Ask) mutable { return at < answers.size() ? answers[at++] : "^C"; });
}

void CommandRun::person(Answer answer) {
    Answers source{std::move(answer)};
    ed::CommandRunner{editor.session}.run(source);
}

std::vector<std::string> CommandRun::poses() {
    std::vector<std::string> all;
    for (const char name : plan().names)
        all.push_back(name + (" " + tests::pose(drawing(), plan()[name], 2, 2)));
    return all;
}

std::string CommandRun::changes() {
    std::string text;
    const auto after = poses();
    for (std::size_t i = 0; i < after.size(); ++i)
        if (after[i] != before_[i]) text += (text.empty() ? "" : ", ") + after[i];
    return text;
}

std::string CommandRun::added() {
    std::string colours;
    for (const Handle each : handles())
        if (each > all().back())
            colours += (colours.empty() ? "" : " ") +
                       std::to_string(drawing().liveEntity(drawing().find(each))->colorIndex());
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

} // namespace qx::tests
