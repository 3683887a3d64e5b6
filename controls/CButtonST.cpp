#include "controls/CButtonST.h"

#include "controls/buttonPicture.h"

BEGIN_MESSAGE_MAP(CButtonST, CButton)
ON_WM_MOUSEMOVE()
ON_WM_MOUSELEAVE()
ON_WM_LBUTTONDBLCLK()
ON_WM_GETDLGCODE()
ON_MESSAGE(BM_SETSTYLE, &CButtonST::OnSetStyle)
END_MESSAGE_MAP()

namespace {
UINT typeOf(WPARAM style) { return static_cast<UINT>(style) & BS_TYPEMASK; }
} // namespace

void CButtonST::PreSubclassWindow() {
    isDefault_ = typeOf(GetStyle()) == BS_DEFPUSHBUTTON;
    SetButtonStyle(BS_OWNERDRAW, FALSE);
}

int CButtonST::iconSize() const {
    RECT area{};
    GetClientRect(&area);
    return qx::controls::iconSizeFor(area.bottom);
}

BOOL CButtonST::SetIcon(int in, int out) {
    in_ = qx::controls::loadIcon(in, iconSize());
    out_ = out ? qx::controls::loadIcon(out, iconSize()) : nullptr;
    Invalidate();
    return in_ && (out == 0 || out_);
}

void CButtonST::SetFlat(BOOL flat, BOOL repaint) {
    isFlat_ = flat;
    if (repaint) Invalidate();
}

HICON CButtonST::shownIcon(bool isPressed) const { return out_ && isPressed ? out_.get() : in_.get(); }

void CButtonST::DrawItem(LPDRAWITEMSTRUCT item) {
    CString caption;
    GetWindowText(caption);
    const auto is = [item](UINT state) { return (item->itemState & state) != 0; };
    qx::controls::paintButton(item->hDC, item->rcItem,
                              {.caption = caption.GetString(),
                               .font = reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)),
                               .icon = shownIcon(is(ODS_SELECTED)),
                               .iconSize = iconSize(),
                               .hasBorder = !isFlat_ || isHovered_,
                               .isPressed = is(ODS_SELECTED),
                               .isHovered = isHovered_,
                               .isDisabled = is(ODS_DISABLED),
                               .isFocused = is(ODS_FOCUS),
                               .isDefault = isDefault_});
}

// ---- the pointer

void CButtonST::OnMouseMove(UINT, CPoint) {
    if (!isHovered_) {
        TRACKMOUSEEVENT leaving{sizeof leaving, TME_LEAVE, m_hWnd, 0};
        isHovered_ = ::TrackMouseEvent(&leaving) != FALSE;
        Invalidate(FALSE);
    }
    Default();
}

void CButtonST::OnMouseLeave() {
    isHovered_ = false;
    Invalidate(FALSE);
    Default();
}

/// Of two fast clicks an owner-drawn button is told the second in another way than a click.
void CButtonST::OnLButtonDblClk(UINT, CPoint point) {
    SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

// ---- the keyboard: an owner-drawn button has no memory of being the default button, the dialog expects one

UINT CButtonST::OnGetDlgCode() {
    return DLGC_BUTTON | (isDefault_ ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
}

LRESULT CButtonST::OnSetStyle(WPARAM style, LPARAM) {
    isDefault_ = typeOf(style) == BS_DEFPUSHBUTTON;
    Invalidate(FALSE);
    return 0;
}
