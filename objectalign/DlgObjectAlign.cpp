#include "objectalign/DlgObjectAlign.h"

#include "res/resource.h"

namespace {

/// Groups are always aligned as a whole, polylines each by the segment picked; only for other objects there
/// is a choice.
struct MethodChoice {
    bool isFree;
    DlgObjectAlign::Method method; ///< the only one, or the one to begin with
};

constexpr MethodChoice methodChoice(DlgObjectAlign::Mode mode) {
    using Method = DlgObjectAlign::Method;
    switch (mode) {
    case DlgObjectAlign::Mode::groups:
        return {false, Method::whole};
    case DlgObjectAlign::Mode::polylines:
        return {false, Method::each};
    case DlgObjectAlign::Mode::objects:
        break;
    }
    return {true, Method::each};
}

} // namespace

BEGIN_MESSAGE_MAP(DlgObjectAlign, CDialogEx)
ON_BN_CLICKED(IDC_ADJUST_SPACING, &DlgObjectAlign::OnAdjustSpacing)
ON_BN_CLICKED(IDC_MODE_GROUPS, &DlgObjectAlign::choose<Mode::groups>)
ON_BN_CLICKED(IDC_MODE_POLYLINES, &DlgObjectAlign::choose<Mode::polylines>)
ON_BN_CLICKED(IDC_MODE_GENERAL, &DlgObjectAlign::choose<Mode::objects>)
ON_BN_CLICKED(IDC_ALIGN_TO_LINE, &DlgObjectAlign::confirm<Action::toLine>)
ON_BN_CLICKED(IDC_ALIGN_AT_POINT, &DlgObjectAlign::confirm<Action::atPoint>)
ON_BN_CLICKED(IDC_CANCEL, &DlgObjectAlign::OnCancel)
END_MESSAGE_MAP()

DlgObjectAlign::DlgObjectAlign(CWnd* parent)
    : CDialogEx{IDD_OBJECT_ALIGN, parent}, icons_{IDI_GROUP_ALIGNMENT} {}

void DlgObjectAlign::DoDataExchange(CDataExchange* exchange) {
    CDialogEx::DoDataExchange(exchange);
    DDX_Radio(exchange, IDC_METHOD_EACH, method_);
    DDX_Control(exchange, IDC_ADJUST_SPACING, adjustsSpacingBox_);
    DDX_Control(exchange, IDC_SPACING, spacingEdit_);
    DDX_Control(exchange, IDC_ALIGN_TO_LINE, toLine_);
    DDX_Control(exchange, IDC_ALIGN_AT_POINT, atPoint_);
    DDX_Control(exchange, IDC_CANCEL, cancel_);
    DDX_Radio(exchange, IDC_MODE_GROUPS, mode_);
}

void DlgObjectAlign::attach(CButtonST& button, int icon) {
    button.SetIcon(icon);
    button.SetFlat(FALSE);
}

BOOL DlgObjectAlign::OnInitDialog() {
    CDialogEx::OnInitDialog();
    icons_ = qx::controls::WindowIcons{IDI_GROUP_ALIGNMENT};
    SetIcon(icons_.big.get(), TRUE);
    SetIcon(icons_.small.get(), FALSE);
    attach(toLine_, IDI_ALIGN_TO_LINE);
    attach(atPoint_, IDI_ALIGN_AT_POINT);
    attach(cancel_, IDI_CANCEL);
    spacingEdit_.EnableWindow(FALSE);
    mode_ = static_cast<int>(Mode::objects);
    method_ = static_cast<int>(Method::each);
    adjustsSpacing_ = false;
    UpdateData(FALSE);
    return TRUE;
}

void DlgObjectAlign::OnAdjustSpacing() {
    spacingEdit_.EnableWindow(adjustsSpacingBox_.GetCheck() == BST_CHECKED);
}

template <DlgObjectAlign::Mode mode> void DlgObjectAlign::choose() {
    UpdateData(TRUE);
    if (mode_ != static_cast<int>(mode)) return;
    constexpr MethodChoice choice = methodChoice(mode);
    for (const int control : {IDC_METHOD_EACH, IDC_METHOD_WHOLE})
        GetDlgItem(control)->EnableWindow(choice.isFree);
    method_ = static_cast<int>(choice.method);
    UpdateData(FALSE);
}

template <DlgObjectAlign::Action action> void DlgObjectAlign::confirm() {
    UpdateData(TRUE);
    spacing_ = spacingEdit_.Number();
    if (adjustsSpacingBox_.GetCheck() == BST_CHECKED) adjustsSpacing_ = true;
    action_ = action;
    OnOK();
}

qx::objectalign::ObjectAlignSettings DlgObjectAlign::settings() const {
    return {.mode = static_cast<Mode>(mode_),
            .method = static_cast<Method>(method_),
            .action = action_,
            .spacing = spacing_,
            .adjustSpacing = adjustsSpacing_};
}
