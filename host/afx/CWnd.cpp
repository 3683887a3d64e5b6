#include "afx/ModalLoop.h"
#include "afx/WindowMap.h"
#include "afxwin.h"

#include <utility>

using qx::afx::WindowMap;

CWnd::~CWnd() {
    if (m_hWnd) UnsubclassWindow();
}

const AFX_MSGMAP& CWnd::thisMessageMap() {
    static const AFX_MSGMAP_ENTRY none[] = {{WM_NULL, 0, 0, nullptr}};
    static const AFX_MSGMAP map{nullptr, none};
    return map;
}

CWnd* CWnd::FromHandlePermanent(HWND window) { return WindowMap::instance().attached(window); }

CWnd* CWnd::FromHandle(HWND window) {
    if (!window) return nullptr;
    CWnd* attached = FromHandlePermanent(window);
    return attached ? attached : &WindowMap::instance().temporary(window);
}

CWnd* CWnd::GetFocus() { return FromHandle(::GetFocus()); }

BOOL CWnd::SubclassWindow(HWND window) {
    if (m_hWnd || !::IsWindow(window) || !WindowMap::instance().attach(window, *this)) return FALSE;
    m_hWnd = window;
    PreSubclassWindow();
    super_ = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWnd::procedure)));
    return TRUE;
}

HWND CWnd::UnsubclassWindow() {
    if (super_) ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(super_));
    super_ = nullptr;
    WindowMap::instance().detach(m_hWnd);
    return std::exchange(m_hWnd, nullptr);
}

void CWnd::GetWindowText(CString& text) const {
    std::wstring buffer(static_cast<std::size_t>(GetWindowTextLength()) + 1, L'\0');
    ::GetWindowTextW(m_hWnd, buffer.data(), static_cast<int>(buffer.size()));
    text = buffer.c_str();
}

HICON CWnd::SetIcon(HICON icon, BOOL big) {
    const WPARAM size = big ? ICON_BIG : ICON_SMALL;
    return reinterpret_cast<HICON>(SendMessage(WM_SETICON, size, reinterpret_cast<LPARAM>(icon)));
}

BOOL CWnd::UpdateData(BOOL saveAndValidate) {
    if (!m_hWnd) return FALSE;
    CDataExchange exchange{this, saveAndValidate};
    DoDataExchange(&exchange);
    return TRUE;
}

// ---- messages

LRESULT CALLBACK CWnd::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* object = FromHandlePermanent(window);
    if (!object) return ::DefWindowProcW(window, message, wParam, lParam);
    const MSG outer = std::exchange(object->current_, MSG{window, message, wParam, lParam, 0, {}});
    LRESULT result = 0;
    try {
        result = object->WindowProc(message, wParam, lParam);
    } catch (...) {
        qx::afx::keepException();
    }
    object->current_ = outer;
    if (message == WM_NCDESTROY) object->UnsubclassWindow();
    return result;
}

const AFX_MSGMAP_ENTRY* CWnd::handlerOf(UINT message, UINT code, UINT id) const {
    for (const AFX_MSGMAP* map = &messageMap(); map; map = map->base)
        for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->call; ++entry)
            if (entry->message == message && entry->code == code && entry->id == id) return entry;
    return nullptr;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const AFX_MSGMAP_ENTRY* handler = handlerOf(WM_COMMAND, HIWORD(wParam), LOWORD(wParam));
    if (handler) handler->call(*this, wParam, lParam);
    return handler != nullptr;
}

/// Gives an owner-drawn control's message back to the control.
bool CWnd::reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message != WM_DRAWITEM) return false;
    CWnd* control = FromHandlePermanent(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam)->hwndItem);
    return control && control->OnChildNotify(message, wParam, lParam, &result);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (reflect(message, wParam, lParam, result)) return result;
    if (message == WM_COMMAND) {
        if (OnCommand(wParam, lParam)) return 0;
    } else if (const AFX_MSGMAP_ENTRY* handler = handlerOf(message, 0, 0)) {
        return handler->call(*this, wParam, lParam);
    }
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::CallWindowProcW(super_ ? super_ : ::DefWindowProcW, m_hWnd, message, wParam, lParam);
}
