#include "positionalign/DlgPositionAlign.h"

#include "positionalign/alignment.h"
#include "res/resource.h"

namespace {

struct ActionButton {
    int control;
    int icon;
};

constexpr std::array actionButtons = {
    ActionButton{IDC_CENTRE_HORIZONTALLY, IDI_CENTRE_HORIZONTALLY},
    ActionButton{IDC_ALIGN_BOTTOM, IDI_ALIGN_BOTTOM},
    ActionButton{IDC_ALIGN_LEFT, IDI_ALIGN_LEFT},
    ActionButton{IDC_ALIGN_CENTRE, IDI_ALIGN_CENTRE},
    ActionButton{IDC_ALIGN_RIGHT, IDI_ALIGN_RIGHT},
    ActionButton{IDC_CENTRE_VERTICALLY, IDI_CENTRE_VERTICALLY},
    ActionButton{IDC_DISTRIBUTE_HORIZONTALLY, IDI_DISTRIBUTE_HORIZONTALLY},
    ActionButton{IDC_DISTRIBUTE_VERTICALLY, IDI_DISTRIBUTE_VERTICALLY},
    ActionButton{IDC_ALIGN_TOP, IDI_ALIGN_TOP},
};

} // namespace

BEGIN_MESSAGE_MAP(DlgPositionAlign, CDialogEx)
ON_BN_CLICKED(IDC_CENTRE_HORIZONTALLY, &DlgPositionAlign::choose<Action::horizontalCentre>)
ON_BN_CLICKED(IDC_ALIGN_TOP, &DlgPositionAlign::choose<Action::top>)
ON_BN_CLICKED(IDC_ALIGN_LEFT, &DlgPositionAlign::choose<Action::left>)
ON_BN_CLICKED(IDC_ALIGN_CENTRE, &DlgPositionAlign::choose<Action::centre>)
ON_BN_CLICKED(IDC_ALIGN_RIGHT, &DlgPositionAlign::choose<Action::right>)
ON_BN_CLICKED(IDC_CENTRE_VERTICALLY, &DlgPositionAlign::choose<Action::verticalCentre>)
ON_BN_CLICKED(IDC_ALIGN_BOTTOM, &DlgPositionAlign::choose<Action::bottom>)
ON_BN_CLICKED(IDC_DISTRIBUTE_HORIZONTALLY, &DlgPositionAlign::choose<Action::horizontalDistribution>)
ON_BN_CLICKED(IDC_DISTRIBUTE_VERTICALLY, &DlgPositionAlign::choose<Action::verticalDistribution>)
END_MESSAGE_MAP()

DlgPositionAlign::DlgPositionAlign(CWnd* parent)
    : CDialogEx{IDD_POSITION_ALIGN, parent}, icons_{IDI_GROUP_ALIGNMENT} {}

void DlgPositionAlign::DoDataExchange(CDataExchange* exchange) {
    CDialogEx::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_OFFSET, offsetEdit_);
    DDX_Radio(exchange, IDC_MODE_OBJECTS, mode_);
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        DDX_Control(exchange, actionButtons[i].control, buttons_[i]);
}

BOOL DlgPositionAlign::OnInitDialog() {
    CDialogEx::OnInitDialog();
    icons_ = qx::controls::WindowIcons{IDI_GROUP_ALIGNMENT};
    SetIcon(icons_.big.get(), TRUE);
    SetIcon(icons_.small.get(), FALSE);
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        buttons_[i].SetIcon(actionButtons[i].icon);
        buttons_[i].SetFlat(FALSE);
    }
    offset_ = 0;
    return TRUE;
}

template <DlgPositionAlign::Action action> void DlgPositionAlign::choose() {
    UpdateData(TRUE);
    if (qx::positionalign::takesOffset(action)) offset_ = offsetEdit_.Number();
    asksBasePoint_ = !qx::positionalign::movesOf(action).empty();
    action_ = action;
    OnOK();
}

qx::positionalign::PositionAlignSettings DlgPositionAlign::settings() const {
    return {action_, asksBasePoint_, offset_, static_cast<qx::positionalign::SelectionMode>(mode_)};
}
