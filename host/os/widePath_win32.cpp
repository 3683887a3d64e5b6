#include "widePath_win32.h"

#include "encoding.h"

#include <algorithm>
#include <windows.h>

namespace qx::os {
namespace {

constexpr std::size_t longest = MAX_PATH - 12; // folders leave room for a short file name

std::wstring absolute(const std::wstring& path) {
    std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

} // namespace

std::wstring widePath(const std::string& path) {
    std::wstring wide = toWide(path);
    std::ranges::replace(wide, L'/', L'\\');
    if (wide.size() < longest || wide.starts_with(L"\\\\?\\")) return wide;
    const std::wstring full = absolute(wide);
    if (full.starts_with(L"\\\\.\\")) return full;
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

std::string narrowPath(std::wstring_view path) {
    if (path.starts_with(L"\\\\?\\UNC\\")) return '\\' + toUtf8(path.substr(7));
    if (path.starts_with(L"\\\\?\\")) path.remove_prefix(4);
    return toUtf8(path);
}

bool isDeviceName(const std::wstring& path) { return absolute(path).starts_with(L"\\\\.\\"); }

} // namespace qx::os
