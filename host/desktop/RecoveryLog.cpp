#include "desktop/RecoveryLog.h"

#include <charconv>
#include <cstdint>
#include <string_view>
#include <utility>

namespace qx::desktop {
namespace {

constexpr std::string_view firstLine = "; recovery of ", endOfCommand = "; done\n";

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

} // namespace

std::optional<LeftLog> RecoveryLog::find(const std::string& drawing) {
    if (!os::isFile(pathFor(drawing))) return std::nullopt;
    if (!os::AppendedFile::open(pathFor(drawing))) return std::nullopt;
    const auto bytes = os::readFile(pathFor(drawing));
    if (!bytes || !bytes->view().starts_with(firstLine)) return std::nullopt;
    const std::string_view text = bytes->view();
    const std::size_t end = text.rfind(endOfCommand), begin = text.find('\n');
    if (end == std::string_view::npos || end <= begin) return std::nullopt;
    LeftLog log{.script = std::string{text.substr(begin + 1, end + endOfCommand.size() - begin - 1)}};
    log.commands = countOf(endOfCommand, log.script);
    const auto mark = markOf(drawing);
    log.fits = mark && text.substr(firstLine.size(), begin - firstLine.size()) == *mark;
    return log;
}

Result<std::string> RecoveryLog::putAside(const std::string& drawing) {
    const std::string path = pathFor(drawing);
    std::string aside;
    for (int i = 1; aside.empty() || os::exists(aside); ++i)
        aside = drawing + ".recovery-" + std::to_string(i) + ".scr";
    const Outcome moved = os::moveFile(path, aside);
    return moved ? Result<std::string>{aside} : Result<std::string>::failure(moved.error());
}

// Whole at any moment: a log that is there already stays until the new one takes its place.
Outcome RecoveryLog::begin(const std::string& drawing, const std::string& script) {
    const auto mark = markOf(drawing);
    if (!mark) return Outcome::failure(mark.error());
    const std::string path = pathFor(drawing);
    auto fresh = os::AtomicFile::create(path);
    if (!fresh) return Outcome::failure(fresh.error());
    fresh->write(std::string{firstLine} + *mark + '\n' + script);
    if (Outcome made = fresh->commit(); !made) return made;
    auto file = os::AppendedFile::open(path);
    if (!file) return Outcome::failure(file.error());
    file_.emplace(std::move(*file));
    path_ = path;
    return {};
}

Outcome RecoveryLog::add(const std::string& drawing, const std::string& inputs) {
    const std::string block = inputs + std::string{endOfCommand};
    return file_ ? file_->append(block) : begin(drawing, block);
}

Outcome RecoveryLog::goOnWith(const std::string& drawing, const LeftLog& log) {
    close();
    return begin(drawing, log.script);
}

void RecoveryLog::close() {
    if (!file_) return;
    file_.reset();
    os::removeFile(path_);
    path_.clear();
}

} // namespace qx::desktop
