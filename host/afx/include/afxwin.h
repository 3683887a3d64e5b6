// Windows with C++ objects attached, their messages, and dialogs: the part of the window classes that modules
// of this host use, over Win32. Everything belongs to the one thread that runs commands. An exception that a
// handler throws ends the dialog it is in and goes on from DoModal.
#pragma once

#include "qxexport.h"
#include "rxmfcapi.h"

#include <string>
#include <windows.h>

#define afx_msg

class CWnd;

/// Text in UTF-16.
class CString {
public:
    CString() = default;
    CString(const wchar_t* text) : text_{text ? text : L""} {}

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    /// Index of the first `character`, -1 without one.
    int Find(wchar_t character) const { return static_cast<int>(text_.find(character)); }
    LPCWSTR GetString() const { return text_.c_str(); }
    operator LPCWSTR() const { return GetString(); }

private:
    std::wstring text_;
};

struct CPoint : POINT {
    CPoint(int x_, int y_) : POINT{x_, y_} {}
};

// ---- resources

/// The module to load a resource from: the current resource handle if it has the resource, else the extension
/// module that was chained last among those that have it, else the current handle all the same (the program's
/// own when there is none).
QX_HOST_API HINSTANCE AfxFindResourceHandle(LPCWSTR name, LPCWSTR type);

// ---- message maps

class QX_HOST_API CCmdTarget {
public:
    virtual ~CCmdTarget() = default;
};

/// One message and the member that handles it. `code` and `id` count for WM_COMMAND only.
struct AFX_MSGMAP_ENTRY {
    UINT message;
    UINT code;
    UINT id;
    LRESULT (*call)(CCmdTarget& target, WPARAM, LPARAM);
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* base;          ///< asked after the entries; null at the end of the chain
    const AFX_MSGMAP_ENTRY* entries; ///< up to one without a handler
};

namespace qx::afx {

template <class Class, auto handler> LRESULT callPlain(CCmdTarget& target, WPARAM, LPARAM) {
    (static_cast<Class&>(target).*handler)();
    return 0;
}

template <class Class, auto handler> LRESULT callForMouse(CCmdTarget& target, WPARAM flags, LPARAM place) {
    const CPoint point{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
    (static_cast<Class&>(target).*handler)(static_cast<UINT>(flags), point);
    return 0;
}

template <class Class, auto handler> LRESULT callForResult(CCmdTarget& target, WPARAM, LPARAM) {
    return static_cast<LRESULT>((static_cast<Class&>(target).*handler)());
}

template <class Class, auto handler> LRESULT callWhole(CCmdTarget& target, WPARAM wParam, LPARAM lParam) {
    return (static_cast<Class&>(target).*handler)(wParam, lParam);
}

} // namespace qx::afx

#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const AFX_MSGMAP& thisMessageMap();                                                               \
    const AFX_MSGMAP& messageMap() const override { return thisMessageMap(); }

#define BEGIN_MESSAGE_MAP(CLASS, BASE)                                                                       \
    const AFX_MSGMAP& CLASS::thisMessageMap() {                                                              \
        using ThisClass [[maybe_unused]] = CLASS;                                                            \
        static const AFX_MSGMAP* const base = &BASE::thisMessageMap();                                       \
        static const AFX_MSGMAP_ENTRY entries[] = {

#define END_MESSAGE_MAP()                                                                                    \
    { WM_NULL, 0, 0, nullptr }                                                                               \
    }                                                                                                        \
    ;                                                                                                        \
    static const AFX_MSGMAP map{base, entries};                                                              \
    return map;                                                                                              \
    }

#define ON_CONTROL(CODE, ID, HANDLER) {WM_COMMAND, CODE, ID, &qx::afx::callPlain<ThisClass, HANDLER>},
#define ON_BN_CLICKED(ID, HANDLER) ON_CONTROL(BN_CLICKED, ID, HANDLER)
#define ON_MESSAGE(MESSAGE, HANDLER) {MESSAGE, 0, 0, &qx::afx::callWhole<ThisClass, HANDLER>},
#define ON_WM_MOUSEMOVE() {WM_MOUSEMOVE, 0, 0, &qx::afx::callForMouse<ThisClass, &ThisClass::OnMouseMove>},
#define ON_WM_MOUSELEAVE() {WM_MOUSELEAVE, 0, 0, &qx::afx::callPlain<ThisClass, &ThisClass::OnMouseLeave>},
#define ON_WM_LBUTTONDBLCLK()                                                                                \
    {WM_LBUTTONDBLCLK, 0, 0, &qx::afx::callForMouse<ThisClass, &ThisClass::OnLButtonDblClk>},
#define ON_WM_GETDLGCODE()                                                                                   \
    {WM_GETDLGCODE, 0, 0, &qx::afx::callForResult<ThisClass, &ThisClass::OnGetDlgCode>},

// ---- exchange between controls and members

class CDataExchange {
public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate)
        : m_bSaveAndValidate{saveAndValidate}, m_pDlgWnd{dialog} {}

