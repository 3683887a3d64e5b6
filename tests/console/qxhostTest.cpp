// Runs the program itself, as a person or another program would.
#include "console/runInFolder.h"
#include "drawings/DrawingText.h"
#include "os/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

const std::string scene =
    drawings::DrawingText{.entities = {"LINE|5 A1|10 0|20 0|11 10|21 5", "CIRCLE|5 A3|10 5|20 4|40 1"}}
        .bytes();

struct Outcome {
    int exit;
    std::string output, errors;
};

class Qxhost : public testing::Test {
protected:
    void SetUp() override { put(folder / "a.dxf", scene); }

    // In the folder, so that sentences have short names in them; without a module, unless one is named.
    Outcome run(const std::string& arguments, const std::string& input = {}) {
        put(folder / "input", input);
        const int exit = runInFolder(folder.path(), "'" QX_QXHOST "' " + arguments);
        return {exit, contentOf(folder / "output"), contentOf(folder / "errors")};
    }
    bool has(const std::string& name) { return std::filesystem::exists(folder / name); }

    TemporaryFolder folder;
};

struct ExitCase {
    const char* name;
    const char* arguments;
    const char* script;
    int exit;
    const char* errors; ///< a part of what is printed there
};
const ExitCase exitCases[] = {
    {"script ends well", "a.dxf -s - -o b.dxf", "ERASE\nL\n\n", 0, ""},
    {"report", "a.dxf -s - --report r.json", "ERASE\nL\n\n", 0, ""},
    {"no drawing: an empty one", "-s - -o b.dxf", "LIST\nALL\n\n", 0, ""},
    {"empty drawing", "''", "", 1, "qxhost: the drawing's file name is empty"},
    {"wrong option", "--frobnicate", "", 1, "unknown option --frobnicate"},
    {"picture over the drawing", "a.dxf -s - --svg ./a.dxf", "", 1,
     "./a.dxf: one file can't be two things at once"},
    {"picture over the script", "a.dxf -s x.scr --svg x.scr", "", 1, "x.scr: one file can't be"},
    {"target over the script", "a.dxf -s x.scr -f -o x.scr", "", 1, "x.scr: one file can't be"},
    {"target over a module", "a.dxf --module m.arx -s - -o m.arx", "", 1, "m.arx: one file can't be"},
    {"picture and report", "a.dxf -s - --svg p --report p", "", 1, "p: one file can't be"},
    {"report and target", "a.dxf -s - --report p.dxf -o p.dxf", "", 1, "p.dxf: one file can't be"},
    {"byte order mark, then a comment", "a.dxf -s - -o b.dxf", "\xEF\xBB\xBF; delete\nERASE\nL\n\n", 0, ""},
    {"form that is never closed", "a.dxf -s - -o b.dxf", "ERASE\n(handent \"A1\"", 3,
     "stdin:2: \"(handent \"A1\"\" selects nothing"},
    {"form for a command that is never closed", "a.dxf -s - -o b.dxf", "(handent \"A1\"\n\n", 3, "stdin:1: "},
    {"module that is not there", "a.dxf --module no.arx -s -", "", 1, "no.arx"},
    {"drawing that is not there", "no.dxf -s -", "", 2, "no.dxf"},
    {"drawing that is none", "input -s -", "no DXF at all\n", 2, "input"},
    {"script that is not there", "a.dxf -s no.scr", "", 2, "no.scr"},
    {"unknown command", "a.dxf -s - -o b.dxf", "ERASE\nL\n\nFOO\n", 3, "stdin:4: unknown command \"FOO\""},
    {"refused answer", "a.dxf -s - -o b.dxf", "SETVAR PICKBOX x\n", 3, "stdin:1: \"x\" is not a number"},
    {"end inside a command", "a.dxf -s - -o b.dxf", "ERASE\nL\n", 3,
     "stdin:2: the script ends inside the command ERASE"},
    {"target folder that is not there", "a.dxf -s - -o no/b.dxf", "", 4, "no/b.dxf"},
    {"target exists", "a.dxf -s - -o a.dxf", "ERASE\nL\n\n", 4, "a.dxf: exists already"},
    {"report that can't be written", "a.dxf -s - --report no/r.json", "", 4, "no/r.json"},
    {"script that is a folder", "a.dxf -s .", "", 2, "Can't read .: it is a folder."},
    {"drawing that is a folder", ". -s -", "", 2, "Can't read .: it is a folder."},
    {"target that is a folder", "a.dxf -s - -f -o .", "ERASE\nL\n\n", 4, "Can't write .: it is a folder."},
    {"module that is text", "a.dxf --module a.dxf -s -", "", 1, "a.dxf"},
    {"module without an entry point", "a.dxf --module '" QX_TEST_MODULES "/bare.arx' -s -", "", 1,
     "is not a module: it does not export acrxEntryPoint."},
    {"module of another host", "a.dxf --module '" QX_TEST_MODULES "/puppetOfOtherHost.arx' -s -", "", 1,
     "was built for another host"},
    {"module that throws when loaded", "a.dxf --module '" QX_TEST_MODULES "/rudeAtOnce.arx' -s -", "", 1,
     "no ink"},
    {"command that throws", "a.dxf --module '" QX_TEST_MODULES "/rude.arx' -s - -o b.dxf",
     "RUDEERASE\nSAVEAS b.dxf\n", 3, "out of ink"},
};

