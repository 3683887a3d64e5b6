#include "crashes.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <windows.h>

namespace qx::os {
namespace {

constexpr UINT crashed = 70;
constexpr UINT aborted = 71;

/// "module+offset", which addr2line turns into a source line.
void printPlace(const void* address) {
    HMODULE module = nullptr;
    ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         static_cast<LPCSTR>(address), &module);
    std::array<char, MAX_PATH> name{};
    if (module) ::GetModuleFileNameA(module, name.data(), static_cast<DWORD>(name.size()));
    const auto offset = reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(module);
    std::fprintf(stderr, "    %s+0x%llx\n", name.data(), static_cast<unsigned long long>(offset));
}

[[noreturn]] void end(UINT exitCode) {
    std::array<void*, 48> calls{};
    const USHORT count =
        ::RtlCaptureStackBackTrace(0, static_cast<DWORD>(calls.size()), calls.data(), nullptr);
    for (USHORT i = 0; i < count; ++i) printPlace(calls[i]);
    std::fflush(nullptr);
    // Not exit(): nothing of a broken program may run any more.
    ::TerminateProcess(::GetCurrentProcess(), exitCode);
    for (;;) ::Sleep(INFINITE);
}

LONG WINAPI onException(EXCEPTION_POINTERS* exception) {
    std::fprintf(stderr, "The program crashed (exception %08lx):\n",
                 exception->ExceptionRecord->ExceptionCode);
    printPlace(exception->ExceptionRecord->ExceptionAddress);
    end(crashed);
}

void onAbort(int) {
    std::fputs("The program gave up:\n", stderr);
    end(aborted);
}

} // namespace

void endOnCrash() {
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::SetUnhandledExceptionFilter(onException);
    std::signal(SIGABRT, onAbort);
}

} // namespace qx::os
