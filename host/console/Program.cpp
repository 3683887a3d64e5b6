#include "console/Program.h"

#include "console/ConsoleSource.h"
#include "console/terminalLine.h"
#include "draw/Svg.h"
#include "ed/ScriptSource.h"
#include "os/encoding.h"
#include "os/files.h"
#include "os/terminal.h"
#include "rx/ModuleLoader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qx::console {
namespace {

using os::StandardStream;

void print(std::FILE* stream, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

void printError(const std::string& sentence) {
    print(stderr, "qxhost: " + os::withoutControls(sentence, "\n") + '\n');
}

Exit failed(Exit exit, const std::string& sentence) {
    printError(sentence);
    return exit;
}

bool contains(const std::vector<std::string>& paths, const std::string& path) {
    return std::ranges::any_of(paths, [&](const std::string& each) { return os::isSameFile(each, path); });
}

std::string standardInput() {
    std::string text;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), stdin))
        text.append(buffer.data(), count);
    return text;
}

// A person waits for each piece; a script's transcript may be written in large ones.
void writeTranscript(std::string_view text) {
    static const bool isPerson = os::isTerminal(StandardStream::output);
    std::fwrite(text.data(), 1, text.size(), stdout);
    if (isPerson) std::fflush(stdout);
}

// The smallest drawing: model space, and layer 0.
constexpr std::string_view emptyDrawing =
    "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1024\n9\n$HANDSEED\n5\n100\n0\nENDSEC\n"
    "0\nSECTION\n2\nTABLES\n"
    "0\nTABLE\n2\nLAYER\n5\n2\n330\n0\n100\nAcDbSymbolTable\n70\n1\n"
    "0\nLAYER\n5\n10\n330\n2\n100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n2\n0\n70\n0\n62\n7\n6\n"
    "Continuous\n0\nENDTAB\n"
    "0\nTABLE\n2\nBLOCK_RECORD\n5\n1\n330\n0\n100\nAcDbSymbolTable\n70\n1\n"
    "0\nBLOCK_RECORD\n5\n1F\n330\n1\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n2\n*Model_Space\n"
    "0\nENDTAB\n0\nENDSEC\n"
    "0\nSECTION\n2\nBLOCKS\n"
    "0\nBLOCK\n5\n20\n330\n1F\n100\nAcDbEntity\n8\n0\n100\nAcDbBlockBegin\n2\n*Model_Space\n70\n0\n10\n0."
    "0\n20\n"
    "0.0\n30\n0.0\n3\n*Model_Space\n1\n\n"
    "0\nENDBLK\n5\n21\n330\n1F\n100\nAcDbEntity\n8\n0\n100\nAcDbBlockEnd\n0\nENDSEC\n"
    "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";

} // namespace

Program::Program(Options options) : options_{std::move(options)}, session_{writeTranscript} {
    if (options_.report) session_.observer = &report_;
    session_.opened = [this](const db::Drawing&) {
        findingsTold_ = 0;
        printFindings();
    };
    session_.commandDone = [this] { printFindings(); };
    if (os::isTerminal(StandardStream::error))
        session_.progress = [this](std::string_view job, std::uint64_t done, std::uint64_t total) {
            progress_.show(job, done, total);
        };
}

// What was noticed, as sentences of the program's own; the report has all of it.
void Program::printFindings() {
    constexpr std::size_t most = 20;
    const db::Drawing* drawing = session_.drawing();
    if (!drawing) return;
    const auto& findings = drawing->findings();
    std::size_t next = std::exchange(findingsTold_, findings.size());
    if (next < findings.size()) progress_.clear();
    for (; next < std::min(findings.size(), most); ++next) {
        const std::string line = findings[next].line > 0 ? ':' + std::to_string(findings[next].line) : "";
        printError("finding " + std::to_string(next + 1) + ": " + drawing->path() + line + ": " +
                   findings[next].sentence);
    }
    if (next < findings.size())
        printError(drawing->path() + ": " + std::to_string(findings.size() - next) +
                   " more findings; --report has them");
}

// A result over an input or over another result would lose that without a word. Only the drawing may be
// replaced by what became of it.
std::string Program::pathUsedTwice() const {
    std::vector<std::string> inputs = options_.modules;
    if (options_.script && *options_.script != "-") inputs.push_back(*options_.script);
    std::vector<std::string> others = inputs;
    if (!options_.drawing.empty()) others.push_back(options_.drawing);
    if (options_.save) {
        if (contains(inputs, *options_.save)) return *options_.save;
        others.push_back(*options_.save);
    }
    for (const auto& written : {options_.svg, options_.report}) {
        if (!written) continue;
        if (contains(others, *written)) return *written;
        others.push_back(*written);
    }
    return {};
}

