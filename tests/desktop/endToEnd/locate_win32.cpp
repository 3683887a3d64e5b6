// Tells whoever moves the mouse where things of a running drawing window are, and what it says.
//   locate canvas DRAWING X Y     pixel with that point of the drawing, while all of it is shown
//   locate button ID              middle of a toolbar button, by its command
//   locate control ID             middle of a control of the open dialog
//   locate caption|prompt|dialog  text of the window, of the question that waits, of the open dialog
// Ends with 1 when there is no such thing now.
#include "draw/DisplayList.h"
#include "os/encoding.h"
#include "os/terminal.h"

#include <windows.h>
// In this order.
#include <commctrl.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace qx;

HWND mainWindow() { return ::FindWindowW(L"QxDesk", nullptr); }

HWND openDialog() {
    HWND dialog = nullptr;
    while ((dialog = ::FindWindowExW(nullptr, dialog, L"#32770", nullptr)))
        if (::IsWindowVisible(dialog)) return dialog;
    return nullptr;
}

std::string textOf(HWND window) {
    wchar_t text[1024] = {};
    ::SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return os::toUtf8(text);
}

std::optional<POINT> middleOf(HWND window) {
    RECT place{};
    if (!window || !::GetWindowRect(window, &place)) return std::nullopt;
    return POINT{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

/// The other process fills in its own memory.
std::optional<POINT> middleOfButton(int command) {
    const HWND bar = ::FindWindowExW(mainWindow(), nullptr, TOOLBARCLASSNAMEW, nullptr);
    DWORD id = 0;
    if (!bar || !::GetWindowThreadProcessId(bar, &id)) return std::nullopt;
    const HANDLE process = ::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ, FALSE, id);
    void* memory = ::VirtualAllocEx(process, nullptr, sizeof(RECT), MEM_COMMIT, PAGE_READWRITE);
    RECT place{};
    const bool isFound =
        ::SendMessageW(bar, TB_GETRECT, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(memory)) &&
        ::ReadProcessMemory(process, memory, &place, sizeof place, nullptr);
    ::VirtualFreeEx(process, memory, 0, MEM_RELEASE);
    ::CloseHandle(process);
    if (!isFound) return std::nullopt;
    ::MapWindowPoints(bar, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return POINT{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

std::optional<POINT> onCanvas(const std::string& path, double x, double y) {
    const HWND canvas = ::FindWindowExW(mainWindow(), nullptr, L"QxCanvas", nullptr);
    const auto drawing = db::Drawing::read(path);
    RECT area{};
    if (!drawing || !canvas || !::GetClientRect(canvas, &area)) return std::nullopt;
    draw::View view{static_cast<int>(area.right), static_cast<int>(area.bottom)};
    view.fit(draw::DisplayList{**drawing}.extents());
    const AcGePoint2d pixel = view.toScreen({x, y, 0});
    POINT place{std::lround(pixel.x), std::lround(pixel.y)};
    ::ClientToScreen(canvas, &place);
    return place;
}

int tell(const std::optional<POINT>& place) {
    if (place) std::printf("%ld %ld\n", place->x, place->y);
    return place ? 0 : 1;
}

int tell(HWND window) {
    if (window) std::printf("%s\n", textOf(window).c_str());
    return window ? 0 : 1;
}

} // namespace

int main(int count, char** values) {
    os::useUtf8Streams();
    const std::vector<std::string> words = os::programArguments(count, values);
    const std::string what = words.empty() ? "" : words[0];
    if (what == "canvas" && words.size() == 4)
        return tell(onCanvas(words[1], std::atof(words[2].c_str()), std::atof(words[3].c_str())));
    if (what == "button" && words.size() == 2) return tell(middleOfButton(std::atoi(words[1].c_str())));
    if (what == "control" && words.size() == 2)
        return tell(
            middleOf(openDialog() ? ::GetDlgItem(openDialog(), std::atoi(words[1].c_str())) : nullptr));
    if (what == "caption") return tell(mainWindow());
    if (what == "prompt") return tell(::FindWindowExW(mainWindow(), nullptr, L"Static", nullptr));
    if (what == "dialog") return tell(openDialog());
    std::fputs("locate: wrong words\n", stderr);
    return 2;
}
