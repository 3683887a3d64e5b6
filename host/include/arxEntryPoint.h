// Application object of a module with commands and LISP functions. Sources announce them by macro beside the
// class; the object registers them when the module is loaded (commands) or a drawing is (functions), and
// takes them back.
#pragma once

#include "accmd.h"
#include "acedads.h"
#include "dbxEntryPoint.h"

namespace qx::module {

struct CommandEntry {
    const ACHAR* group;
    const ACHAR* globalName;
    const ACHAR* localName; ///< null: the string `localNameId` of the module, or the global name without one
    Adesk::Int32 flags;
    AcRxFunctionPtr function;
    AcEdUIContext* uiContext;
    unsigned localNameId;
};

struct LispEntry {
    const ACHAR* name; ///< null: the string `nameId` of the module; without one the function is not defined
    int (*function)();
    bool calledDirectly; ///< by acedRegFunc, without a message
    unsigned nameId;
};

QX_DECLARE_TABLE(qxcommands, CommandEntry, commandTable)
QX_DECLARE_TABLE(qxlisp, LispEntry, lispTable)

} // namespace qx::module

/// A command whose function is the static member CLASS::GROUPGLOBAL, under a local name of its own.
#define ACED_ARXCOMMAND_ENTRY_AUTO(CLASS, GROUP, GLOBAL, LOCAL, FLAGS, UICONTEXT)                            \
    QX_TABLE_ENTRY(qxcommands, qx::module::CommandEntry, commandEntry_##GROUP##GLOBAL, L## #GROUP,           \
                   L## #GLOBAL, L## #LOCAL, FLAGS, &CLASS::GROUP##GLOBAL, UICONTEXT, 0)

/// The same with the local name in the module's string table.
#define ACED_ARXCOMMAND_ENTRYBYID_AUTO(CLASS, GROUP, GLOBAL, LOCALID, FLAGS, UICONTEXT)                      \
    QX_TABLE_ENTRY(qxcommands, qx::module::CommandEntry, commandEntry_##GROUP##GLOBAL, L## #GROUP,           \
                   L## #GLOBAL, nullptr, FLAGS, &CLASS::GROUP##GLOBAL, UICONTEXT, LOCALID)

/// A LISP function whose body is the static member CLASS::ads_NAME.
#define ACED_ADSSYMBOL_ENTRY_AUTO(CLASS, NAME, REGFUNC)                                                      \
    QX_TABLE_ENTRY(qxlisp, qx::module::LispEntry, lispEntry_##NAME, L## #NAME, &CLASS::ads_##NAME, REGFUNC, 0)

/// The same with the name in the module's string table.
#define ACED_ADSSYMBOL_ENTRYBYID_AUTO(CLASS, NAME, NAMEID, REGFUNC)                                          \
    QX_TABLE_ENTRY(qxlisp, qx::module::LispEntry, lispEntry_##NAME, nullptr, &CLASS::ads_##NAME, REGFUNC,    \
                   NAMEID)

/// The module's one application object and its two exports.
#define IMPLEMENT_ARX_ENTRYPOINT(CLASS)                                                                      \
    static CLASS theApp;                                                                                     \
    extern "C" QX_MODULE_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {              \
        return theApp.acrxEntryPoint(msg, pkt);                                                              \
    }                                                                                                        \
    extern "C" QX_MODULE_API int acrxGetApiVersion() { return qxHostApiVersion; }

class AcRxArxApp : public AcRxDbxApp {
public:
    /// Registers the commands, those of the application context without the module's resources. What the
    /// command stack answers is ignored.
    AcRx::AppRetCode On_kInitAppMsg(void* pkt) override {
        const AcRx::AppRetCode result = AcRxDbxApp::On_kInitAppMsg(pkt);
        for (const auto* entry : qx::module::commandTable())
            if (entry) registerCommand(*entry);
        return result;
    }

    /// Takes the commands back.
    AcRx::AppRetCode On_kUnloadAppMsg(void* pkt) override {
        const AcRx::AppRetCode result = AcRxDbxApp::On_kUnloadAppMsg(pkt);
        for (const auto* entry : qx::module::commandTable())
            if (entry) acedRegCmds->removeCmd(entry->group, entry->globalName);
        return result;
    }

    /// Defines the LISP functions, each under its index in the table.
    AcRx::AppRetCode On_kLoadDwgMsg(void* pkt) override {
        const AcRx::AppRetCode result = AcRxDbxApp::On_kLoadDwgMsg(pkt);
        forEachFunction([this](const qx::module::LispEntry& entry, int index) {
            ACHAR loaded[nameCapacity];
            const ACHAR* name = nameOf(entry, loaded);
            if (!name) return;
            acedDefun(name, index);
            if (entry.calledDirectly) acedRegFunc(entry.function, index);
        });
        return result;
    }

    AcRx::AppRetCode On_kUnloadDwgMsg(void* pkt) override {
        const AcRx::AppRetCode result = AcRxDbxApp::On_kUnloadDwgMsg(pkt);
        forEachFunction([this](const qx::module::LispEntry& entry, int index) {
            ACHAR loaded[nameCapacity];
            const ACHAR* name = nameOf(entry, loaded);
            if (name) acedUndef(name, index);
        });
        return result;
    }

    /// Calls the function whose index the host asks for.
    AcRx::AppRetCode On_kInvkSubrMsg(void* pkt) override {
        AcRxDbxApp::On_kInvkSubrMsg(pkt);
        const int wanted = acedGetFunCode();
        forEachFunction([wanted](const qx::module::LispEntry& entry, int index) {
            if (index == wanted) entry.function();
        });
        return AcRx::kRetOK;
    }

protected:
    static constexpr int nameCapacity = 132;

    AcRxArxApp() = default;
    ~AcRxArxApp() = default;

    /// Reads a name from the module's string table; false without such a string.
    virtual bool loadLocalName(unsigned id, ACHAR (&buffer)[nameCapacity]) {
        return qxLoadString(_hdllInstance, id, buffer, nameCapacity) > 0;
    }

private:
    const ACHAR* nameOf(const qx::module::LispEntry& entry, ACHAR (&buffer)[nameCapacity]) {
        if (entry.name) return entry.name;
        return loadLocalName(entry.nameId, buffer) ? buffer : nullptr;
    }

    void registerCommand(const qx::module::CommandEntry& entry) {
        ACHAR loaded[nameCapacity];
        const ACHAR* local = entry.localName;
        if (!local) local = loadLocalName(entry.localNameId, loaded) ? loaded : entry.globalName;
        const HINSTANCE resources = entry.flags & ACRX_CMD_SESSION ? nullptr : _hdllInstance;
        acedRegCmds->addCommand(entry.group, entry.globalName, local, entry.flags, entry.function,
                                entry.uiContext, -1, resources);
    }

    template <class Action> static void forEachFunction(Action action) {
        int index = 0;
        for (const auto* entry : qx::module::lispTable())
            if (entry) action(*entry, index++);
    }
};
