#include "files.h"
#include "rawFile.h"
#include "reasonFor_win32.h"
#include "widePath_win32.h"

#include <windows.h>
// In this order.
#include <aclapi.h>
#include <fcntl.h>
#include <io.h>

#include <optional>
#include <vector>

namespace qx::os {
namespace {

constexpr DWORD missing = INVALID_FILE_ATTRIBUTES;
constexpr const char* folderReason = "it is a folder";
constexpr const char* deviceReason = "it is a device";

HANDLE handleOf(int descriptor) { return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)); }

int descriptorOf(HANDLE handle) {
    return ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
}

bool isAbsence(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_DIRECTORY;
}

bool isFolder(DWORD attributes) { return attributes != missing && (attributes & FILE_ATTRIBUTE_DIRECTORY); }

DWORD attributesOf(const std::string& path) { return ::GetFileAttributesW(widePath(path).c_str()); }

/// Whether the path leads through something that is no folder, for which the system has no error of its own.
bool leadsThroughAFile(const std::string& path) {
    for (auto end = path.find_last_of("/\\"); end != std::string::npos && end > 0;
         end = path.find_last_of("/\\", end - 1)) {
        const DWORD attributes = attributesOf(path.substr(0, end));
        if (attributes != missing) return !isFolder(attributes);
    }
    return false;
}

/// The system calls such a name missing, or wrong.
bool hasLongName(const std::string& path) {
    constexpr std::size_t longest = 255;
    const std::wstring wide = widePath(path);
    return wide.size() - (wide.rfind(L'\\') + 1) > longest;
}

std::string reasonAt(const std::string& path, DWORD error) {
    if (error == ERROR_PATH_NOT_FOUND && leadsThroughAFile(path)) return reasonFor(ERROR_DIRECTORY);
    if (error == ERROR_ACCESS_DENIED && isFolder(attributesOf(path))) return folderReason;
    return reasonFor(hasLongName(path) ? DWORD{ERROR_FILENAME_EXCED_RANGE} : error);
}

Outcome failed(const std::string& path, DWORD error = ::GetLastError()) {
    return Outcome::failure(reasonAt(path, error));
}

Outcome outcomeOf(BOOL done, const std::string& path) { return done ? Outcome{} : failed(path); }

/// Who may do what with a file, as the system lists it; empty: there is no list, and everybody may.
std::optional<std::vector<std::byte>> accessTo(const std::string& path) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    std::wstring name = widePath(path);
    if (::GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                &list, nullptr, &descriptor) != ERROR_SUCCESS)
        return std::nullopt;
    const auto* bytes = reinterpret_cast<const std::byte*>(list);
    std::vector<std::byte> access{bytes, bytes + (list ? list->AclSize : 0)};
    ::LocalFree(descriptor);
    return access;
}

/// Taken over from `model`, as far as we may. What is the same already stays as it was inherited; and where
/// files are no Windows files at all, setting even that would make them executable.
void copyAccess(const std::string& model, const std::string& path) {
    auto access = accessTo(model);
    if (!access || access == accessTo(path)) return;
    std::wstring name = widePath(path);
    ::SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                            access->empty() ? nullptr : reinterpret_cast<PACL>(access->data()), nullptr);
}

} // namespace

