#include "files.h"
#include "rawFile.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qx::os {
namespace {

// Not strerror: its text follows the locale, and these sentences are English.
std::string reasonFor(int error) {
    switch (error) {
    case ENOENT:
        return "it does not exist";
    case ENOTDIR:
        return "a part of its path is not a folder";
    case EACCES:
    case EPERM:
        return "permission denied";
    case EISDIR:
        return "it is a folder";
    case ENOSPC:
        return "the disk is full";
    case EDQUOT:
        return "the disk quota is used up";
    case EFBIG:
        return "the file would be larger than allowed";
    case EROFS:
        return "the disk can only be read";
    case EMFILE:
    case ENFILE:
        return "too many files are open";
    case ENAMETOOLONG:
        return "its name is too long";
    case ELOOP:
        return "its symbolic links lead in a circle";
    case EWOULDBLOCK:
        return "another program has it open";
    case EIO:
        return "the disk reported an error";
    default:
        return "system error " + std::to_string(error);
    }
}

template <class T = void> auto failed(int error = errno) {
    if constexpr (std::is_void_v<T>)
        return Outcome::failure(reasonFor(error));
    else
        return Result<T>::failure(reasonFor(error));
}

template <class Call> auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

} // namespace

Result<RawFile> RawFile::openForReading(const std::string& path) {
    const int descriptor = uninterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); });
    if (descriptor < 0) return failed<RawFile>();
    RawFile file{descriptor};
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) return failed<RawFile>();
    if (S_ISDIR(status.st_mode)) return failed<RawFile>(EISDIR);
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
        return Result<RawFile>::failure("it is a device");
    return file;
}

Result<RawFile> RawFile::createLike(const std::string& path, const std::string& model) {
    struct stat status {};
    const bool modelled = ::stat(model.c_str(), &status) == 0;
    const mode_t mode = modelled ? status.st_mode & 0777 : 0666;
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0) return failed<RawFile>();
    // The mask of new files must not take rights from a file that had them. The owner is kept where we may.
    const bool sameOwner = modelled && ::fchown(descriptor, status.st_uid, status.st_gid) == 0;
    if (modelled) ::fchmod(descriptor, sameOwner ? status.st_mode & 07777 : mode);
    return RawFile{descriptor};
}

Result<RawFile> RawFile::openForAppending(const std::string& path) {
    const int descriptor =
        uninterrupted([&] { return ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666); });
    if (descriptor < 0) return failed<RawFile>();
    RawFile file{descriptor};
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) return failed<RawFile>();
    return file;
}

std::uint64_t RawFile::size() const {
    struct stat status {};
    if (::fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

Result<std::size_t> RawFile::read(char* buffer, std::size_t capacity) {
    const auto count = uninterrupted([&] { return ::read(descriptor_, buffer, capacity); });
    if (count < 0) return failed<std::size_t>();
    return static_cast<std::size_t>(count);
}

Outcome RawFile::writeAll(const char* bytes, std::size_t count) {
    while (count > 0) {
        const auto written = uninterrupted([&] { return ::write(descriptor_, bytes, count); });
        if (written < 0) return failed();
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return {};
}

Outcome RawFile::flushToDisk() {
    const int result = uninterrupted([&] { return ::fsync(descriptor_); });
    // Some file systems can't; that is no reason to refuse the save.
    if (result != 0 && errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return failed();
    return {};
}

void RawFile::close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
}

Outcome checkReplaceable(const std::string& target) {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) return errno == ENOENT ? Outcome{} : failed();
    if (S_ISDIR(status.st_mode)) return failed(EISDIR);
    if (!S_ISREG(status.st_mode)) return Outcome::failure("it is a device");
    if (::access(target.c_str(), W_OK) != 0) return Outcome::failure("it is write-protected");
    return {};
}

Outcome linkOrCopy(const std::string& from, const std::string& to) {
    if (::link(from.c_str(), to.c_str()) == 0) return {};
    std::error_code error;
    std::filesystem::copy_file(from, to, error);
    return error ? failed(error.value()) : Outcome{};
}

Outcome replaceBy(const std::string& from, const std::string& to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? Outcome{} : failed();
}

bool nameIsTaken(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

bool isFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

void removeFile(const std::string& path) { ::unlink(path.c_str()); }

void flushFolderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

Result<std::string> followedLinks(const std::string& path) {
    namespace fs = std::filesystem;
    fs::path end = path;
    std::error_code error;
    for (int step = 0; step < 40; ++step) {
        if (!fs::is_symlink(end, error)) return end.string();
        end = end.parent_path() / fs::read_symlink(end, error); // an absolute link replaces the whole
        if (error) return failed<std::string>(error.value());
    }
    return failed<std::string>(ELOOP);
}

unsigned long processNumber() { return static_cast<unsigned long>(::getpid()); }

} // namespace qx::os
