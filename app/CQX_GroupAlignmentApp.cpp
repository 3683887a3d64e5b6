#include "CQX_GroupAlignmentApp.h"

#include "ModuleResourceSwitch.h"
#include "objectalign/command.h"
#include "positionalign/command.h"

namespace {

struct AlignmentCommand {
    const ACHAR* name;
    AcRxFunctionPtr run;
};

void runPositionAlign() { qx::positionalign::runCommand(); }
void runObjectAlign() { qx::objectalign::runCommand(); }

constexpr AlignmentCommand alignmentCommands[] = {
    {L"KV_PositionAlign", runPositionAlign},
    {L"KV_ObjectAlign", runObjectAlign},
};

} // namespace

AcRx::AppRetCode CQX_GroupAlignmentApp::On_kInitAppMsg(void* pkt) {
    const AcRx::AppRetCode result = AcRxArxApp::On_kInitAppMsg(pkt);
    const ModuleResourceSwitch ownResources;
    for (const AlignmentCommand& command : alignmentCommands)
        acedRegCmds->addCommand(command.name, command.name, command.name, ACRX_CMD_MODAL, command.run,
                                nullptr, -1, nullptr);
    return result;
}

AcRx::AppRetCode CQX_GroupAlignmentApp::On_kUnloadAppMsg(void* pkt) {
    return AcRxArxApp::On_kUnloadAppMsg(pkt);
}

void CQX_GroupAlignmentApp::RegisterServerComponents() {}

void CQX_GroupAlignmentApp::ADSKMyGroupMyPickFirst() {
    ads_name selected{};
    acedSSGet(L"_I", nullptr, nullptr, nullptr, selected);
}

void CQX_GroupAlignmentApp::ADSKMyGroupMySessionCmd() {}

int CQX_GroupAlignmentApp::ads_MyLispFunction() { return RTNORM; }