TEST_F(Qxhost, exitStatus) {
    for (const ExitCase& each : exitCases) {
        SCOPED_TRACE(each.name);
        std::filesystem::remove(folder / "b.dxf");
        const Outcome result = run(each.arguments, each.script);
        EXPECT_EQ(result.exit, each.exit) << result.errors;
        EXPECT_NE(result.errors.find(each.errors), std::string::npos) << result.errors;
        const bool wanted = std::string_view{each.arguments}.find("-o b.dxf") != std::string_view::npos;
        EXPECT_EQ(has("b.dxf"), wanted && each.exit == 0);
        EXPECT_EQ(contentOf(folder / "a.dxf"), scene);
    }
}

TEST_F(Qxhost, forceKeepsTheOldFile) {
    EXPECT_EQ(run("a.dxf -s - -o a.dxf --force", "ERASE\nL\n\n").exit, 0);
    EXPECT_EQ(contentOf(folder / "a.dxf").find("CIRCLE"), std::string::npos);
    EXPECT_EQ(contentOf(folder / "a.dxf.bak"), scene);
}

TEST_F(Qxhost, savesUnderTheNewNameAfterSaveas) {
    put(folder / "x.scr", "; a comment\nSAVEAS \"two words.dxf\"\nERASE\nL\n\nSAVE\nSETVAR DWGNAME\n");
    const Outcome result = run("a.dxf -s x.scr");
    EXPECT_EQ(result.exit, 0) << result.errors;
    EXPECT_EQ(contentOf(folder / "a.dxf"), scene);
    EXPECT_EQ(contentOf(folder / "two words.dxf.bak"), scene);
    EXPECT_EQ(contentOf(folder / "two words.dxf").find("CIRCLE"), std::string::npos);
    EXPECT_NE(result.output.find("DWGNAME = \"two words.dxf\""), std::string::npos) << result.output;
    EXPECT_EQ(run("a.dxf -s -", "SAVEAS no/b.dxf\n").exit, 3);
    EXPECT_EQ(run("a.dxf", "SAVEAS no/b.dxf\nERASE L\n\nSAVE\n").exit, 0);
    EXPECT_NE(contentOf(folder / "a.dxf"), scene) << "a failed SAVEAS changes no name";
}

