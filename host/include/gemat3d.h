// Affine maps of space. Column vectors: p' = M p, and A * B applies B first. Row 3 is always (0, 0, 0, 1) and
// takes no part in any operation. Each setTo... replaces the whole matrix.
#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"

class AcGeLine3d;

class AcGeMatrix3d {
public:
    static const AcGeMatrix3d kIdentity;

    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    /// The identity.
    constexpr AcGeMatrix3d() = default;

    constexpr double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
    constexpr double& operator()(unsigned row, unsigned column) { return entry[row][column]; }

    constexpr AcGeMatrix3d operator*(const AcGeMatrix3d& m) const {
        AcGeMatrix3d product;
        for (int row = 0; row < 3; ++row) {
            const double* e = entry[row];
            for (int column = 0; column < 4; ++column)
                product.entry[row][column] =
                    e[0] * m.entry[0][column] + e[1] * m.entry[1][column] + e[2] * m.entry[2][column];
            product.entry[row][3] += e[3];
        }
        return product;
    }
    constexpr AcGeMatrix3d& operator*=(const AcGeMatrix3d& m) { return *this = *this * m; }
    constexpr AcGePoint3d operator*(const AcGePoint3d& p) const {
        return {entry[0][0] * p.x + entry[0][1] * p.y + entry[0][2] * p.z + entry[0][3],
                entry[1][0] * p.x + entry[1][1] * p.y + entry[1][2] * p.z + entry[1][3],
                entry[2][0] * p.x + entry[2][1] * p.y + entry[2][2] * p.z + entry[2][3]};
    }
    /// The linear part only.
    constexpr AcGeVector3d operator*(const AcGeVector3d& v) const {
        return {entry[0][0] * v.x + entry[0][1] * v.y + entry[0][2] * v.z,
                entry[1][0] * v.x + entry[1][1] * v.y + entry[1][2] * v.z,
                entry[2][0] * v.x + entry[2][1] * v.y + entry[2][2] * v.z};
    }

    constexpr AcGeMatrix3d& setToIdentity() { return *this = {}; }
    constexpr AcGeMatrix3d& setToTranslation(const AcGeVector3d& v) {
        setToIdentity();
        return setColumn(3, v);
    }
    /// Turn by radians about the axis (of any length) through `center`; a zero axis gives the identity.
    AcGeMatrix3d& setToRotation(double angle, const AcGeVector3d& axis,
                                const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        setToIdentity();
        if (axis.isZeroLength()) return *this;
        const AcGeVector3d a = axis.normal();
        const double c = std::cos(angle), s = std::sin(angle), d = 1 - c;
        // aa + c (1 - aa) rather than c + d aa: a turn about a main axis leaves that axis exactly alone.
        setColumn(0, {a.x * a.x + c * (1 - a.x * a.x), d * a.x * a.y + s * a.z, d * a.x * a.z - s * a.y});
        setColumn(1, {d * a.x * a.y - s * a.z, a.y * a.y + c * (1 - a.y * a.y), d * a.y * a.z + s * a.x});
        setColumn(2, {d * a.x * a.z + s * a.y, d * a.y * a.z - s * a.x, a.z * a.z + c * (1 - a.z * a.z)});
        return keepFixed(center);
    }
    constexpr AcGeMatrix3d& setToScaling(double scale, const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return setCoordSystem({}, {scale, 0, 0}, {0, scale, 0}, {0, 0, scale}).keepFixed(center);
    }
    /// Half a turn about the line; a degenerate one gives the identity. Include geline3d.h to call it.
    AcGeMatrix3d& setToMirroring(const AcGeLine3d& line);
    /// Takes (1,0,0), (0,1,0), (0,0,1) to the axes and (0,0,0) to the origin given.
    constexpr AcGeMatrix3d& setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
        setToIdentity();
        return setColumn(0, xAxis).setColumn(1, yAxis).setColumn(2, zAxis).setColumn(3, origin.asVector());
    }
    constexpr void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
        origin = AcGePoint3d::kOrigin + column(3);
        xAxis = column(0);
        yAxis = column(1);
        zAxis = column(2);
    }

    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d{}.setToRotation(angle, axis, center);
    }
    static constexpr AcGeMatrix3d translation(const AcGeVector3d& v) {
        return AcGeMatrix3d{}.setToTranslation(v);
    }
    static constexpr AcGeMatrix3d scaling(double scale, const AcGePoint3d& center = AcGePoint3d::kOrigin) {
        return AcGeMatrix3d{}.setToScaling(scale, center);
    }
    static AcGeMatrix3d mirroring(const AcGeLine3d& line);
    constexpr AcGeVector3d translation() const { return column(3); }

    /// Determinant: the factor by which volumes grow, negative when the map mirrors.
    constexpr double det() const { return column(0).dotProduct(column(1).crossProduct(column(2))); }
    /// True when there is no inverse: the determinant is zero or not a number.
    bool isSingular() const { return !(std::abs(det()) > 0); }
    /// The map that undoes this one; a singular matrix is returned as it is.
    AcGeMatrix3d inverse() const {
        if (isSingular()) return *this;
        const AcGeVector3d x = column(0), y = column(1), z = column(2);
        const AcGeVector3d rows[] = {y.crossProduct(z) / det(), z.crossProduct(x) / det(),
                                     x.crossProduct(y) / det()};
        AcGeMatrix3d inverted;
        for (unsigned row = 0; row < 3; ++row) {
            for (unsigned i = 0; i < 3; ++i) inverted.entry[row][i] = rows[row][i];
            inverted.entry[row][3] = -rows[row].dotProduct(column(3));
        }
        return inverted;
    }
    AcGeMatrix3d& invert() { return *this = inverse(); }

    /// Columns compared by the vector tolerance, the translation by the point tolerance.
    bool isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol = AcGeContext::gTol) const {
        return column(0).isEqualTo(m.column(0), tol) && column(1).isEqualTo(m.column(1), tol) &&
               column(2).isEqualTo(m.column(2), tol) &&
               (column(3) - m.column(3)).length() <= tol.equalPoint();
    }
    /// Equality within the default tolerance.
    bool operator==(const AcGeMatrix3d& m) const { return isEqualTo(m); }
    /// True for rotations, mirrorings, translations and one scale for all directions: circles stay circles.
    bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const {
        const double x = column(0).length(), y = column(1).length(), z = column(2).length();
        return std::abs(x - y) <= tol.equalPoint() * x && std::abs(x - z) <= tol.equalPoint() * x &&
               isRightAngled(0, 1, tol) && isRightAngled(0, 2, tol) && isRightAngled(1, 2, tol);
    }

private:
    constexpr AcGeVector3d column(int i) const { return {entry[0][i], entry[1][i], entry[2][i]}; }
    constexpr AcGeMatrix3d& setColumn(int i, const AcGeVector3d& v) {
        entry[0][i] = v.x;
        entry[1][i] = v.y;
        entry[2][i] = v.z;
        return *this;
    }
    constexpr AcGeMatrix3d& keepFixed(const AcGePoint3d& center) {
        return setColumn(3, center.asVector() - *this * center.asVector());
    }
    bool isRightAngled(int i, int j, const AcGeTol& tol) const {
        return std::abs(column(i).normal(tol).dotProduct(column(j).normal(tol))) <= tol.equalPoint();
    }
};

inline constexpr AcGeMatrix3d AcGeMatrix3d::kIdentity{};

inline AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
    return transformBy(AcGeMatrix3d::rotation(angle, axis));
}
inline AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }
inline AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& m) { return *this = m * *this; }
