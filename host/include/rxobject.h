// Root of everything with a run-time class.
#pragma once

#include "adesk.h"
#include "qxexport.h"

class AcRxClass;

class QX_HOST_API AcRxObject {
public:
    virtual ~AcRxObject() = default;

    static AcRxClass* desc();
    virtual AcRxClass* isA() const;
    bool isKindOf(const AcRxClass* other) const;
    /// The same object, typed, or null when it is null.
    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

/// Declares the members that every class with a descriptor has. `cast` yields null for null and for an object of
/// another branch of the hierarchy.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                          \
    static AcRxClass* desc();                                                                                \
    AcRxClass* isA() const override;                                                                         \
    static CLASS* cast(const AcRxObject* object) {                                                           \
        return object && object->isKindOf(desc())                                                            \
                   ? const_cast<CLASS*>(static_cast<const CLASS*>(object))                                   \
                   : nullptr;                                                                                \
    }

/// Defines them; DXF_NAME is the wide string that names the class in a drawing, or nullptr.
#define ACRX_DEFINE_MEMBERS(CLASS, BASE, DXF_NAME)                                                           \
    AcRxClass* CLASS::desc() {                                                                               \
        static AcRxClass descriptor{L## #CLASS, BASE::desc(), DXF_NAME};                                     \
        return &descriptor;                                                                                  \
    }                                                                                                        \
    AcRxClass* CLASS::isA() const { return desc(); }
