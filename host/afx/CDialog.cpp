#include "afx/ModalLoop.h"
#include "afxdialogex.h"

#include <commctrl.h>

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_BN_CLICKED(IDOK, &CDialog::OnOK)
ON_BN_CLICKED(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

namespace {

/// Keeps the window that a dialog stands before from being used meanwhile.
class DisabledWindow {
public:
    explicit DisabledWindow(HWND window) : window_{::IsWindowEnabled(window) ? window : nullptr} {
        if (window_) ::EnableWindow(window_, FALSE);
    }
    ~DisabledWindow() {
        if (window_) ::EnableWindow(window_, TRUE);
    }
    DisabledWindow(const DisabledWindow&) = delete;
    DisabledWindow& operator=(const DisabledWindow&) = delete;

private:
    HWND window_;
};

/// Controls as the program's manifest wants them.
void startControls() {
    static const bool isStarted = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES};
        return ::InitCommonControlsEx(&classes) != FALSE;
    }();
    static_cast<void>(isStarted);
}

/// In the middle of its parent, or of the screen's usable part.
void centre(HWND dialog, HWND parent) {
    RECT around{}, own{};
    ::GetWindowRect(dialog, &own);
    if (!parent || !::GetWindowRect(parent, &around)) ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &around, 0);
    const int x = (around.left + around.right - own.right + own.left) / 2;
    const int y = (around.top + around.bottom - own.bottom + own.top) / 2;
    ::SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

CDialog::~CDialog() {
    if (m_hWnd) ::DestroyWindow(m_hWnd);
}

INT_PTR CALLBACK CDialog::dialogProcedure(HWND window, UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_INITDIALOG) return FALSE;
    auto& dialog = *reinterpret_cast<CDialog*>(lParam);
    dialog.SubclassWindow(window);
    try {
        return dialog.OnInitDialog();
    } catch (...) {
        qx::afx::keepException();
        return FALSE;
    }
}

HWND CDialog::create(HWND parent) {
    const LPCWSTR name = MAKEINTRESOURCEW(template_);
    const HINSTANCE module = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC found = ::FindResourceW(module, name, RT_DIALOG);
    const HGLOBAL loaded = found ? ::LoadResource(module, found) : nullptr;
    const void* bytes = loaded ? ::LockResource(loaded) : nullptr;
    if (!bytes) return nullptr;
    return ::CreateDialogIndirectParamW(module, static_cast<LPCDLGTEMPLATEW>(bytes), parent, &dialogProcedure,
                                        reinterpret_cast<LPARAM>(this));
}

INT_PTR CDialog::DoModal() {
    startControls();
    const HWND parent = parentWindow();
    result_ = -1;
    isRunning_ = true; // OnInitDialog may already end it
    {
        const DisabledWindow disabled{parent};
        if (create(parent)) runLoop();
        if (m_hWnd) ::ShowWindow(m_hWnd, SW_HIDE);
        if (m_hWnd) qx::afx::tellDialogEnd(m_hWnd, template_, command_);
    }
    // The parent can be used again before the dialog goes, so that it and no stranger becomes active.
    if (parent) ::SetActiveWindow(parent);
    if (m_hWnd) ::DestroyWindow(m_hWnd);
    qx::afx::rethrowException();
    return result_;
}

HWND CDialog::parentWindow() const { return parent_ ? parent_->GetSafeHwnd() : qx::afx::mainWindow(); }

BOOL CDialog::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (HIWORD(wParam) == BN_CLICKED) command_ = LOWORD(wParam);
    return CWnd::OnCommand(wParam, lParam);
}

void CDialog::runLoop() {
    if (isRunning_ && qx::afx::areDialogsShown()) ::ShowWindow(m_hWnd, SW_SHOW);
    qx::afx::runModalLoop(m_hWnd, [this] { return isRunning_ && m_hWnd; });
    isRunning_ = false;
}

void CDialog::EndDialog(int result) {
    result_ = result;
    isRunning_ = false;
    ::PostMessageW(m_hWnd, WM_NULL, 0, 0); // lets the loop look
}

BOOL CDialog::PreTranslateMessage(MSG* message) { return ::IsDialogMessageW(m_hWnd, message); }

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    centre(m_hWnd, parentWindow());
    return TRUE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }
