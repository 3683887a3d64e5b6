// Documents: the open drawings and where their commands run. This host has one document at most.
#pragma once

#include "acadstrc.h"
#include "adesk.h"
#include "qxexport.h"

class AcDbDatabase;

class QX_HOST_API AcApDocument {
public:
    explicit AcApDocument(AcDbDatabase& database) : database_{database} {}
    AcDbDatabase* database() const { return &database_; }

private:
    AcDbDatabase& database_;
};

class QX_HOST_API AcApDocManager {
public:
    virtual ~AcApDocManager() = default;

    /// The document whose context runs; null when no drawing is open.
    virtual AcApDocument* curDocument() const = 0;
    /// The document that has the person's attention: the same one here.
    virtual AcApDocument* mdiActiveDocument() const = 0;
    /// False while a command runs in its document.
    virtual bool isApplicationContext() const = 0;

    /// Queues text to be read as typed input by the next prompt; a space or a line feed in it is Enter, the
    /// character 3 cancels. `activate` and `wrapUpInactive` make no difference with one document; without
    /// `echo` the text is not shown. eInvalidInput for null arguments, eNoDocument for a document that is not
    /// open.
    virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                                  bool activate = true, bool wrapUpInactive = false,
                                                  bool echo = true) = 0;
};

QX_HOST_API AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
