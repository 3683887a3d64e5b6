#include "controls/CNumberEdit.h"

#include <cstdlib>

BEGIN_MESSAGE_MAP(CNumberEdit, CEdit)
END_MESSAGE_MAP()

double CNumberEdit::Number() const {
    CString text;
    GetWindowText(text);
    return _wtof(text);
}

CNumberEdit::Verdict CNumberEdit::verdictOn(const MSG& message) {
    if (message.message == WM_KEYDOWN) return keys_.onKeyDown(static_cast<unsigned>(message.wParam));
    if (message.message != WM_CHAR) return Verdict::passedOn;
    CString text;
    GetWindowText(text);
    int start = 0, end = 0;
    GetSel(start, end);
    return keys_.onCharacter(static_cast<wchar_t>(message.wParam),
                             {text.GetString(), static_cast<unsigned>(start), static_cast<unsigned>(end)});
}

BOOL CNumberEdit::PreTranslateMessage(MSG* message) {
    switch (verdictOn(*message)) {
    case Verdict::swallowed:
        return TRUE;
    case Verdict::endsEditing:
        if (CWnd* focused = GetFocus()) focused->UpdateData(TRUE);
        return FALSE;
    case Verdict::letThrough:
        return FALSE;
    case Verdict::passedOn:
        break;
    }
    return CEdit::PreTranslateMessage(message);
}
