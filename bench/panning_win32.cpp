// How long the drawing window takes for one step of panning: from the mouse message to the pixels on the
// screen.
//   panning DRAWING.dxf [FRAMES]
#include "desktop/Canvas_win32.h"
#include "os/terminal.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace qx;
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// A window as large as a usual screen leaves for the drawing.
HWND frame() {
    constexpr int width = 1600, height = 900;
    return ::CreateWindowExW(0, L"STATIC", L"panning", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, width,
                             height, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
}

/// The cursor goes around in a circle, a dozen pixels at a time.
POINT placeOf(int step) {
    constexpr int around = 64, radius = 120;
    const double angle = step * 6.283185307179586 / around;
    return {800 + std::lround(radius * std::cos(angle)), 450 + std::lround(radius * std::sin(angle))};
}

std::vector<double> panned(const desktop::Canvas& canvas, int frames) {
    std::vector<double> times;
    const auto at = [](int step) { return MAKELPARAM(placeOf(step).x, placeOf(step).y); };
    ::SendMessageW(canvas.window(), WM_MBUTTONDOWN, MK_MBUTTON, at(0));
    for (int step = 1; step <= frames; ++step) {
        const auto begin = Clock::now();
        ::SendMessageW(canvas.window(), WM_MOUSEMOVE, MK_MBUTTON, at(step));
        ::UpdateWindow(canvas.window());
        times.push_back(millisecondsSince(begin));
    }
    ::SendMessageW(canvas.window(), WM_MBUTTONUP, 0, at(frames));
    std::ranges::sort(times);
    return times;
}

} // namespace

int main(int count, char** values) {
    const std::vector<std::string> arguments = os::programArguments(count, values);
    if (arguments.empty() || arguments.size() > 2)
        return std::fputs("usage: panning DRAWING.dxf [FRAMES]\n", stderr), 1;
    auto drawing = db::Drawing::read(arguments[0]);
    if (!drawing) return std::fprintf(stderr, "panning: %s\n", drawing.error().c_str()), 2;
    ed::Session session{[](std::string_view) {}};
    desktop::Desk desk{session, [] { return false; }};
    session.setDrawing(std::move(*drawing));
    const auto begin = Clock::now();
    desk.follow();
    desktop::Canvas canvas{frame(), desk};
    canvas.place({0, 0, 1600, 900});
    ::UpdateWindow(canvas.window());
    std::printf("first picture: %.1f ms\n", millisecondsSince(begin));
    const int frames = arguments.size() > 1 ? std::atoi(arguments[1].c_str()) : 200;
    for (const double closer : {1.0, 8.0}) { // all of it, and a part
        desk.zoom(closer, {800, 450});
        canvas.update();
        const auto whole = Clock::now();
        ::UpdateWindow(canvas.window());
        const double redrawn = millisecondsSince(whole);
        const auto times = panned(canvas, frames);
        const std::size_t last = times.size() - 1;
        std::printf("%gx: drawn anew %.1f ms; panned: median %.2f ms, 95 %% %.2f ms, most %.2f ms\n", closer,
                    redrawn, times[last / 2], times[last * 95 / 100], times[last]);
    }
    return 0;
}
