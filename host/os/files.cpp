#include "files.h"

#include "memory.h"
#include "rawFile.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <new>
#include <utility>
#include <vector>

namespace qx::os {
namespace {

constexpr std::size_t readStep = 4u << 20; // how often progress is told
constexpr std::size_t firstCapacity = 1u << 16;
constexpr std::size_t writeBuffer = 1u << 17; // larger spans skip the buffer

std::string cantRead(const std::string& path, const std::string& reason) {
    return "Can't read " + path + ": " + reason + ".";
}

std::filesystem::path pathOf(const std::string& utf8) { return std::u8string{utf8.begin(), utf8.end()}; }

std::string cantWrite(const std::string& path, const std::string& reason) {
    return "Can't write " + path + ": " + reason + ".";
}

/// A buffer that grows like a vector, but never fills what it gains.
class GrowingBuffer {
public:
    ~GrowingBuffer() { freePages(buffer_); }
    GrowingBuffer() = default;
    GrowingBuffer(const GrowingBuffer&) = delete;
    GrowingBuffer& operator=(const GrowingBuffer&) = delete;

    bool reserve(std::size_t capacity) {
        char* larger = nullptr;
        try {
            larger = static_cast<char*>(allocatePages(capacity));
        } catch (const std::bad_alloc&) {
            return false;
        }
        if (used_) std::memcpy(larger, buffer_, used_);
        freePages(std::exchange(buffer_, larger));
        capacity_ = capacity;
        return true;
    }
    bool makeRoom() { return used_ < capacity_ || reserve(capacity_ * 2); }
    char* end() { return buffer_ + used_; }
    std::size_t room() const { return capacity_ - used_; }
    std::size_t used() const { return used_; }
    void grew(std::size_t count) { used_ += count; }
    Bytes release() { return {std::exchange(buffer_, nullptr), used_}; }

private:
    char* buffer_ = nullptr;
    std::size_t used_ = 0;
    std::size_t capacity_ = 0;
};

/// A name beside `target` that nobody else uses now. A file that a killed process of the same number left is
/// somebody else's too.
std::string temporaryName(const std::string& target) {
    static std::atomic<unsigned> counter{0};
    const std::string prefix = target + "." + std::to_string(processNumber()) + "-";
    std::string name;
    do name = prefix + std::to_string(++counter) + ".tmp";
    while (nameIsTaken(name));
    return name;
}

} // namespace

Result<Bytes> readFile(const std::string& path, const Progress& progress) {
    auto file = RawFile::openForReading(path);
    if (!file) return Result<Bytes>::failure(cantRead(path, file.error()));
    const auto total = file->size();
    GrowingBuffer buffer;
    // The spare byte is room for the read that finds the end, so that an honest size never makes the buffer
    // grow.
    if (!buffer.reserve(total ? static_cast<std::size_t>(total) + 1 : firstCapacity))
        return Result<Bytes>::failure(cantRead(path, "there is not enough memory"));
    for (;;) {
        if (!buffer.makeRoom()) return Result<Bytes>::failure(cantRead(path, "there is not enough memory"));
        const auto count = file->read(buffer.end(), std::min(buffer.room(), readStep));
        if (!count) return Result<Bytes>::failure(cantRead(path, count.error()));
        if (*count == 0) return buffer.release();
        buffer.grew(*count);
        if (progress) progress(buffer.used(), total);
    }
}

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(pathOf(path), ignored);
}

bool isSameFile(const std::string& one, const std::string& other) {
    std::error_code ignored;
    return std::filesystem::equivalent(pathOf(one), pathOf(other), ignored) ||
           std::filesystem::weakly_canonical(pathOf(one), ignored) ==
               std::filesystem::weakly_canonical(pathOf(other), ignored);
}

std::optional<FileStamp> stampOf(const std::string& path) {
    if (!isFile(path)) return std::nullopt;
    std::error_code sizeError, timeError;
    const auto size = std::filesystem::file_size(pathOf(path), sizeError);
    const auto time = std::filesystem::last_write_time(pathOf(path), timeError);
    if (sizeError || timeError) return std::nullopt;
    return FileStamp{size, time.time_since_epoch().count()};
}

