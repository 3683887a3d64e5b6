#include "ed/points.h"

#include <charconv>
#include <cmath>

namespace qx::ed {

std::optional<double> parseReal(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<TypedPoint> parsePoint(std::string_view text) {
    TypedPoint point;
    if (text.starts_with('@')) point.frame = TypedPoint::Frame::relative;
    if (text.starts_with('*')) point.frame = TypedPoint::Frame::world;
    if (point.frame != TypedPoint::Frame::user) text.remove_prefix(1);

    std::size_t count = 0;
    for (bool more = true; more; ++count) {
        if (count == point.coordinates.size()) return std::nullopt;
        const std::size_t comma = text.find(',');
        more = comma != std::string_view::npos;
        const auto value = parseReal(text.substr(0, comma));
        if (!value) return std::nullopt;
        point.coordinates[count] = *value;
        if (more) text.remove_prefix(comma + 1);
    }
    if (count < 2) return std::nullopt;
    return point;
}

std::string textOf(const AcGePoint3d& point, char between) {
    const auto shortest = [](double value) {
        char digits[32];
        return std::string{digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
    };
    return shortest(point.x) + between + shortest(point.y) + between + shortest(point.z);
}

} // namespace qx::ed
