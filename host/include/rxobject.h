// Root of everything with a run-time class.
#pragma once

#include "adesk.h"
#include "qxexport.h"

class AcRxClass;

class QX_HOST_API AcRxObject {
public:
    virtual constexpr ~AcRxObject() = default;

    static AcRxClass* desc() { return &descriptor_; }
    virtual AcRxClass* isA() const;
    static AcRxClass descriptor_;
    bool isKindOf(const AcRxClass* other) const;
    /// The same object, typed, or null when it is null.
    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }

protected:
    constexpr AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

/// Declares the members that every class with a descriptor has. The host's descriptors exist before any
/// code runs, a module's before its entry point is called.
/// `cast` yields null for null and for an object of another branch of the hierarchy.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                          \
    static AcRxClass* desc() { return &descriptor_; }                                                        \
    AcRxClass* isA() const override;                                                                         \
    static AcRxClass descriptor_;                                                                            \
    static CLASS* cast(const AcRxObject* object) {                                                           \
        return object && object->isKindOf(desc()) ? const_cast<CLASS*>(static_cast<const CLASS*>(object))    \
                                                  : nullptr;                                                 \
    }

/// Defines them; DXF_NAME is the wide string that names the class in a drawing, or nullptr.
#define ACRX_DEFINE_MEMBERS(CLASS, BASE, DXF_NAME)                                                           \
    QX_CONSTINIT AcRxClass CLASS::descriptor_{L## #CLASS, &BASE::descriptor_, DXF_NAME};                     \
    AcRxClass* CLASS::isA() const { return &descriptor_; }
