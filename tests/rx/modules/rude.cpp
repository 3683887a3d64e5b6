// A module that throws: at once when it is loaded, or out of its command, in the middle of its work.
#include "acedads.h"
#include "arxEntryPoint.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbobjptr.h"

#include <stdexcept>

static char self; // any address of the module's will do as its instance
HINSTANCE _hdllInstance = reinterpret_cast<HINSTANCE>(&self);

class RudeApp : public AcRxArxApp {
public:
    void RegisterServerComponents() override {}

    AcRx::AppRetCode On_kInitAppMsg(void* packet) override {
        if (AT_ONCE) throw std::runtime_error{"no ink"};
        return AcRxArxApp::On_kInitAppMsg(packet);
    }

    static void QxRudeErase() {
        ads_name set = {}, name = {};
        acedSSGet(L"_L", nullptr, nullptr, nullptr, set);
        acedSSName(set, 0, name);
        AcDbObjectId id;
        acdbGetObjectId(id, name);
        AcDbEntity* entity = nullptr;
        if (acdbOpenObject(entity, id, AcDb::kForWrite) == Acad::eOk) entity->erase();
        throw std::runtime_error{"out of ink"};
    }
};

ACED_ARXCOMMAND_ENTRY_AUTO(RudeApp, Qx, RudeErase, RudeErase, ACRX_CMD_MODAL, nullptr);

IMPLEMENT_ARX_ENTRYPOINT(RudeApp)
