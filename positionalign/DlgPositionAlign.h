// Position alignment in a dialog: objects or groups, an offset, and a button for each action, which closes
// the dialog at once.
#pragma once

#include "controls/CButtonST.h"
#include "controls/CNumberEdit.h"
#include "positionalign/PositionAlignSettings.h"

#include <afxdialogex.h>
#include <array>

class DlgPositionAlign : public CDialogEx {
public:
    using Action = qx::positionalign::Action;

    explicit DlgPositionAlign(CWnd* parent = nullptr);

    /// After the dialog was closed by anything but a cancel; without an action when it was by Enter.
    qx::positionalign::PositionAlignSettings settings() const;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;

    DECLARE_MESSAGE_MAP()

private:
    template <Action action> void choose();

    qx::controls::WindowIcons icons_;
    CNumberEdit offsetEdit_;
    double offset_ = 0;
    bool asksBasePoint_ = false;
    int mode_ = 0;
    Action action_ = Action::none;
    std::array<CButtonST, 9> buttons_;
};
