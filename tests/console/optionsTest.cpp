#include "console/Options.h"

#include <gtest/gtest.h>

namespace {
using qx::console::Options;
using qx::console::parseOptions;

std::string textOf(const Options& o) {
    std::string text = o.drawing;
    if (o.script) text += " s=" + *o.script;
    if (o.save) text += " o=" + *o.save;
    if (o.svg) text += " svg=" + *o.svg;
    if (o.report) text += " report=" + *o.report;
    for (const std::string& module : o.modules) text += " module=" + module;
    return text + (o.force ? " force" : "") + (o.showHelp ? " help" : "") + (o.showVersion ? " version" : "");
}

struct OptionCase {
    const char* name;
    std::vector<std::string> arguments;
    const char* result; ///< or the error, after a '!'
};
const OptionCase optionCases[] = {
    {"none", {}, ""},
    {"drawing", {"a.dxf"}, "a.dxf"},
    {"short and long", {"-s", "x.scr", "a.dxf", "--save", "b.dxf", "-f"}, "a.dxf s=x.scr o=b.dxf force"},
    {"with an equals sign", {"--svg=p.svg", "--report=r=1.json"}, " svg=p.svg report=r=1.json"},
    {"script from standard input", {"-s", "-"}, " s=-"},
    {"several modules", {"--module", "a.arx", "--module", "b.arx"}, " module=a.arx module=b.arx"},
    {"help and version", {"-h", "--version"}, " help version"},
    {"unknown option", {"--foo"}, "!unknown option --foo"},
    {"value missing", {"a.dxf", "-s"}, "!-s needs a file name"},
    {"empty value", {"--save="}, "!--save needs a file name"},
    {"value too much", {"--force=yes"}, "!--force takes no value"},
    {"empty drawing", {""}, "!the drawing's file name is empty"},
    {"script twice", {"-s", "a", "--script", "a"}, "!--script is given twice; it takes one file"},
    {"target twice", {"--save=b.dxf", "-o", "c.dxf"}, "!--save is given twice; it takes one file"},
    {"picture twice", {"--svg", "a", "--svg", "b"}, "!--svg is given twice; it takes one file"},
    {"report twice", {"--report", "a", "--report=b"}, "!--report is given twice; it takes one file"},
    {"two drawings", {"a.dxf", "b.dxf"}, "!one drawing at a time, please: b.dxf"},
};

TEST(Options, areReadFromTheArguments) {
    for (const OptionCase& each : optionCases) {
        const auto options = parseOptions(each.arguments);
        EXPECT_EQ(options ? textOf(*options) : '!' + options.error(), each.result) << each.name;
    }
}
} // namespace
