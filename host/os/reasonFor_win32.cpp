#include "reasonFor_win32.h"

#include <algorithm>
#include <array>
#include <windows.h>

namespace qx::os {
namespace {

struct Reason {
    DWORD error;
    const char* text;
};

constexpr std::array reasons = {
    Reason{ERROR_FILE_NOT_FOUND, "it does not exist"},
    Reason{ERROR_PATH_NOT_FOUND, "it does not exist"},
    Reason{ERROR_MOD_NOT_FOUND, "it, or a library that it needs, does not exist"},
    Reason{ERROR_PROC_NOT_FOUND, "a library lacks a function that it needs"},
    Reason{ERROR_BAD_EXE_FORMAT, "it is no library for this system"},
    Reason{ERROR_DLL_INIT_FAILED, "it refused to start"},
    Reason{ERROR_BAD_NETPATH, "it does not exist"},
    Reason{ERROR_BAD_NET_NAME, "it does not exist"},
    Reason{ERROR_INVALID_DRIVE, "its disk does not exist"},
    Reason{ERROR_DIRECTORY, "a part of its path is not a folder"},
    Reason{ERROR_INVALID_NAME, "no file can have this name"},
    Reason{ERROR_BAD_PATHNAME, "no file can have this name"},
    Reason{ERROR_ACCESS_DENIED, "permission denied"},
    Reason{ERROR_SHARING_VIOLATION, "another program has it open"},
    Reason{ERROR_LOCK_VIOLATION, "another program has it open"},
    Reason{ERROR_USER_MAPPED_FILE, "another program has it open"},
    Reason{ERROR_DISK_FULL, "the disk is full"},
    Reason{ERROR_HANDLE_DISK_FULL, "the disk is full"},
    Reason{ERROR_FILE_TOO_LARGE, "the file would be larger than allowed"},
    Reason{ERROR_WRITE_PROTECT, "the disk can only be read"},
    Reason{ERROR_NOT_READY, "its disk is not ready"},
    Reason{ERROR_TOO_MANY_OPEN_FILES, "too many files are open"},
    Reason{ERROR_FILENAME_EXCED_RANGE, "its name is too long"},
    Reason{ERROR_BUFFER_OVERFLOW, "its name is too long"},
    Reason{ERROR_CANT_RESOLVE_FILENAME, "its symbolic links lead in a circle"},
    Reason{ERROR_IO_DEVICE, "the disk reported an error"},
    Reason{ERROR_CRC, "the disk reported an error"},
};

} // namespace

std::string reasonFor(unsigned long error) {
    const auto found = std::ranges::find(reasons, error, &Reason::error);
    return found != reasons.end() ? found->text : "system error " + std::to_string(error);
}

} // namespace qx::os
