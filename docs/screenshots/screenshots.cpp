// Takes pictures of both dialogs, as they are when they open: screenshots FOLDER. Run by the script `take`
// beside it.
#include "afx/ModalLoop.h"
#include "controls/icons.h"
#include "objectalign/askSettings.h"
#include "positionalign/askSettings.h"
#include "rxmfcapi.h"

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>
#include <windows.h>

HINSTANCE _hdllInstance = nullptr;

namespace {

std::string file;
int picturesTaken = 0;

/// As a Windows bitmap.
void save(HDC context, HBITMAP bitmap, int width, int height) {
    BITMAPINFOHEADER header{sizeof header, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    const auto stride = static_cast<std::size_t>((width * 3 + 3) / 4 * 4);
    std::vector<char> pixels(stride * static_cast<std::size_t>(height));
    ::GetDIBits(context, bitmap, 0, static_cast<UINT>(height), pixels.data(),
                reinterpret_cast<BITMAPINFO*>(&header), DIB_RGB_COLORS);
    BITMAPFILEHEADER start{};
    start.bfType = 0x4D42;
    start.bfOffBits = sizeof start + sizeof header;
    start.bfSize = start.bfOffBits + static_cast<DWORD>(pixels.size());
    std::ofstream out{file, std::ios::binary};
    out.write(reinterpret_cast<const char*>(&start), sizeof start);
    out.write(reinterpret_cast<const char*>(&header), sizeof header);
    out.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
    if (out.flush()) ++picturesTaken;
}

/// With its frame, active.
void photograph(HWND window) {
    ::SetForegroundWindow(window);
    ::SendMessageW(window, WM_NCACTIVATE, TRUE, 0);
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT area{};
    ::GetWindowRect(window, &area);
    const int width = area.right - area.left, height = area.bottom - area.top;
    const HDC from = ::GetWindowDC(window), to = ::CreateCompatibleDC(from);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(from, width, height);
    const HGDIOBJ old = ::SelectObject(to, bitmap);
    ::BitBlt(to, 0, 0, width, height, from, 0, 0, SRCCOPY);
    ::SelectObject(to, old);
    save(from, bitmap, width, height);
    ::DeleteObject(bitmap);
    ::DeleteDC(to);
    ::ReleaseDC(window, from);
}

bool photographAndClose(HWND dialog) {
    photograph(dialog);
    ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    return true;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) return 1;
    const std::string folder = arguments[1];
    _hdllInstance = ::LoadLibraryW(L"QX_GroupAlignment.arx");
    if (!_hdllInstance) {
        std::fputs("The module QX_GroupAlignment.arx can't be loaded.\n", stderr);
        return 2;
    }
    qx::afx::setIdleStep(photographAndClose);
    file = folder + "/position-dialog.bmp";
    qx::positionalign::askSettings();
    file = folder + "/object-dialog.bmp";
    qx::objectalign::askSettings();
    return picturesTaken == 2 ? 0 : 2;
}
