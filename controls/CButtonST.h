// A push button with an icon beside its caption. It paints itself in every state; the keyboard and the mouse
// work it as they work any push button.
#pragma once

#include "controls/icons.h"

#include <afxwin.h>

class CButtonST : public CButton {
public:
    /// Icons of the module's resources, in the size that suits the button: one for every state, or
    /// another (`out`) while the button is pressed. FALSE without such an icon.
    BOOL SetIcon(int in, int out = 0);
    /// A flat button has a border only while the pointer is over it.
    void SetFlat(BOOL flat = TRUE, BOOL repaint = TRUE);

    void DrawItem(LPDRAWITEMSTRUCT item) override;

protected:
    void PreSubclassWindow() override;

    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg UINT OnGetDlgCode();
    LRESULT OnSetStyle(WPARAM style, LPARAM redraw);

    DECLARE_MESSAGE_MAP()

private:
    int iconSize() const;
    HICON shownIcon(bool isPressed) const;

    qx::controls::OwnedIcon in_;
    qx::controls::OwnedIcon out_;
    BOOL isFlat_ = TRUE;
    bool isDefault_ = false; ///< the one that Enter presses
    bool isHovered_ = false;
};
