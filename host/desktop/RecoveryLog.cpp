#include "desktop/RecoveryLog.h"

#include <charconv>
#include <cstdint>
#include <string_view>
#include <utility>

namespace qx::desktop {
namespace {

constexpr std::string_view firstLine = "; recovery of ", copyLine = "; from a copy of ",
                           endOfCommand = "; done\n";

// FNV-1a. Source: Fowler, Noll, Vo, 1991.
std::uint64_t sumOf(std::string_view bytes) {
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const char each : bytes) sum = (sum ^ static_cast<unsigned char>(each)) * 0x100000001B3;
    return sum;
}

/// What tells this content from any other.
Result<std::string> markOf(const std::string& drawing) {
    const auto bytes = os::readFile(drawing);
    if (!bytes) return Result<std::string>::failure(bytes.error());
    char sum[17] = {};
    std::to_chars(sum, sum + 16, sumOf(bytes->view()), 16);
    return std::to_string(bytes->size()) + " bytes, sum " + sum;
}

std::size_t countOf(std::string_view part, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string_view::npos; at += part.size()) ++count;
    return count;
}

/// What stands behind these words when the text begins with them; the line is then taken off.
std::optional<std::string> takeLine(std::string_view& text, std::string_view words) {
    const std::size_t end = text.find('\n');
    if (!text.starts_with(words) || end == std::string_view::npos) return std::nullopt;
    std::string rest{text.substr(words.size(), end - words.size())};
    text.remove_prefix(end + 1);
    return rest;
}

bool isStill(const std::string& file, const std::string& mark) {
    const auto now = markOf(file);
    return now && *now == mark;
}

Outcome checkIdle(const std::string& log) {
    if (!os::exists(log)) return {};
    const auto file = os::AppendedFile::open(log);
    return file ? Outcome{} : Outcome::failure(file.error());
}

} // namespace

std::optional<LeftLog> RecoveryLog::find(const std::string& drawing) {
    if (!os::isFile(pathFor(drawing))) return std::nullopt;
    if (!os::AppendedFile::open(pathFor(drawing))) return std::nullopt;
    const auto bytes = os::readFile(pathFor(drawing));
    if (!bytes) return std::nullopt;
    std::string_view text = bytes->view();
    const auto ownMark = takeLine(text, firstLine),
               copyMark = ownMark ? takeLine(text, copyLine) : std::nullopt;
    const std::size_t end = text.rfind(endOfCommand);
    const bool isFinished = end != std::string_view::npos;
    if (!ownMark || (!isFinished && !copyMark)) return std::nullopt;
    LeftLog log{.script = isFinished ? std::string{text.substr(0, end + endOfCommand.size())} : std::string{},
                .commands = 0,
                .copy = copyMark ? copyFor(drawing) : std::string{},
                .fits = false};
    log.commands = countOf(endOfCommand, log.script);
    log.fits = isStill(drawing, *ownMark);
    // A copy is newer than a log that does not know it, and has all that was done: the program ended before
    // its log was there.
    if (copyMark && !isStill(log.copy, *copyMark)) {
        log.fits = log.fits && os::isFile(log.copy);
        log.script.clear();
        log.commands = 0;
    }
    return log;
}

Result<std::string> RecoveryLog::putAside(const std::string& drawing) {
    std::string aside;
    for (int i = 1; aside.empty() || os::exists(aside + ".scr") || os::exists(aside + ".dxf"); ++i)
        aside = drawing + ".recovery-" + std::to_string(i);
    Outcome moved = checkIdle(pathFor(drawing));
    for (const auto& [from, to] :
         {std::pair{pathFor(drawing), aside + ".scr"}, std::pair{copyFor(drawing), aside + ".dxf"}})
        if (moved && os::exists(from)) moved = os::moveFile(from, to);
    return moved ? Result<std::string>{aside + ".scr"} : Result<std::string>::failure(moved.error());
}

// What somebody else left may be all that there is of their work.
Outcome RecoveryLog::claim(const std::string& drawing) {
    const bool isFree = !os::exists(pathFor(drawing)) && !os::exists(copyFor(drawing));
    if (drawing_ != drawing && !isFree)
        if (const auto aside = putAside(drawing); !aside) return Outcome::failure(aside.error());
    drawing_ = drawing;
    return {};
}

// Whole at any moment: a log that is there already stays until the new one takes its place.
Outcome RecoveryLog::begin(const std::string& drawing, const std::string& copy, const std::string& script) {
    file_.reset();
    if (Outcome idle = checkIdle(pathFor(drawing)); !idle) return idle;
    drawing_ = drawing;
    std::string head;
    for (const auto& [line, path] : {std::pair{firstLine, drawing}, std::pair{copyLine, copy}}) {
        if (path.empty()) continue;
        const auto mark = markOf(path);
        if (!mark) return Outcome::failure(mark.error());
        head += std::string{line} + *mark + '\n';
    }
    auto fresh = os::AtomicFile::create(pathFor(drawing));
    if (!fresh) return Outcome::failure(fresh.error());
    fresh->write(head + script);
    if (Outcome made = fresh->commit(); !made) return made;
    auto file = os::AppendedFile::open(pathFor(drawing));
    if (!file) return Outcome::failure(file.error());
    file_.emplace(std::move(*file));
    return {};
}

Outcome RecoveryLog::add(const std::string& drawing, const std::string& inputs) {
    const std::string block = inputs + std::string{endOfCommand};
    if (file_) return file_->append(block);
    const Outcome claimed = claim(drawing);
    return claimed ? begin(drawing, {}, block) : claimed;
}

// The copy is there before the log speaks of it.
Outcome RecoveryLog::keepCopy(const db::Drawing& drawing) {
    if (Outcome claimed = claim(drawing.path()); !claimed) return claimed;
    const std::string copy = copyFor(drawing.path());
    const Outcome saved = drawing.save(copy, os::Backup::none);
    return saved ? begin(drawing.path(), copy, {}) : saved;
}

Outcome RecoveryLog::goOnWith(const std::string& drawing, const LeftLog& log) {
    return begin(drawing, log.copy, log.script);
}

void RecoveryLog::close() {
    file_.reset();
    const std::string drawing = std::exchange(drawing_, {});
    if (drawing.empty() || !checkIdle(pathFor(drawing))) return;
    os::removeFile(pathFor(drawing));
    os::removeFile(copyFor(drawing));
}

} // namespace qx::desktop
