#include "tests/positionalign/Boxes.h"

#include <cmath>
#include <cstdio>
#include <sstream>

namespace qx::tests {
using namespace drawings;
namespace {
using positionalign::Axis;

/// A corner with the given coordinate along the axis.
AcGePoint3d corner(Axis axis, double along, double across) {
    return axis == Axis::x ? AcGePoint3d{along, across, 0} : AcGePoint3d{across, along, 0};
}

Handle drawMember(DrawingText& drawing, const std::string& text, Axis axis, double across) {
    if (text == "void") return drawing.add("TEXT|10 0|20 0|30 0|40 2.5|1  ");
    const std::size_t dots = text.find("..");
    const double min = std::stod(text), max = std::stod(text.substr(dots + 2));
    return drawing.line(corner(axis, min, across), corner(axis, max, across + 3),
                        text.back() == 'L' ? "LOCKED" : "0");
}

std::vector<std::string> split(const std::string& text, char at) {
    std::vector<std::string> parts;
    std::istringstream stream{text};
    for (std::string part; std::getline(stream, part, at);) parts.push_back(part);
    return parts;
}

std::string inSpace(const AcGeVector3d& shift, Axis) {
    return shortened(shift.x) + "," + shortened(shift.y) + "," + shortened(shift.z);
}

std::string alongAxis(const AcGeVector3d& shift, Axis axis) {
    const double across = axis == Axis::x ? shift.y : shift.x;
    if (across != 0 || shift.z != 0) return "?";
    return shortened(axis == Axis::x ? shift.x : shift.y);
}

bool isMovedOnly(const AcDbExtents& before, const AcDbExtents& after) {
    const AcGeVector3d sizeBefore = before.maxPoint() - before.minPoint();
    const AcGeVector3d sizeAfter = after.maxPoint() - after.minPoint();
    return (sizeAfter - sizeBefore).length() <= 1e-9;
}
} // namespace

std::vector<Item> drawRow(DrawingText& drawing, const std::string& row, Axis axis) {
    std::vector<Item> items;
    double across = 0;
    for (const std::string& item : split(row, ' ')) {
        items.emplace_back();
        for (const std::string& member : split(item, '+'))
            items.back().push_back(drawMember(drawing, member, axis, across += 7));
    }
    return items;
}

Positions::Positions(const db::Drawing& drawing, const std::vector<Item>& items)
    : drawing_{drawing}, items_{items} {
    for (const Item& item : items) {
        before_.emplace_back();
        for (const Handle member : item) before_.back().push_back(boxOf(drawing, member));
    }
}

std::string Positions::joined(std::string (*text)(const AcGeVector3d&, Axis), Axis axis) const {
    std::string all;
    for (std::size_t i = 0; i < items_.size(); ++i) {
        std::string item;
        for (std::size_t m = 0; m < items_[i].size(); ++m) {
            const AcDbExtents &was = before_[i][m], is = boxOf(drawing_, items_[i][m]);
            const std::string shift = isMovedOnly(was, is) ? text(is.minPoint() - was.minPoint(), axis) : "?";
            if (m == 0)
                item = shift;
            else if (item != shift)
                item += "|" + shift;
        }
        all += (i ? " " : "") + item;
    }
    return all;
}

std::string Positions::shiftsAlong(Axis axis) const { return joined(alongAxis, axis); }

std::string Positions::shifts() const { return joined(inSpace, Axis::x); }

std::string shortened(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.12g", std::round(value * 1e9) / 1e9 + 0.0);
    return text;
}

} // namespace qx::tests