TEST_F(Qxhost, tellsWhatItFoundInADrawing) {
    put(folder / "odd.dxf",
        drawings::DrawingText{.entities = {"LINE|5 A1|10 0|11 1", "LINE|5 A1|10 0|11 2", "WIPEOUT|10 1.0"}}
            .bytes());
    const std::string hatch = "1 object of classes that are only kept (WIPEOUT 1) can't be selected";
    const Outcome result = run("odd.dxf -s - --report r.json", "");
    EXPECT_EQ(result.exit, 0);
    EXPECT_TRUE(result.errors.starts_with("qxhost: finding 1: odd.dxf:")) << result.errors;
    EXPECT_NE(result.errors.find(": the handle A1 is given a second time"), std::string::npos)
        << result.errors;
    EXPECT_NE(result.errors.find("qxhost: finding 2: odd.dxf: " + hatch + '\n'), std::string::npos)
        << result.errors;
    EXPECT_NE(contentOf(folder / "r.json").find(hatch), std::string::npos);
    EXPECT_NE(run("a.dxf -s -", "OPEN odd.dxf\n").errors.find(hatch), std::string::npos);
    EXPECT_EQ(run("a.dxf -s -", "").errors.find("a.dxf"), std::string::npos) << "nothing odd, nothing said";
}

TEST_F(Qxhost, tellsOnceWhatItFindsLater) {
    const auto countOf = [](const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += part.size()) ++count;
        return count;
    };
    put(folder / "odd.dxf",
        drawings::DrawingText{.entities = {"WIPEOUT|10 1.0", "LINE|10 x", "SPLINE|71 3", "INSERT|2 B"},
                              .blocks = {{"B", {"LINE|10 1.0|11 2.0", "INSERT|2 B"}}}}
            .bytes());
    EXPECT_EQ(countOf(run("odd.dxf -s -", "").errors, "finding "), 1);
    const Outcome listed = run("odd.dxf -s -", "LIST\nALL\n\nLIST\nALL\n\n");
    EXPECT_EQ(countOf(listed.output, "3 个对象不能选择：类别不能测量，或者数据不能使用。"), 2)
        << listed.output;
    for (const Outcome& each : {listed, run("odd.dxf -s - --svg p.svg", "")}) {
        EXPECT_EQ(countOf(each.errors, "qxhost: finding "), 4) << each.errors;
        for (const char* part : {"finding 4: odd.dxf:", "is no number", "makes no curve", "contains itself"})
            EXPECT_EQ(countOf(each.errors, part), 1) << part << '\n' << each.errors;
    }
}

// Names may hold what would clear the screen or write over other lines.
TEST_F(Qxhost, givesTheTerminalNoOrdersFromADrawing) {
    put(folder / "odd.dxf",
        drawings::DrawingText{.entities = {"LINE|8 \\U+000Aa\\U+001B[2Jb\x1B[31mc\\U+009Bd\x7F|10 0|11 1",
                                           "INSERT|2 \\U+001B[2JB"},
                              .blocks = {{"\\U+001B[2JB", {"INSERT|2 \\U+001B[2JB", "LINE|11 1.0"}}},
                              .version = "AC1032"}
            .bytes());
    const Outcome result = run("odd.dxf -s - -o b.dxf --report r.json", "LIST\nALL\n\n");
    EXPECT_NE(contentOf(folder / "r.json").find("block \\\"\uFFFD[2JB"), std::string::npos);
    EXPECT_NE(result.output.find("图层 \uFFFDa\uFFFD[2Jb\uFFFD[31mc\uFFFDd\uFFFD"), std::string::npos)
        << result.output;
    EXPECT_NE(result.errors.find("block \"\uFFFD[2JB\" contains itself"), std::string::npos) << result.errors;
    for (const std::string& each : {result.output, result.errors})
        for (const char* control : {"\x1B", "\x7F", "\u009B", "\r"})
            EXPECT_EQ(each.find(control), std::string::npos) << each;
    EXPECT_EQ(contentOf(folder / "b.dxf"), contentOf(folder / "odd.dxf"));
}

