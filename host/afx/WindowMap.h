// Which C++ object stands for which window.
#pragma once

#include "afxwin.h"

#include <memory>
#include <unordered_map>

namespace qx::afx {

class WindowMap {
public:
    static WindowMap& instance();

    CWnd* attached(HWND window) const;
    /// False when the window has an object already.
    bool attach(HWND window, CWnd& object) { return attached_.emplace(window, &object).second; }
    void detach(HWND window) { attached_.erase(window); }
    std::size_t attachedCount() const { return attached_.size(); }

    /// Stands for a window without an object of its own until the temporary ones are dropped.
    CWnd& temporary(HWND window);
    void dropTemporary() { temporary_.clear(); }

private:
    std::unordered_map<HWND, CWnd*> attached_;
    std::unordered_map<HWND, std::unique_ptr<CWnd>> temporary_;
};

} // namespace qx::afx
