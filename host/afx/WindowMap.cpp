#include "afx/WindowMap.h"

namespace qx::afx {
namespace {

/// Has the handle and nothing else: never the window's procedure, never its life.
class TemporaryWindow : public CWnd {
public:
    explicit TemporaryWindow(HWND window) { m_hWnd = window; }
    ~TemporaryWindow() override { m_hWnd = nullptr; }
};

} // namespace

WindowMap& WindowMap::instance() {
    static WindowMap map;
    return map;
}

CWnd* WindowMap::attached(HWND window) const {
    const auto found = attached_.find(window);
    return found == attached_.end() ? nullptr : found->second;
}

CWnd& WindowMap::temporary(HWND window) {
    auto& object = temporary_[window];
    if (!object) object = std::make_unique<TemporaryWindow>(window);
    return *object;
}

} // namespace qx::afx
