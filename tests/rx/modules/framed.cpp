// A module on the application-object templates, with every kind of table entry.
#include "arxEntryPoint.h"

#include <cstddef>

static char self; // any address of the module's will do as its instance
HINSTANCE _hdllInstance = reinterpret_cast<HINSTANCE>(&self);

namespace {

/// What the commands saw; the test reads it through LISP.
HINSTANCE seenHandle = nullptr;

} // namespace

class FramedApp : public AcRxArxApp {
public:
    void RegisterServerComponents() override {}

    AcRx::AppRetCode On_kSaveMsg(void*) override { return count(AcRx::kSaveMsg); }
    AcRx::AppRetCode On_kEndDialogMsg(void*) override { return count(AcRx::kEndDialogMsg); }
    AcRx::AppRetCode On_kNullMsg(void*) override { return count(AcRx::kNullMsg); }

    static void FramedModal() { seenHandle = AfxGetResourceHandle(); }
    static void FramedSession() { seenHandle = AfxGetResourceHandle(); }
    static void FramedById() {}
    static void FramedNoString() {}

    static int ads_framedByMessage() { return acedRetInt(acedGetFunCode()); }
    static int ads_framedDirect() { return acedRetStr(L"direct \"1\""); }
    static int ads_framedNamed() { return acedRetReal(acedGetFunCode() + 0.5); }
    static int ads_framedHandle() {
        return seenHandle == nullptr         ? acedRetNil()
               : seenHandle == _hdllInstance ? acedRetT()
                                             : acedRetVoid();
    }
    static int ads_framedCount() { return acedRetInt(sum); }

protected:
    bool loadLocalName(unsigned id, ACHAR (&buffer)[nameCapacity]) override {
        if (id != 7) return AcRxArxApp::loadLocalName(id, buffer);
        constexpr wchar_t text[] = L"名称七";
        for (std::size_t i = 0; i < std::size(text); ++i) buffer[i] = text[i];
        return true;
    }

private:
    static AcRx::AppRetCode count(int message) {
        sum = sum * 100 + message;
        return AcRx::kRetOK;
    }
    static inline int sum = 1;
};

ACED_ARXCOMMAND_ENTRY_AUTO(FramedApp, Framed, Modal, ModalLocal, ACRX_CMD_MODAL, nullptr);
ACED_ARXCOMMAND_ENTRY_AUTO(FramedApp, Framed, Session, SessionLocal, ACRX_CMD_SESSION, nullptr);
ACED_ARXCOMMAND_ENTRYBYID_AUTO(FramedApp, Framed, ById, 7, ACRX_CMD_MODAL, nullptr);
ACED_ARXCOMMAND_ENTRYBYID_AUTO(FramedApp, Framed, NoString, 8, ACRX_CMD_MODAL, nullptr);
ACED_ADSSYMBOL_ENTRY_AUTO(FramedApp, framedByMessage, false);
ACED_ADSSYMBOL_ENTRY_AUTO(FramedApp, framedDirect, true);
ACED_ADSSYMBOL_ENTRYBYID_AUTO(FramedApp, framedNamed, 7, false);
ACED_ADSSYMBOL_ENTRY_AUTO(FramedApp, framedHandle, false);
ACED_ADSSYMBOL_ENTRY_AUTO(FramedApp, framedCount, false);

IMPLEMENT_ARX_ENTRYPOINT(FramedApp)
