#include "accmd.h"
#include "acdocman.h"
#include "ed/Session.h"
#include "os/encoding.h"

namespace {

using qx::ed::Session;

class DocumentManager final : public AcApDocManager {
public:
    AcApDocument* curDocument() const override {
        const Session* session = Session::current();
        return session ? session->document() : nullptr;
    }

    AcApDocument* mdiActiveDocument() const override { return curDocument(); }

    bool isApplicationContext() const override {
        const Session* session = Session::current();
        return !session || !session->isCommandActive() || (session->commandFlags & ACRX_CMD_SESSION) != 0;
    }

    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text, bool, bool,
                                          bool echo) override {
        if (!document || !text) return Acad::eInvalidInput;
        if (document != curDocument()) return Acad::eNoDocument;
        Session::current()->line().queue(qx::os::toUtf8(text), echo);
        return Acad::eOk;
    }
};

} // namespace

AcApDocManager* acDocManagerPtr() {
    static DocumentManager manager;
    return &manager;
}