TEST_F(Qxhost, talksToWhoeverTypes) {
    const Outcome result =
        run("a.dxf -o b.dxf", "FOO\nSETVAR PICKBOX x\n7\nERASE L\n\nQUIT\nN\nQUIT\nY\nFOO\n");
    EXPECT_EQ(result.exit, 0) << result.errors;
    EXPECT_NE(result.output.find("未知命令“FOO”。\n命令: SETVAR\n"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("需要数值。\n输入 PICKBOX 的新值 <3>: 7\n"), std::string::npos)
        << result.output;
    EXPECT_TRUE(result.output.ends_with("[是(Y)/否(N)] <N>: Y\n")) << result.output;
    EXPECT_EQ(contentOf(folder / "b.dxf").find("CIRCLE"), std::string::npos);
}

TEST_F(Qxhost, pipedInputMayEndBetweenCommandsOnly) {
    const Outcome between = run("a.dxf -o b.dxf", "ERASE\nL\n\n");
    EXPECT_EQ(between.exit, 0) << between.errors;
    EXPECT_TRUE(has("b.dxf"));
    const Outcome inside = run("a.dxf -o c.dxf", "ERASE\nL\n");
    EXPECT_EQ(inside.exit, 3);
    EXPECT_NE(inside.errors.find("qxhost: stdin:2: the script ends inside the command ERASE\n"),
              std::string::npos)
        << inside.errors;
    EXPECT_TRUE(inside.output.ends_with("选择对象: *取消*\n")) << inside.output;
    EXPECT_FALSE(has("c.dxf"));
}

TEST_F(Qxhost, refusesAnAnswerBeyondAllMeasureInOneShortSentence) {
    const std::string letters(std::size_t{4} << 20, 'x'), shown = '"' + std::string(60, 'x') + "\u2026\"";
    const std::string tooLong = shown + " is too long for an answer\n";
    const struct {
        std::string script, errors;
    } cases[] = {
        {letters, "stdin:1: " + tooLong},
        {'"' + letters, "stdin:1: " + tooLong},
        {"\nERASE\n" + letters + "\nFOO", "stdin:3: " + tooLong},
        {"SETVAR PICKBOX\n" + letters, "stdin:2: " + tooLong},
        {"OPEN " + letters + "\n", "stdin:1: " + tooLong},
        {"(" + letters, "stdin:1: \"(" + std::string(59, 'x') + "\u2026\" is too long for an answer\n"},
        {letters.substr(0, 1000), "stdin:1: unknown command " + shown + '\n'},
        {"SETVAR " + std::string(1000, 'X'), "stdin:1: there is no variable " + std::string(60, 'X')},
        {"ERASE " + letters.substr(0, 1000), "stdin:1: " + shown + " selects nothing\n"},
        {"SETVAR PICKBOX " + letters.substr(0, 1000), "stdin:1: " + shown + " is not a number\n"},
        {"\xC3\xA9" + letters.substr(0, 57) + "\xC3\xA9\xC3\xA9",
         "unknown command \"\xC3\xA9" + letters.substr(0, 57) + "\u2026\"\n"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.errors);
        const Outcome result = run("a.dxf -s -", each.script);
        EXPECT_EQ(result.exit, 3);
        EXPECT_NE(result.errors.find(each.errors), std::string::npos) << result.errors.substr(0, 400);
        EXPECT_LT(result.errors.size() + result.output.size(), 2000u);
    }
}

TEST_F(Qxhost, takesTypedLinesOfAnyLength) {
    const auto begin = std::chrono::steady_clock::now();
    const Outcome result = run("a.dxf -o b.dxf", "ERASE L\n\n" + std::string(std::size_t{64} << 20, 'x'));
    EXPECT_EQ(result.exit, 0) << result.errors;
    EXPECT_NE(result.output.find("x\u2026\n输入过长。\n"), std::string::npos);
    EXPECT_LT(result.output.size(), 2000u);
    EXPECT_EQ(contentOf(folder / "b.dxf").find("CIRCLE"), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
}

TEST_F(Qxhost, reportsAlsoWhenTheScriptFails) {
    EXPECT_EQ(run("a.dxf -s - --report r.json", "ERASE\nL\n\nFOO\n").exit, 3);
    const std::string report = contentOf(folder / "r.json");
    EXPECT_NE(report.find("\"handle\": \"A3\""), std::string::npos) << report;
    EXPECT_NE(report.find("\"findings\""), std::string::npos) << report;
}

TEST_F(Qxhost, namesItself) {
    EXPECT_EQ(run("--version").output.substr(0, 7), "qxhost ");
    EXPECT_EQ(run("--help").exit, 0);
}
} // namespace
