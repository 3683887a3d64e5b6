// Object alignment in a dialog: what is selected, how it is aligned, the spacing, and a button for each of
// the two actions, which closes the dialog at once.
#pragma once

#include "controls/CButtonST.h"
#include "controls/CNumberEdit.h"
#include "objectalign/ObjectAlignSettings.h"

#include <afxdialogex.h>

class DlgObjectAlign : public CDialogEx {
public:
    using Action = qx::objectalign::Action;
    using Method = qx::objectalign::Method;
    using Mode = qx::objectalign::SelectionMode;

    explicit DlgObjectAlign(CWnd* parent = nullptr);

    /// After the dialog was closed by anything but a cancel.
    qx::objectalign::ObjectAlignSettings settings() const;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;

    DECLARE_MESSAGE_MAP()

private:
    template <Mode mode> void choose();
    template <Action action> void confirm();
    afx_msg void OnAdjustSpacing();
    void attach(CButtonST& button, int icon);

    qx::controls::WindowIcons icons_;
    int method_ = 0;
    int mode_ = 0;
    CButton adjustsSpacingBox_;
    Action action_ = Action::none;
    double spacing_ = 0;
    bool adjustsSpacing_ = false;
    CNumberEdit spacingEdit_;
    CButtonST toLine_;
    CButtonST atPoint_;
    CButtonST cancel_;
};