Result<RawFile> RawFile::openForReading(const std::string& path) {
    const auto refused = [&](const char* reason) { return Result<RawFile>::failure(reason); };
    if (isFolder(attributesOf(path))) return refused(folderReason);
    const HANDLE handle =
        ::CreateFileW(widePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                      OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return Result<RawFile>::failure(path.empty() ? reasonFor(ERROR_FILE_NOT_FOUND)
                                                     : reasonAt(path, ::GetLastError()));
    RawFile file{descriptorOf(handle)};
    return ::GetFileType(handle) == FILE_TYPE_CHAR ? refused(deviceReason) : std::move(file);
}

Result<RawFile> RawFile::createLike(const std::string& path, const std::string& model) {
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    const DWORD attributes = attributesOf(model);
    const HANDLE handle =
        ::CreateFileW(widePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                      attributes == missing ? DWORD{FILE_ATTRIBUTE_NORMAL} : attributes & kept, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return Result<RawFile>::failure(reasonAt(path, ::GetLastError()));
    if (attributes != missing) copyAccess(model, path);
    return RawFile{descriptorOf(handle)};
}

Result<RawFile> RawFile::openForAppending(const std::string& path) {
    const HANDLE handle =
        ::CreateFileW(widePath(path).c_str(), FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ, nullptr,
                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return Result<RawFile>::failure(reasonAt(path, ::GetLastError()));
    return RawFile{descriptorOf(handle)};
}

std::uint64_t RawFile::size() const {
    LARGE_INTEGER size{};
    const HANDLE handle = handleOf(descriptor_);
    if (::GetFileType(handle) != FILE_TYPE_DISK || !::GetFileSizeEx(handle, &size)) return 0;
    return static_cast<std::uint64_t>(size.QuadPart);
}

Result<std::size_t> RawFile::read(char* buffer, std::size_t capacity) {
    DWORD count = 0;
    const auto most = static_cast<DWORD>(std::min<std::size_t>(capacity, 1u << 30));
    if (::ReadFile(handleOf(descriptor_), buffer, most, &count, nullptr)) return std::size_t{count};
    // The other end of a pipe was closed: that is how it ends.
    if (::GetLastError() == ERROR_BROKEN_PIPE) return std::size_t{0};
    return Result<std::size_t>::failure(reasonFor(::GetLastError()));
}

Outcome RawFile::writeAll(const char* bytes, std::size_t count) {
    while (count > 0) {
        DWORD written = 0;
        const auto most = static_cast<DWORD>(std::min<std::size_t>(count, 1u << 30));
        if (!::WriteFile(handleOf(descriptor_), bytes, most, &written, nullptr))
            return Outcome::failure(reasonFor(::GetLastError()));
        bytes += written;
        count -= written;
    }
    return {};
}

Outcome RawFile::flushToDisk() {
    if (::FlushFileBuffers(handleOf(descriptor_))) return {};
    const DWORD error = ::GetLastError();
    // Some file systems can't; that is no reason to refuse the save.
    const bool isUnknown = error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
    return isUnknown ? Outcome{} : Outcome::failure(reasonFor(error));
}

void RawFile::close() {
    if (descriptor_ >= 0) ::_close(descriptor_);
    descriptor_ = -1;
}

Outcome checkReplaceable(const std::string& target) {
    if (isDeviceName(widePath(target))) return Outcome::failure(deviceReason);
    if (hasLongName(target)) return Outcome::failure(reasonFor(ERROR_FILENAME_EXCED_RANGE));
    const DWORD attributes = attributesOf(target);
    if (attributes == missing) return isAbsence(::GetLastError()) ? Outcome{} : failed(target);
    if (isFolder(attributes)) return Outcome::failure(folderReason);
    if (attributes & FILE_ATTRIBUTE_READONLY) return Outcome::failure("it is write-protected");
    return {};
}

Outcome linkOrCopy(const std::string& from, const std::string& to) {
    const std::wstring wideFrom = widePath(from), wideTo = widePath(to);
    if (::CreateHardLinkW(wideTo.c_str(), wideFrom.c_str(), nullptr)) return {};
    return outcomeOf(::CopyFileW(wideFrom.c_str(), wideTo.c_str(), TRUE), from);
}

// Not ReplaceFile: that takes two steps, between which the target is missing.
Outcome replaceBy(const std::string& from, const std::string& to) {
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return outcomeOf(::MoveFileExW(widePath(from).c_str(), widePath(to).c_str(), how), to);
}

bool nameIsTaken(const std::string& path) { return attributesOf(path) != missing; }

bool isFile(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != missing && !isFolder(attributes) && !isDeviceName(widePath(path));
}

void removeFile(const std::string& path) { ::DeleteFileW(widePath(path).c_str()); }

// Renames are written through already.
void flushFolderOf(const std::string&) {}

Result<std::string> followedLinks(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    if (attributes == missing || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) return path;
    const HANDLE handle =
        ::CreateFileW(widePath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        return Result<std::string>::failure(isAbsence(error) ? "its symbolic link leads nowhere"
                                                             : reasonFor(error));
    }
    std::wstring end(32768, L'\0');
    end.resize(::GetFinalPathNameByHandleW(handle, end.data(), static_cast<DWORD>(end.size()), 0));
    ::CloseHandle(handle);
    return end.empty() ? path : narrowPath(end);
}

unsigned long processNumber() { return ::GetCurrentProcessId(); }

} // namespace qx::os
