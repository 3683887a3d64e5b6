// A picture in memory to draw into and to look at.
#pragma once

#include <vector>
#include <windows.h>

namespace qx::tests {

class MemoryPicture {
public:
    MemoryPicture(int width, int height) : size_{width * height}, context_{::CreateCompatibleDC(nullptr)} {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        bitmap_ = ::CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
        old_ = ::SelectObject(context_, bitmap_);
    }
    ~MemoryPicture() {
        ::SelectObject(context_, old_);
        ::DeleteObject(bitmap_);
        ::DeleteDC(context_);
    }
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;

    HDC context() const { return context_; }
    /// Row by row from the top, 0x00RRGGBB.
    std::vector<DWORD> pixels() const {
        ::GdiFlush();
        const auto* first = static_cast<const DWORD*>(bits_);
        return {first, first + size_};
    }

private:
    int size_;
    HDC context_;
    void* bits_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ old_ = nullptr;
};

} // namespace qx::tests
