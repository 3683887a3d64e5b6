#include "rxclass.h"

AcRxClass* AcRxObject::desc() {
    static AcRxClass descriptor{L"AcRxObject", nullptr};
    return &descriptor;
}

AcRxClass* AcRxObject::isA() const { return desc(); }

bool AcRxObject::isKindOf(const AcRxClass* other) const { return isA()->isDerivedFrom(other); }

AcRxClass::AcRxClass(const ACHAR* name, AcRxClass* parent, const ACHAR* dxfName)
    : name_{name}, parent_{parent}, dxfName_{dxfName} {}

ACRX_DEFINE_MEMBERS(AcRxClass, AcRxObject, nullptr)
