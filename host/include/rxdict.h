// A dictionary of objects by name. Names compare without regard to the case of ASCII letters. Objects stay
// their owners' property.
#pragma once

#include "rxclass.h"

class QX_HOST_API AcRxDictionary : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxDictionary)

    /// The object with this name, or null.
    virtual AcRxObject* at(const ACHAR* key) const = 0;
    /// Enters an object, gives the one that had the name (or null) and the entry's number.
    virtual AcRxObject* atPut(const ACHAR* key, AcRxObject* object, Adesk::Int32& number) = 0;
    /// Takes an entry out and gives its object, or null when there is none.
    virtual AcRxObject* remove(const ACHAR* key) = 0;
    virtual bool has(const ACHAR* key) const = 0;
};

/// The one dictionary in which the host's services are found.
QX_HOST_API AcRxDictionary* acrxSysRegistry();
