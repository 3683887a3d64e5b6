#include "ed/statusNames.h"

namespace qx::ed {

// The compiler names the values that are missing here.
const char* nameOf(Acad::ErrorStatus status) {
    switch (status) {
    case Acad::eOk:
        return "eOk";
    case Acad::eNotImplementedYet:
        return "eNotImplementedYet";
    case Acad::eNotApplicable:
        return "eNotApplicable";
    case Acad::eInvalidInput:
        return "eInvalidInput";
    case Acad::eOutOfMemory:
        return "eOutOfMemory";
    case Acad::eNullHandle:
        return "eNullHandle";
    case Acad::eNullObjectPointer:
        return "eNullObjectPointer";
    case Acad::eNullObjectId:
        return "eNullObjectId";
    case Acad::eNullEntityPointer:
        return "eNullEntityPointer";
    case Acad::eIllegalEntityType:
        return "eIllegalEntityType";
    case Acad::eKeyNotFound:
        return "eKeyNotFound";
    case Acad::eDuplicateKey:
        return "eDuplicateKey";
    case Acad::eInvalidIndex:
        return "eInvalidIndex";
    case Acad::eAlreadyInDb:
        return "eAlreadyInDb";
    case Acad::eInvalidExtents:
        return "eInvalidExtents";
    case Acad::eInvalidAdsName:
        return "eInvalidAdsName";
    case Acad::eInvalidKey:
        return "eInvalidKey";
    case Acad::eWrongObjectType:
        return "eWrongObjectType";
    case Acad::eWrongDatabase:
        return "eWrongDatabase";
    case Acad::eNotOpenForRead:
        return "eNotOpenForRead";
    case Acad::eNotOpenForWrite:
        return "eNotOpenForWrite";
    case Acad::eNotThatKindOfClass:
        return "eNotThatKindOfClass";
    case Acad::eWasErased:
        return "eWasErased";
    case Acad::ePermanentlyErased:
        return "ePermanentlyErased";
    case Acad::eWasOpenForRead:
        return "eWasOpenForRead";
    case Acad::eWasOpenForWrite:
        return "eWasOpenForWrite";
    case Acad::eWasOpenForUndo:
        return "eWasOpenForUndo";
    case Acad::eWasNotifying:
        return "eWasNotifying";
    case Acad::eWasOpenForNotify:
        return "eWasOpenForNotify";
    case Acad::eOnLockedLayer:
        return "eOnLockedLayer";
    case Acad::eMustOpenThruOwner:
        return "eMustOpenThruOwner";
    case Acad::eSubentitiesStillOpen:
        return "eSubentitiesStillOpen";
    case Acad::eAtMaxReaders:
        return "eAtMaxReaders";
    case Acad::eCannotScaleNonUniformly:
        return "eCannotScaleNonUniformly";
    case Acad::eBadColorIndex:
        return "eBadColorIndex";
    case Acad::eAlreadyInGroup:
        return "eAlreadyInGroup";
    case Acad::eCantOpenFile:
        return "eCantOpenFile";
    case Acad::eNullExtents:
        return "eNullExtents";
    case Acad::eLockViolation:
        return "eLockViolation";
    case Acad::eHadMultipleReaders:
        return "eHadMultipleReaders";
    case Acad::eNoDocument:
        return "eNoDocument";
    case Acad::eNoDatabase:
        return "eNoDatabase";
    }
    return "unknown status";
}

} // namespace qx::ed
