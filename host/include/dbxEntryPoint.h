// Application object of a module that serves the database. It receives the host's messages, one virtual
// handler each; what it does itself is the registration that every module needs. Handlers that are not
// overridden do nothing.
#pragma once

#include "qxtable.h"
#include "rxdefs.h"
#include "rxdlinkr.h"
#include "rxmfcapi.h"
#include "rxregsvc.h"

#include <iterator>

/// The module's own instance, under which its resources are found. The module defines it, where it is
/// attached.
extern HINSTANCE _hdllInstance;

namespace qx::module {

/// A database class that the module brings along.
struct ClassEntry {
    AcRxClass* (*descriptor)();
};

QX_DECLARE_TABLE(qxclasses, ClassEntry, classTable)

} // namespace qx::module

/// Adds CLASS to the module's classes.
#define ACDB_REGISTER_OBJECT_ENTRY_AUTO(CLASS)                                                               \
    QX_TABLE_ENTRY(qxclasses, qx::module::ClassEntry, classEntry_##CLASS, &CLASS::desc)

class AcRxDbxApp {
public:
    // In the order of the message codes from kInitAppMsg on, the null message behind them.

    /// Lets the host unload the module, and announces the module's classes.
    virtual AcRx::AppRetCode On_kInitAppMsg(void* pkt) {
        packet_ = pkt;
        acrxUnlockApplication(pkt);
        acrxDynamicLinker->registerAppMDIAware(pkt);
        const auto classes = qx::module::classTable();
        for (const auto* entry : classes)
            if (entry) entry->descriptor(); // a descriptor announces itself when it is made
        if (!classes.empty()) acrxBuildClassHierarchy();
        return AcRx::kRetOK;
    }
    virtual AcRx::AppRetCode On_kUnloadAppMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kLoadDwgMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kUnloadDwgMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kInvkSubrMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kCfgMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kEndMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kQuitMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kSaveMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kDependencyMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kNoDependencyMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kOleUnloadAppMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kPreQuitMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kInitDialogMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kEndDialogMsg(void*) { return AcRx::kRetOK; }
    virtual AcRx::AppRetCode On_kNullMsg(void*) { return AcRx::kRetOK; }

    virtual void RegisterServerComponents() = 0;

    /// Hands a message to its handler; later messages than kEndDialogMsg are answered with kRetOK.
    AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
        using Handler = AcRx::AppRetCode (AcRxDbxApp::*)(void*);
        static constexpr Handler handlers[] = {
            &AcRxDbxApp::On_kNullMsg,         &AcRxDbxApp::On_kInitAppMsg,
            &AcRxDbxApp::On_kUnloadAppMsg,    &AcRxDbxApp::On_kLoadDwgMsg,
            &AcRxDbxApp::On_kUnloadDwgMsg,    &AcRxDbxApp::On_kInvkSubrMsg,
            &AcRxDbxApp::On_kCfgMsg,          &AcRxDbxApp::On_kEndMsg,
            &AcRxDbxApp::On_kQuitMsg,         &AcRxDbxApp::On_kSaveMsg,
            &AcRxDbxApp::On_kDependencyMsg,   &AcRxDbxApp::On_kNoDependencyMsg,
            &AcRxDbxApp::On_kOleUnloadAppMsg, &AcRxDbxApp::On_kPreQuitMsg,
            &AcRxDbxApp::On_kInitDialogMsg,   &AcRxDbxApp::On_kEndDialogMsg,
        };
        const auto code = static_cast<unsigned>(msg);
        return code < std::size(handlers) ? (this->*handlers[code])(pkt) : AcRx::kRetOK;
    }

protected:
    AcRxDbxApp() = default;
    ~AcRxDbxApp() = default; // the object is static, and never deleted through this class

    /// What the host gave with the first message: the module's identity towards the linker.
    void* packet_ = nullptr;
};
