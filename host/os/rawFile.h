// The system's own file calls, one thin function each; files.cpp builds everything else on them.
// Failures are the system's reason in English ("permission denied"), without the file's name.
#pragma once

#include "Result.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace qx::os {

/// An open file; closed with its owner.
class RawFile {
public:
    explicit RawFile(int descriptor) : descriptor_{descriptor} {}
    RawFile(RawFile&& other) noexcept : descriptor_{std::exchange(other.descriptor_, -1)} {}
    RawFile& operator=(RawFile&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~RawFile() { close(); }

    /// Opens what can be read to an end: a file or a pipe.
    static Result<RawFile> openForReading(const std::string& path);
    /// Makes a new file at `path`, with the permissions of `model` where that exists. Fails when `path`
    /// exists.
    static Result<RawFile> createLike(const std::string& path, const std::string& model);

    /// Opens a file to write behind what it holds, and makes it where there is none. Fails while another
    /// program has it open in this way.
    static Result<RawFile> openForAppending(const std::string& path);

    /// Size in bytes as far as the system knows it, else 0.
    std::uint64_t size() const;
    /// Reads what is there, `capacity` bytes at most; 0 at the end.
    Result<std::size_t> read(char* buffer, std::size_t capacity);
    Outcome writeAll(const char* bytes, std::size_t count);
    /// Returns when the bytes are on the disk.
    Outcome flushToDisk();
    void close();

private:
    int descriptor_;
};

/// What stands in the way of replacing `target`; success when it is missing or an ordinary writable file.
Outcome checkReplaceable(const std::string& target);
/// Lets `to` name the content of `from` too (a second name, or a copy where the system knows no such thing).
Outcome linkOrCopy(const std::string& from, const std::string& to);
/// Gives `from` the name `to` in one step, replacing what had it.
Outcome replaceBy(const std::string& from, const std::string& to);
/// Whether anything has this name, a link that leads nowhere included.
bool nameIsTaken(const std::string& path);
/// Makes renames in the folder of `path` survive a power failure, as far as the system can.
void flushFolderOf(const std::string& path);
/// Where the chain of symbolic links that starts at `path` ends; that end may be missing.
Result<std::string> followedLinks(const std::string& path);
/// A number that no other running process has.
unsigned long processNumber();

} // namespace qx::os