Exit Program::run() {
    if (const std::string path = pathUsedTwice(); !path.empty())
        return failed(Exit::wrongUsage, path + ": one file can't be two things at once");
    if (options_.save && !mayReplace(*options_.save))
        return failed(Exit::unwritable, *options_.save + ": exists already; --force replaces it");
    for (const auto step :
         {&Program::read, &Program::loadModules, &Program::runCommands, &Program::writeResults}) {
        const Exit exit = (this->*step)();
        progress_.clear();
        printFindings();
        if (exit != Exit::done) return writeReport(exit);
    }
    const bool isShown = std::fflush(stdout) == 0 && !std::ferror(stdout);
    return writeReport(isShown ? Exit::done
                               : failed(Exit::unwritable, "the transcript can't be written to the end"));
}

bool Program::mayReplace(const std::string& path) const { return options_.force || !os::exists(path); }

Exit Program::read() {
    if (options_.script == "-")
        scriptText_ = standardInput();
    else if (options_.script) {
        const auto bytes = os::readFile(*options_.script);
        if (!bytes) return failed(Exit::unreadable, bytes.error());
        scriptText_ = std::string{bytes->view()};
    }
    db::Progress progress;
    if (session_.progress)
        progress = [this](std::uint64_t done, std::uint64_t total) {
            progress_.show("loading", done, total);
        };
    auto drawing = options_.drawing.empty() ? db::Drawing::fromBytes(emptyDrawing, "Drawing1.dxf")
                                            : db::Drawing::read(options_.drawing, progress);
    if (!drawing) return failed(Exit::unreadable, drawing.error());
    session_.setDrawing(std::move(*drawing));
    return Exit::done;
}

// Without the default module the host's own commands still work.
Exit Program::loadModules() {
    for (const std::string& module : options_.modules)
        if (const Outcome outcome = rx::moduleLoader().load(module); !outcome)
            return failed(Exit::wrongUsage, outcome.error());
    if (!options_.modules.empty()) return Exit::done;
    const Outcome outcome = rx::moduleLoader().load(os::programFolder() + "/QX_GroupAlignment.arx");
    if (!outcome) printError(outcome.error());
    return Exit::done;
}

Exit Program::runCommands() {
    ed::CommandRunner runner{session_};
    if (scriptText_) {
        ed::ScriptSource script{std::move(*scriptText_),
                                *options_.script == "-" ? "stdin" : *options_.script};
        if (runner.run(script) == ed::RunEnd::failed)
            return failed(Exit::scriptFailed, session_.line().failure());
        return Exit::done;
    }
    catchInterrupts();
    const bool isTyped = os::isTerminal(StandardStream::input);
    ConsoleSource console{isTyped ? ConsoleSource::From::terminal : ConsoleSource::From::pipe,
                          isTyped && os::isTerminal(StandardStream::output)};
    const ed::RunEnd end = runner.run(console);
    if (!session_.line().transcript.isAtLineStart()) writeTranscript("\n");
    return end == ed::RunEnd::failed ? failed(Exit::scriptFailed, session_.line().failure()) : Exit::done;
}

Exit Program::writeResults() {
    const db::Drawing* drawing = session_.drawing();
    if (!drawing) return Exit::done;
    if (options_.save) {
        if (!mayReplace(*options_.save))
            return failed(Exit::unwritable, *options_.save + ": exists already; --force replaces it");
        db::Progress progress;
        if (session_.progress)
            progress = [this](std::uint64_t done, std::uint64_t total) {
                progress_.show("saving", done, total);
            };
        const Outcome outcome = drawing->save(*options_.save, os::Backup::keep, progress);
        if (!outcome) return failed(Exit::unwritable, outcome.error());
    }
    const Outcome picture = options_.svg ? draw::writeSvg(*drawing, *options_.svg) : Outcome{};
    return picture ? Exit::done : failed(Exit::unwritable, picture.error());
}

Exit Program::writeReport(Exit otherwise) {
    if (!options_.report) return otherwise;
    auto file = os::AtomicFile::create(*options_.report);
    if (!file) return failed(Exit::unwritable, file.error());
    file->write(report_.toJson(session_.drawing()));
    const Outcome outcome = file->commit();
    return outcome ? otherwise : failed(Exit::unwritable, outcome.error());
}

void Program::finish() {
    rx::moduleLoader().setDrawingOpen(false);
    rx::moduleLoader().unloadAll();
    std::fflush(stdout);
    std::fflush(stderr);
}

} // namespace qx::console
