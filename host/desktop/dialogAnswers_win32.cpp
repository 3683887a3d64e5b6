#include "desktop/dialogAnswers_win32.h"

#include "afx/ModalLoop.h"
#include "desktop/DialogForm.h"
#include "os/encoding.h"

#include <algorithm>
#include <cwchar>

namespace qx::desktop {
namespace {

bool isOfClass(HWND window, const wchar_t* name) {
    wchar_t own[32] = {};
    ::GetClassNameW(window, own, static_cast<int>(std::size(own)));
    return ::_wcsicmp(own, name) == 0;
}

bool canBeChecked(HWND window) {
    if (!isOfClass(window, L"Button")) return false;
    const LONG_PTR type = ::GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK;
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_RADIOBUTTON ||
           type == BS_AUTORADIOBUTTON;
}

std::string textIn(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return os::toUtf8(text);
}

BOOL CALLBACK addControl(HWND window, LPARAM form) {
    auto& controls = reinterpret_cast<DialogForm*>(form)->controls;
    const int id = ::GetDlgCtrlID(window);
    if (canBeChecked(window))
        controls.push_back({id, static_cast<int>(::SendMessageW(window, BM_GETCHECK, 0, 0)), {}});
    else if (isOfClass(window, L"Edit"))
        controls.push_back({id, std::nullopt, textIn(window)});
    return TRUE;
}

void workDialog(HWND dialog, const DialogForm& form) {
    for (const DialogForm::Control& each : form.controls) {
        const HWND window = ::GetDlgItem(dialog, each.id);
        if (each.check)
            ::SendMessageW(window, BM_SETCHECK, static_cast<WPARAM>(*each.check), 0);
        else
            ::SetWindowTextW(window, os::toWide(each.text).c_str());
    }
    ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(form.command, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(dialog, form.command)));
}

/// True when there was something to do in the dialog.
bool repeatNext(ed::Session& session, HWND dialog) {
    const ed::Input input = session.line().ask(ed::Ask::text, "对话框: ");
    const auto form = input.kind == ed::Input::Kind::text ? parseDialogForm(input.text) : std::nullopt;
    if (form) {
        workDialog(dialog, *form);
    } else {
        session.line().fail("a dialog came up, and \"" + input.text + "\" is no answer to one");
        ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }
    return true;
}

} // namespace

DialogAnswers::DialogAnswers(ed::Session& session, const Desk& desk) {
    afx::setDialogEnd([&session, &desk](HWND dialog, UINT templateId, UINT command) {
        if (desk.recovery().isRepeating()) return;
        DialogForm form{static_cast<int>(templateId), static_cast<int>(command), {}};
        ::EnumChildWindows(dialog, &addControl, reinterpret_cast<LPARAM>(&form));
        session.line().noteAnswer({.kind = ed::Input::Kind::text, .text = textOf(form)});
    });
    afx::setIdleStep([&session, &desk](HWND dialog) {
        return desk.recovery().isRepeating() && repeatNext(session, dialog);
    });
}

DialogAnswers::~DialogAnswers() {
    afx::setIdleStep({});
    afx::setDialogsShown({});
    afx::setDialogEnd({});
}

} // namespace qx::desktop
