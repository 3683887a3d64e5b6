// Dialogs with a background of their own; no module uses more than the dialog.
#pragma once

#include "afxwin.h"

class QX_HOST_API CDialogEx : public CDialog {
public:
    using CDialog::CDialog;
};
