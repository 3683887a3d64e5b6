// Plain arrays of two or three doubles looked at as points and vectors, and back. Nothing is copied: the
// result lives as long as the argument.
#pragma once

#include "gepnt2d.h"
#include "gepnt3d.h"

static_assert(sizeof(AcGePoint2d) == sizeof(double[2]) && sizeof(AcGePoint3d) == sizeof(double[3]) &&
              sizeof(AcGeVector2d) == sizeof(double[2]) && sizeof(AcGeVector3d) == sizeof(double[3]));

inline AcGePoint2d& asPnt2d(double* p) { return *reinterpret_cast<AcGePoint2d*>(p); }
inline const AcGePoint2d& asPnt2d(const double* p) { return *reinterpret_cast<const AcGePoint2d*>(p); }
inline AcGePoint3d& asPnt3d(double* p) { return *reinterpret_cast<AcGePoint3d*>(p); }
inline const AcGePoint3d& asPnt3d(const double* p) { return *reinterpret_cast<const AcGePoint3d*>(p); }
inline AcGeVector2d& asVec2d(double* v) { return *reinterpret_cast<AcGeVector2d*>(v); }
inline const AcGeVector2d& asVec2d(const double* v) { return *reinterpret_cast<const AcGeVector2d*>(v); }
inline AcGeVector3d& asVec3d(double* v) { return *reinterpret_cast<AcGeVector3d*>(v); }
inline const AcGeVector3d& asVec3d(const double* v) { return *reinterpret_cast<const AcGeVector3d*>(v); }

inline double* asDblArray(AcGePoint2d& p) { return &p.x; }
inline const double* asDblArray(const AcGePoint2d& p) { return &p.x; }
inline double* asDblArray(AcGePoint3d& p) { return &p.x; }
inline const double* asDblArray(const AcGePoint3d& p) { return &p.x; }
inline double* asDblArray(AcGeVector2d& v) { return &v.x; }
inline const double* asDblArray(const AcGeVector2d& v) { return &v.x; }
inline double* asDblArray(AcGeVector3d& v) { return &v.x; }
inline const double* asDblArray(const AcGeVector3d& v) { return &v.x; }
