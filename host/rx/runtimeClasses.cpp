#include "rxclass.h"

constinit AcRxClass AcRxObject::descriptor_{L"AcRxObject", nullptr};

AcRxClass* AcRxObject::isA() const { return desc(); }

bool AcRxObject::isKindOf(const AcRxClass* other) const { return isA()->isDerivedFrom(other); }

ACRX_DEFINE_MEMBERS(AcRxClass, AcRxObject, nullptr)
