#include "console/Options.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace qx::console {

const char* const usage =
    R"(usage: qxhost [DRAWING.dxf] [options]
  -s, --script FILE    run a script file ('-' reads standard input)
  -o, --save FILE      write the drawing when the script has ended well
      --svg FILE       write a picture of model space
      --report FILE    write a JSON account of what each command changed
      --module FILE    module to load (default: QX_GroupAlignment.arx beside the program); may be repeated
  -f, --force          allow --save to replace an existing file (the old one is kept as .bak)
      --version        print the version
  -h, --help           print this text
Without a script it is an interactive command line.
exit status: 0 done, 1 wrong usage, 2 drawing or script can't be read, 3 the script failed, 4 can't write
)";

namespace {

struct Option {
    std::string_view longName;
    std::string_view shortName;
    std::function<bool(Options&, std::string)> take; ///< of an option with a value; false: it has one already
    std::function<void(Options&)> set;               ///< of one without
};

bool takeOnce(std::optional<std::string>& place, std::string value) {
    const bool isFirst = !place;
    if (isFirst) place = std::move(value);
    return isFirst;
}

bool addModule(Options& options, std::string value) {
    options.modules.push_back(std::move(value));
    return true;
}

const Option options[] = {
    {"--script", "-s", [](Options& o, std::string v) { return takeOnce(o.script, std::move(v)); }, {}},
    {"--save", "-o", [](Options& o, std::string v) { return takeOnce(o.save, std::move(v)); }, {}},
    {"--svg", "", [](Options& o, std::string v) { return takeOnce(o.svg, std::move(v)); }, {}},
    {"--report", "", [](Options& o, std::string v) { return takeOnce(o.report, std::move(v)); }, {}},
    {"--module", "", addModule, {}},
    {"--force", "-f", {}, [](Options& o) { o.force = true; }},
    {"--version", "", {}, [](Options& o) { o.showVersion = true; }},
    {"--help", "-h", {}, [](Options& o) { o.showHelp = true; }},
};

const Option* find(std::string_view name) {
    const auto found = std::ranges::find_if(options, [&](const Option& option) {
        return option.longName == name || (!name.empty() && option.shortName == name);
    });
    return found == std::end(options) ? nullptr : found;
}

using Arguments = std::vector<std::string>;

// `next` is the argument behind the option; it is stepped over when it is the option's value.
Outcome takeOption(Options& result, const std::string& argument, Arguments::const_iterator& next,
                   Arguments::const_iterator end) {
    const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
    const std::string name = argument.substr(0, equals);
    const Option* option = find(name);
    if (!option) return Outcome::failure("unknown option " + name);
    if (option->set) {
        if (equals != std::string::npos) return Outcome::failure(name + " takes no value");
        option->set(result);
        return {};
    }
    if (equals == std::string::npos && next == end) return Outcome::failure(name + " needs a file name");
    std::string value = equals != std::string::npos ? argument.substr(equals + 1) : *next++;
    if (value.empty()) return Outcome::failure(name + " needs a file name");
    if (!option->take(result, std::move(value)))
        return Outcome::failure(std::string{option->longName} + " is given twice; it takes one file");
    return {};
}

} // namespace

Result<Options> parseOptions(const std::vector<std::string>& arguments) {
    Options result;
    for (auto at = arguments.begin(); at != arguments.end();) {
        const std::string& argument = *at++;
        if (argument.starts_with('-') && argument != "-") {
            if (const Outcome outcome = takeOption(result, argument, at, arguments.end()); !outcome)
                return Result<Options>::failure(outcome.error());
        } else if (argument.empty())
            return Result<Options>::failure("the drawing's file name is empty");
        else if (!result.drawing.empty())
            return Result<Options>::failure("one drawing at a time, please: " + argument);
        else
            result.drawing = argument;
    }
    return result;
}

} // namespace qx::console
