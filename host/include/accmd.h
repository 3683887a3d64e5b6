// Commands and the stack they are registered on. A name is unique within its group, as global and as local
// name; a typed name finds the newest group that has it. Names compare without regard to the case of ASCII
// letters.
#pragma once

#include "acadstrc.h"
#include "rxdict.h"
#include "rxmfcapi.h"

class AcEdUIContext;

using AcRxFunctionPtr = void (*)();

constexpr Adesk::Int32 ACRX_CMD_MODAL = 0x00000000;
constexpr Adesk::Int32 ACRX_CMD_TRANSPARENT = 0x00000001;
constexpr Adesk::Int32 ACRX_CMD_USEPICKSET = 0x00000002;
constexpr Adesk::Int32 ACRX_CMD_REDRAW = 0x00000004;
constexpr Adesk::Int32 ACRX_CMD_NOPERSPECTIVE = 0x00000008;
constexpr Adesk::Int32 ACRX_CMD_NOMULTIPLE = 0x00000010;
constexpr Adesk::Int32 ACRX_CMD_NOTILEMODE = 0x00000020;
constexpr Adesk::Int32 ACRX_CMD_NOPAPERSPACE = 0x00000040;
constexpr Adesk::Int32 ACRX_CMD_NOOEM = 0x00000100;
constexpr Adesk::Int32 ACRX_CMD_UNDEFINED = 0x00000200;
constexpr Adesk::Int32 ACRX_CMD_INPROGRESS = 0x00000400;
constexpr Adesk::Int32 ACRX_CMD_DEFUN = 0x00000800;
constexpr Adesk::Int32 ACRX_CMD_NONEWSTACK = 0x00010000;
constexpr Adesk::Int32 ACRX_CMD_NOINTERNALLOCK = 0x00020000;
constexpr Adesk::Int32 ACRX_CMD_DOCREADLOCK = 0x00080000;
constexpr Adesk::Int32 ACRX_CMD_DOCEXCLUSIVELOCK = 0x00100000;
constexpr Adesk::Int32 ACRX_CMD_SESSION = 0x00200000;
constexpr Adesk::Int32 ACRX_CMD_INTERRUPTIBLE = 0x00400000;
constexpr Adesk::Int32 ACRX_CMD_NOHISTORY = 0x00800000;
constexpr Adesk::Int32 ACRX_CMD_NO_UNDO_MARKER = 0x01000000;
constexpr Adesk::Int32 ACRX_CMD_NOBLOCKEDITOR = 0x02000000;
constexpr Adesk::Int32 ACRX_CMD_NOACTIONRECORDING = 0x04000000;
constexpr Adesk::Int32 ACRX_CMD_ACTIONMACRO = 0x08000000;

class QX_HOST_API AcEdCommand : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommand)

    virtual const ACHAR* globalName() const = 0;
    virtual const ACHAR* localName() const = 0;
    virtual Adesk::Int32 commandFlags() const = 0;
    virtual AcRxFunctionPtr functionAddr() const = 0;
    virtual AcEdUIContext* UIContext() const = 0;
};

class QX_HOST_API AcEdCommandStack : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcEdCommandStack)

    /// Registers a command; a missing group is made, a missing local name is the global one. While the
    /// command runs, `hResourceHandle`, when not null, is the current resource handle. Replaces an entry
    /// whose module is gone. eDuplicateKey, with nothing changed: the group has a command with that global or
    /// that local name. eInvalidInput: no group, global name or function.
    virtual Acad::ErrorStatus addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                                         const ACHAR* cmdLocalName, Adesk::Int32 commandFlags,
                                         AcRxFunctionPtr functionAddr, AcEdUIContext* UIContext = nullptr,
                                         int fcode = -1, HINSTANCE hResourceHandle = nullptr,
                                         AcEdCommand** cmdPtrRet = nullptr) = 0;

    /// eOk or eKeyNotFound. A group goes with its last command.
    virtual Acad::ErrorStatus removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName) = 0;
    virtual Acad::ErrorStatus removeGroup(const ACHAR* groupName) = 0;

    /// The command of the newest group that has the name, or null: by global name, by local name, by either.
    virtual AcEdCommand* lookupGlobalCmd(const ACHAR* name) = 0;
    virtual AcEdCommand* lookupLocalCmd(const ACHAR* name) = 0;
    virtual AcEdCommand* lookupCmd(const ACHAR* name) = 0;
};

#define acedRegCmds AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_T("ACAD_REGISTERED_COMMANDS")))