    BOOL m_bSaveAndValidate; ///< TRUE: from the controls into the members; FALSE: back
    CWnd* m_pDlgWnd;
};

/// Attaches `control` to the dialog's control `id`, the first time that it is called.
QX_HOST_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control);

/// The radio buttons from `id`, which starts a group, up to where the next group starts: the index of the
/// checked one, -1 without any. Controls between them that are no radio buttons do not count.
QX_HOST_API void DDX_Radio(CDataExchange* exchange, int id, int& value);

// ---- windows

class QX_HOST_API CWnd : public CCmdTarget {
public:
    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    /// Lets a subclassed window go on without this object.
    ~CWnd() override;

    HWND m_hWnd = nullptr;

    HWND GetSafeHwnd() const { return m_hWnd; }
    /// The object attached to a window; else a temporary one, which is gone when the loop of messages idles.
    /// Null for no window.
    static CWnd* FromHandle(HWND window);
    /// The object attached to a window, or null.
    static CWnd* FromHandlePermanent(HWND window);
    static CWnd* GetFocus();

    /// From now on the window's messages come to this object first. FALSE when it has one already.
    BOOL SubclassWindow(HWND window);
    HWND UnsubclassWindow();

    CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    void GetWindowText(CString& text) const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }
    void SetWindowText(LPCWSTR text) { ::SetWindowTextW(m_hWnd, text); }
    void GetClientRect(RECT* rectangle) const { ::GetClientRect(m_hWnd, rectangle); }
    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_STYLE)); }
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    HICON SetIcon(HICON icon, BOOL big);
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }

    /// Runs DoDataExchange: TRUE reads the controls, FALSE writes them. FALSE without a window.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    /// Sees each posted message before it is translated: first the window it is for, then that one's parents,
    /// up to the dialog. TRUE when the message is done with.
    virtual BOOL PreTranslateMessage(MSG*) { return FALSE; }

protected:
    virtual const AFX_MSGMAP& messageMap() const { return thisMessageMap(); }
    static const AFX_MSGMAP& thisMessageMap();

    virtual void DoDataExchange(CDataExchange*) {}
    /// Called when the window exists and before it is subclassed.
    virtual void PreSubclassWindow() {}
    /// A message that a control sent to its parent about itself. TRUE when it is done with.
    virtual BOOL OnChildNotify(UINT, WPARAM, LPARAM, LRESULT*) { return FALSE; }
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// What the window would do with the message at hand without the handler.
    LRESULT Default() { return DefWindowProc(current_.message, current_.wParam, current_.lParam); }

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    const AFX_MSGMAP_ENTRY* handlerOf(UINT message, UINT code, UINT id) const;
    bool reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    WNDPROC super_ = nullptr; ///< whose the messages were before
    MSG current_{};

    friend class CDialog;
};

class QX_HOST_API CEdit : public CWnd {
public:
    /// Of the selected characters: the first, and the one behind the last.
    void GetSel(int& start, int& end) const;
};

class QX_HOST_API CButton : public CWnd {
public:
    int GetCheck() const { return static_cast<int>(::SendMessageW(m_hWnd, BM_GETCHECK, 0, 0)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
    void SetButtonStyle(UINT style, BOOL redraw = TRUE) {
        SendMessage(BM_SETSTYLE, style, MAKELPARAM(redraw, 0));
    }
    /// Paints an owner-drawn button. Every object selected into the device context must have been put back.
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM, LPARAM lParam, LRESULT* result) override;
};

/// A dialog from a template of the module's resources.
class QX_HOST_API CDialog : public CWnd {
public:
    explicit CDialog(UINT templateId, CWnd* parent = nullptr) : template_{templateId}, parent_{parent} {}
    ~CDialog() override;

    /// Shows the dialog, its parent disabled meanwhile, until EndDialog. -1 when it can't be made.
    virtual INT_PTR DoModal();
    void EndDialog(int result);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    /// Writes the controls. TRUE lets the system choose the first focus.
    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

    DECLARE_MESSAGE_MAP()

private:
    static INT_PTR CALLBACK dialogProcedure(HWND window, UINT message, WPARAM, LPARAM lParam);
    HWND create(HWND parent);
    HWND parentWindow() const;
    void runLoop();

    UINT template_;
    CWnd* parent_;
    UINT command_ = 0; ///< the last that a control gave
    int result_ = -1;
    bool isRunning_ = false;
};
