// What the module shows to the host, and the tables of its sample entries.
#include "CQX_GroupAlignmentApp.h"

ACED_ARXCOMMAND_ENTRY_AUTO(CQX_GroupAlignmentApp, ADSKMyGroup, MyPickFirst, MyPickFirstLocal,
                           ACRX_CMD_USEPICKSET, nullptr);
ACED_ARXCOMMAND_ENTRY_AUTO(CQX_GroupAlignmentApp, ADSKMyGroup, MySessionCmd, MySessionCmdLocal,
                           ACRX_CMD_SESSION, nullptr);
ACED_ADSSYMBOL_ENTRY_AUTO(CQX_GroupAlignmentApp, MyLispFunction, false);

IMPLEMENT_ARX_ENTRYPOINT(CQX_GroupAlignmentApp)
