// Class descriptors: what isA(), desc() and cast() speak of. One descriptor per class, made when it is first
// asked for, alive until the process ends.
#pragma once

#include "rxobject.h"

class QX_HOST_API AcRxClass : public AcRxObject {
public:
    /// `parent` is null for the root of the hierarchy only; `dxfName` is null for classes that no drawing
    /// names.
    constexpr AcRxClass(const ACHAR* name, AcRxClass* parent, const ACHAR* dxfName = nullptr)
        : name_{name}, parent_{parent}, dxfName_{dxfName} {}
    constexpr ~AcRxClass() override = default;

    static AcRxClass* desc() { return &descriptor_; }
    AcRxClass* isA() const override;
    static AcRxClass descriptor_;

    const ACHAR* name() const { return name_; }
    const ACHAR* dxfName() const { return dxfName_; }
    AcRxClass* myParent() const { return parent_; }

    /// True for the class itself and for every class above it.
    bool isDerivedFrom(const AcRxClass* other) const {
        for (const AcRxClass* each = this; each; each = each->parent_)
            if (each == other) return true;
        return false;
    }

private:
    const ACHAR* name_;
    AcRxClass* parent_;
    const ACHAR* dxfName_;
};
