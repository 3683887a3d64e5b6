#include "afxwin.h"

namespace {

HWND controlOf(const CDataExchange& exchange, int id) { return ::GetDlgItem(exchange.m_pDlgWnd->m_hWnd, id); }

bool isRadio(HWND control) { return ::SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON; }

bool startsGroup(HWND control) { return ::GetWindowLongPtrW(control, GWL_STYLE) & WS_GROUP; }

} // namespace

void CEdit::GetSel(int& start, int& end) const {
    DWORD first = 0, behind = 0;
    ::SendMessageW(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&behind));
    start = static_cast<int>(first);
    end = static_cast<int>(behind);
}

BOOL CButton::OnChildNotify(UINT message, WPARAM, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return FALSE;
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    *result = TRUE;
    return TRUE;
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (!control.m_hWnd) control.SubclassWindow(controlOf(*exchange, id));
}

void DDX_Radio(CDataExchange* exchange, int id, int& value) {
    if (exchange->m_bSaveAndValidate) value = -1;
    int index = 0;
    HWND control = controlOf(*exchange, id);
    do {
        if (!isRadio(control)) continue;
        if (!exchange->m_bSaveAndValidate)
            ::SendMessageW(control, BM_SETCHECK, index == value ? BST_CHECKED : BST_UNCHECKED, 0);
        else if (::SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED)
            value = index;
        ++index;
    } while ((control = ::GetWindow(control, GW_HWNDNEXT)) && !startsGroup(control));
}
