// An opening that ends with its scope.
#pragma once

#include "dbmain.h"

template <class T> class AcDbObjectPointer {
public:
    AcDbObjectPointer() = default;
    explicit AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                               bool openErased = false) {
        open(id, mode, openErased);
    }
    ~AcDbObjectPointer() { close(); }
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;

    /// Closes what was open before.
    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) {
        close();
        status_ = acdbOpenObject(object_, id, mode, openErased);
        return status_;
    }
    Acad::ErrorStatus close() {
        if (!object_) return Acad::eNullObjectPointer;
        const Acad::ErrorStatus status = object_->close();
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        return status;
    }

    Acad::ErrorStatus openStatus() const { return status_; }
    T* object() const { return object_; }
    T* operator->() const { return object_; }
    operator T*() const { return object_; }

private:
    T* object_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNullObjectPointer;
};
