// Whole files in, whole files out. Reading gives one buffer without filling it first; writing goes to a
// temporary file beside the target, which takes the target's place only when everything has reached the disk.
// Paths are UTF-8 on every platform. Every failure is one English sentence that names the file.
#pragma once

#include "Result.h"
#include "memory.h"
#include "qxexport.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace qx::os {

/// A file's bytes. One more byte than `size()` may be read and written; it is 0.
class Bytes {
public:
    Bytes() = default;
    /// Takes a buffer from allocatePages() that holds `size` + 1 bytes at least.
    Bytes(char* buffer, std::size_t size) : buffer_{buffer}, size_{size} { buffer[size] = 0; }

    char* data() { return buffer_.get(); }
    const char* data() const { return buffer_.get(); }
    std::size_t size() const { return size_; }
    std::string_view view() const { return {buffer_.get(), size_}; }

private:
    struct Free {
        void operator()(char* buffer) const { freePages(buffer); }
    };
    std::unique_ptr<char, Free> buffer_;
    std::size_t size_ = 0;
};

/// Told every few megabytes how many bytes are done, and how many there seem to be (0 when nobody knows).
using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

/// The whole file. Pipes are read to their end; folders, devices, missing and unreadable files are refused.
QX_HOST_API Result<Bytes> readFile(const std::string& path, const Progress& progress = {});

/// Whether there is an ordinary file (or a link to one).
QX_HOST_API bool isFile(const std::string& path);
/// Whether there is anything.
QX_HOST_API bool exists(const std::string& path);
/// Whether both lead, or would lead, to the same file.
QX_HOST_API bool isSameFile(const std::string& one, const std::string& other);

/// By what a file is found changed by somebody else.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t lastWrite = 0; ///< in ticks of the system's own clock of files
    bool operator==(const FileStamp&) const = default;
};
/// Nothing where there is no ordinary file.
QX_HOST_API std::optional<FileStamp> stampOf(const std::string& path);

/// It may be missing.
QX_HOST_API void removeFile(const std::string& path);
/// Gives a file another name in the same folder, replacing what has that.
QX_HOST_API Outcome moveFile(const std::string& from, const std::string& to);

enum class Backup {
    none,
    keep ///< the old file stays, as `target.bak`; an older backup is replaced
};

/// A file in the making. Nothing is seen at the target before `commit`; without it nothing ever is, and the
/// temporary file goes away.
class QX_HOST_API AtomicFile {
public:
    /// Begins to write `target`. A symbolic link is followed: what it points at will be replaced. Refuses
    /// folders, devices, write-protected files, and folders in which nothing can be made.
    static Result<AtomicFile> create(const std::string& target);

    AtomicFile(AtomicFile&&) noexcept;
    AtomicFile& operator=(AtomicFile&&) noexcept;
    ~AtomicFile();

    /// Appends. False once anything has failed, so that a long job can stop; `commit` then says what it was.
    bool write(std::string_view bytes);

    /// Puts the bytes on the disk and the file in its place, with the permissions of the file that was there.
    /// The target holds the old or the new content at every moment. After a failure it is as it was.
    Outcome commit(Backup backup = Backup::none);

private:
    struct State;
    explicit AtomicFile(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

/// A file that grows, and has on the disk all that was appended. Nobody else can append to it meanwhile.
class QX_HOST_API AppendedFile {
public:
    /// What the file holds stays; it is made where there is none.
    static Result<AppendedFile> open(const std::string& path);

    AppendedFile(AppendedFile&&) noexcept;
    AppendedFile& operator=(AppendedFile&&) noexcept;
    ~AppendedFile();

    /// Comes back when the text is on the disk.
    Outcome append(std::string_view text);

private:
    struct State;
    explicit AppendedFile(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

} // namespace qx::os
