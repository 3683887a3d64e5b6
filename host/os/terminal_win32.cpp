#include "terminal.h"

#include "encoding.h"
#include "widePath_win32.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <windows.h>
// In this order.
#include <shellapi.h>

namespace qx::os {
namespace {

constexpr std::array streamHandles = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};

UINT oldCodePage = 0;

// The console belongs to the shell too, which goes on after us.
void restoreCodePage() { ::SetConsoleOutputCP(oldCodePage); }

/// Progress is shown by the control sequences that other systems know too.
void showControlSequences(StandardStream stream) {
    const HANDLE console = ::GetStdHandle(streamHandles[static_cast<std::size_t>(stream)]);
    DWORD mode = 0;
    if (::GetConsoleMode(console, &mode))
        ::SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

} // namespace

bool isTerminal(StandardStream stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(::GetStdHandle(streamHandles[static_cast<std::size_t>(stream)]), &mode) != 0;
}

std::string programFolder() {
    std::wstring path(32768, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const auto end = path.rfind(L'\\');
    return end == std::wstring::npos ? "." : narrowPath(std::wstring_view{path}.substr(0, end));
}

// What main() was given has passed through the code page of the day.
std::vector<std::string> programArguments(int, char**) {
    int count = 0;
    wchar_t** values = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(toUtf8(std::wstring_view{values[i]}));
    ::LocalFree(values);
    return arguments;
}

void useUtf8Streams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) ::_setmode(::_fileno(stream), _O_BINARY);
    showControlSequences(StandardStream::output);
    showControlSequences(StandardStream::error);
    oldCodePage = ::GetConsoleOutputCP();
    if (oldCodePage == 0 || !::SetConsoleOutputCP(CP_UTF8)) return;
    std::atexit(restoreCodePage);
}

void reportWriteErrors() {} // they are reported

} // namespace qx::os