struct AtomicFile::State {
    State(std::string targetPath, std::string temporaryPath, RawFile opened)
        : target{std::move(targetPath)}, temporary{std::move(temporaryPath)}, file{std::move(opened)} {
        buffer.reserve(writeBuffer);
    }
    ~State() {
        file.close();
        if (!committed) removeFile(temporary);
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    bool remember(const Outcome& outcome) {
        if (!outcome && error.empty()) error = cantWrite(target, outcome.error());
        return error.empty();
    }
    bool flush() {
        const bool ok = remember(file.writeAll(buffer.data(), buffer.size()));
        buffer.clear();
        return ok;
    }
    /// The old file gets a second name before it loses its first, so that it is never missing.
    Outcome keepBackup() const {
        const std::string backup = target + ".bak";
        const std::string second = temporaryName(backup);
        if (Outcome linked = linkOrCopy(target, second); !linked) return linked;
        Outcome renamed = replaceBy(second, backup);
        removeFile(second); // also needed when both names were the same file: then renaming does nothing
        return renamed;
    }

    std::string target;
    std::string temporary;
    RawFile file;
    std::vector<char> buffer;
    std::string error;
    bool committed = false;
};

AtomicFile::AtomicFile(std::unique_ptr<State> state) : state_{std::move(state)} {}
AtomicFile::AtomicFile(AtomicFile&&) noexcept = default;
AtomicFile& AtomicFile::operator=(AtomicFile&&) noexcept = default;
AtomicFile::~AtomicFile() = default;

Result<AtomicFile> AtomicFile::create(const std::string& target) {
    const auto refused = [&](const std::string& reason) {
        return Result<AtomicFile>::failure(cantWrite(target, reason));
    };
    auto end = followedLinks(target);
    if (!end) return refused(end.error());
    if (Outcome free = checkReplaceable(*end); !free) return refused(free.error());
    std::string temporary = temporaryName(*end);
    auto file = RawFile::createLike(temporary, *end);
    if (!file) return refused("no file can be made in its folder (" + file.error() + ")");
    return AtomicFile{std::make_unique<State>(std::move(*end), std::move(temporary), std::move(*file))};
}

bool AtomicFile::write(std::string_view bytes) {
    State& s = *state_;
    if (!s.error.empty()) return false;
    if (s.buffer.size() + bytes.size() > writeBuffer && !s.flush()) return false;
    if (bytes.size() >= writeBuffer) return s.remember(s.file.writeAll(bytes.data(), bytes.size()));
    s.buffer.insert(s.buffer.end(), bytes.begin(), bytes.end());
    return true;
}

Outcome AtomicFile::commit(Backup backup) {
    State& s = *state_;
    if (s.error.empty() && s.flush()) s.remember(s.file.flushToDisk());
    s.file.close();
    // The target may have become a folder or read-only since the beginning.
    if (s.error.empty()) s.remember(checkReplaceable(s.target));
    if (s.error.empty() && backup == Backup::keep && isFile(s.target)) s.remember(s.keepBackup());
    if (s.error.empty()) s.remember(replaceBy(s.temporary, s.target));
    if (!s.error.empty()) return Outcome::failure(s.error);
    s.committed = true;
    flushFolderOf(s.target);
    return {};
}

Outcome moveFile(const std::string& from, const std::string& to) {
    const Outcome moved = replaceBy(from, to);
    return moved ? Outcome{} : Outcome::failure(cantWrite(to, moved.error()));
}

struct AppendedFile::State {
    std::string path;
    RawFile file;
};

AppendedFile::AppendedFile(std::unique_ptr<State> state) : state_{std::move(state)} {}
AppendedFile::AppendedFile(AppendedFile&&) noexcept = default;
AppendedFile& AppendedFile::operator=(AppendedFile&&) noexcept = default;
AppendedFile::~AppendedFile() = default;

Result<AppendedFile> AppendedFile::open(const std::string& path) {
    auto file = RawFile::openForAppending(path);
    if (!file) return Result<AppendedFile>::failure(cantWrite(path, file.error()));
    return AppendedFile{std::unique_ptr<State>{new State{path, std::move(*file)}}};
}

Outcome AppendedFile::append(std::string_view text) {
    Outcome written = state_->file.writeAll(text.data(), text.size());
    if (written) written = state_->file.flushToDisk();
    return written ? Outcome{} : Outcome::failure(cantWrite(state_->path, written.error()));
}

} // namespace qx::os
