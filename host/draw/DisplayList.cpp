#include "draw/DisplayList.h"

#include "draw/PictureFrame.h"
#include "shape/ExtentsSink.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qx::draw {
namespace {

AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }
AcGeVector2d flat(const AcGeVector3d& v) { return {v.x, v.y}; }

bool meets(const shape::Box& box, const shape::Box& rectangle) {
    return box.min.x <= rectangle.max.x && box.max.x >= rectangle.min.x && box.min.y <= rectangle.max.y &&
           box.max.y >= rectangle.min.y;
}

/// So many chords that none is farther than a quarter of a pixel from the arc.
std::uint64_t chordsOf(double radiusInPixels, double sweep) {
    constexpr double error = 0.25, most = 1e15;
    if (radiusInPixels <= error) return 1;
    // acos(1 - x) = 2 asin(sqrt(x / 2)), which still tells tiny steps from none.
    const double step = 4 * std::asin(std::sqrt(error / radiusInPixels / 2));
    return static_cast<std::uint64_t>(std::clamp(std::ceil(sweep / step), 1.0, most));
}

/// Whether the view shows anything within so many pixels of the place.
bool isSeen(const View& view, const AcGePoint2d& place, double reach) {
    return place.x >= -reach && place.y >= -reach && place.x <= view.width() + reach &&
           place.y <= view.height() + reach;
}

} // namespace

class DisplayList::Recorder final : public shape::Sink {
public:
    Recorder(DisplayList& list, Item& item) : list_{list}, item_{item} {
        item.lines.begin = static_cast<std::uint32_t>(list.lines_.size());
        item.arcs.begin = static_cast<std::uint32_t>(list.arcs_.size());
        item.texts.begin = static_cast<std::uint32_t>(list.texts_.size());
        item.rays.begin = static_cast<std::uint32_t>(list.rays_.size());
    }
    ~Recorder() override {
        item_.lines.end = static_cast<std::uint32_t>(list_.lines_.size());
        item_.arcs.end = static_cast<std::uint32_t>(list_.arcs_.size());
        item_.texts.end = static_cast<std::uint32_t>(list_.texts_.size());
        item_.rays.end = static_cast<std::uint32_t>(list_.rays_.size());
        item_.box = extents_.box();
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    void segment(const shape::Segment& segment) override {
        if (!isDrawable(segment)) return;
        extents_.segment(segment);
        if (segment.isHidden) return;
        list_.lines_.push_back({flat(segment.start), flat(segment.end)});
    }
    void arc(const shape::EllipticArc& arc) override {
        if (!isDrawable(arc)) return;
        extents_.arc(arc);
        list_.arcs_.push_back({flat(arc.centre), flat(arc.u), flat(arc.v), arc.sweep});
    }
    void text(const shape::TextRun& run) override {
        if (!isDrawable(run) || run.extent.blank) return;
        extents_.text(run);
        list_.texts_.push_back(run);
    }
    void endless(const shape::Endless& endless) override {
        const AcGeVector2d along = flat(endless.along);
        if (!isDrawable(shape::Segment{endless.base, endless.base}) || !(along.length() > 0)) return;
        list_.rays_.push_back({flat(endless.base), along / along.length(), endless.goesBothWays});
    }
    // Chords that stay fine when the view comes nearer; finer ones are not worth the memory.
    void bezier(const shape::Bezier& curve) override {
        if (!isDrawable(curve)) return;
        constexpr double fine = 1e-4;
        forEachChord(curve, fine * sizeOf(hullBox(curve)),
                     [&](const shape::Segment& each) { segment(each); });
    }

private:
    DisplayList& list_;
    Item& item_;
    shape::ExtentsSink extents_;
};

DisplayList::DisplayList(const db::Drawing& drawing) : drawing_{drawing} { rebuild(); }

void DisplayList::rebuild() {
    items_.clear();
    groups_.clear();
    lines_.clear();
    arcs_.clear();
    texts_.clear();
    rays_.clear();
    endless_.clear();
    places_.clear();
    areExtentsKnown_ = false;
    drawing_.forEachInModelSpace([&](db::Record* record) {
        items_.push_back({.record = record});
        if (!isShown(record)) return; // it has its place in the order, should it come back
        take(record, items_.back());
        noteBox(items_.size() - 1);
    });
    strokesWhenBuilt_ = strokeCount();
}

bool DisplayList::isShown(db::Record* record) const {
    if (record->has(db::Record::erased) || record->has(db::Record::unusable)) return false;
    const AcDbEntity* entity = drawing_.liveEntity(record);
    return entity && entity->isMeasurable() && entity->isVisible();
}

void DisplayList::take(db::Record* record, Item& item) {
    constexpr int byLayer = 256;
    const AcDbEntity& entity = *drawing_.liveEntity(record);
    item.colour = entity.colorIndex() == byLayer ? entity.layerState().colour : entity.colorIndex();
    Recorder recorder{*this, item};
    entity.shape(recorder);
}

// A box only ever grows: what shrank is looked at in vain until the list is built anew.
void DisplayList::noteBox(std::size_t item) {
    const bool isEndless = items_[item].rays.begin != items_[item].rays.end;
    if (isEndless && !std::exchange(items_[item].isListedAsEndless, true)) endless_.push_back(item);
    if (groups_.size() <= item / groupSize) groups_.resize(item / groupSize + 1);
    groups_[item / groupSize].box.add(items_[item].box);
}

std::unordered_map<const db::Record*, std::size_t>& DisplayList::places() const {
    if (places_.empty())
        for (std::size_t i = 0; i < items_.size(); ++i) places_.emplace(items_[i].record, i);
    return places_;
}

std::size_t DisplayList::placeOf(db::Record* record) {
    const auto [place, isNew] = places().try_emplace(record, items_.size());
    if (isNew) items_.push_back({.record = record});
    return place->second;
}

void DisplayList::update(std::span<db::Record* const> records) {
    const bool concernsBlock = std::ranges::any_of(records, [&](const db::Record* each) {
        const db::Record* owner = each->owner;
        if (owner && db::isEntity(owner->kind)) owner = owner->owner;
        return db::isEntity(each->kind) && owner != drawing_.modelSpace();
    });
    if (concernsBlock || records.size() > items_.size() / 2) return rebuild();
    for (db::Record* each : records) {
        if (!db::isEntity(each->kind)) continue;
        db::Record* record = each->owner && db::isEntity(each->owner->kind) ? each->owner : each;
        Item& item = items_[placeOf(record)];
        item.lines = item.arcs = item.texts = item.rays = {};
        item.box = {};
        if (isShown(record)) take(record, item);
        noteBox(static_cast<std::size_t>(&item - items_.data()));
    }
    areExtentsKnown_ = false;
    // What was replaced is dead weight.
    if (strokeCount() > 2 * strokesWhenBuilt_ + 100000) rebuild();
}

const shape::Box& DisplayList::extents() const {
    if (!areExtentsKnown_) {
        extents_ = {};
        for (const Item& each : items_) extents_.add(each.box);
        areExtentsKnown_ = true;
    }
    return extents_;
}

template <class Visit> void DisplayList::forEachMeeting(const shape::Box& rectangle, Visit&& visit) const {
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        if (!meets(groups_[group].box, rectangle)) continue;
        const std::size_t end = std::min((group + 1) * groupSize, items_.size());
        for (std::size_t i = group * groupSize; i < end; ++i)
            if (meets(items_[i].box, rectangle)) visit(items_[i]);
    }
    for (const std::size_t each : endless_)
        if (!meets(items_[each].box, rectangle)) visit(items_[each]);
}

std::vector<db::Record*> DisplayList::meeting(const shape::Box& rectangle) const {
    std::vector<db::Record*> records;
    forEachMeeting(rectangle, [&](const Item& item) { records.push_back(item.record); });
    return records;
}

void DisplayList::draw(Raster& raster, const View& view, Ground ground, TextPainter& texts) const {
    const PixelRect& clip = raster.clip();
    const shape::Box seen = view.worldOf(clip.left, clip.top, clip.right, clip.bottom);
    forEachMeeting(seen, [&](const Item& item) { drawItem(item, raster, view, ground, texts); });
}

void DisplayList::drawItem(const Item& item, Raster& raster, const View& view, Ground ground,
                           TextPainter& texts) const {
    constexpr double readable = 4; // pixels
    const Colour colour = colourOn(ground, item.colour);
    const AcGeVector3d size = item.box.max - item.box.min;
    const bool hasExtents = !item.box.isEmpty() && item.rays.begin == item.rays.end;
    const bool isSmall = hasExtents && std::max(size.x, size.y) * view.scale() < 1;
    if (isSmall) return raster.point(view.toScreen(item.box.min), colour);
    trace(item, view, [&](const AcGePoint2d& from, const AcGePoint2d& to) { raster.line(from, to, colour); });
    for (std::uint32_t i = item.texts.begin; i < item.texts.end; ++i) {
        const shape::TextRun& run = texts_[i];
        if (flat(run.up).length() * view.scale() >= readable)
            texts.paint(run, view, raster.clip(), colour);
        else
            raster.line(view.toScreen(run.at(run.extent.inkLeft, 0.5)),
                        view.toScreen(run.at(run.extent.inkRight, 0.5)), colour);
    }
}

/// Hands the item's lines to the pen, in pixels; arcs as chords.
template <class Pen> void DisplayList::trace(const Item& item, const View& view, Pen&& pen) const {
    const auto toScreen = [&](const AcGePoint2d& p) { return view.toScreen({p.x, p.y, 0}); };
    for (std::uint32_t i = item.lines.begin; i < item.lines.end; ++i)
        pen(toScreen(lines_[i].from), toScreen(lines_[i].to));
    for (std::uint32_t i = item.arcs.begin; i < item.arcs.end; ++i) traceArc(arcs_[i], view, pen);
    for (std::uint32_t i = item.rays.begin; i < item.rays.end; ++i) {
        const Ray& ray = rays_[i];
        const AcGePoint2d base = toScreen(ray.base);
        const double reach = (base - AcGePoint2d{0, 0}).length() + view.width() + view.height();
        const AcGeVector2d along = AcGeVector2d{ray.along.x, -ray.along.y} * reach;
        pen(ray.goesBothWays ? base - along : base, base + along);
    }
}

// The chords are the same wherever the view is; of an arc much larger than that only the stretches that may
// be seen are gone through.
template <class Pen> void DisplayList::traceArc(const Arc& arc, const View& view, Pen&& pen) {
    constexpr std::uint64_t few = 64;
    constexpr double margin = 4; // pixels
    const double radius = std::sqrt(arc.u.lengthSqrd() + arc.v.lengthSqrd()) * view.scale();
    const std::uint64_t chords = chordsOf(radius, arc.sweep);
    const double step = arc.sweep / static_cast<double>(chords);
    const auto at = [&](std::uint64_t chord) {
        const double t = step * static_cast<double>(chord);
        const AcGePoint2d p = arc.centre + arc.u * std::cos(t) + arc.v * std::sin(t);
        return view.toScreen({p.x, p.y, 0});
    };
    const auto go = [&](const auto& goOn, std::uint64_t begin, std::uint64_t end) -> void {
        if (end - begin > few) {
            const std::uint64_t middle = begin + (end - begin) / 2;
            const double reach = radius * step * static_cast<double>(end - middle) + margin;
            if (!isSeen(view, at(middle), reach)) return;
            goOn(goOn, begin, middle);
            return goOn(goOn, middle, end);
        }
        AcGePoint2d from = at(begin);
        for (std::uint64_t k = begin + 1; k <= end; ++k) {
            const AcGePoint2d to = at(k);
            pen(from, to);
            from = to;
        }
    };
    go(go, 0, chords);
}

void DisplayList::drawAgain(std::span<db::Record* const> records, Raster& raster, const View& view,
                            Ground ground, Emphasis emphasis) const {
    const PixelRect& clip = raster.clip();
    const shape::Box seen = view.worldOf(clip.left, clip.top, clip.right, clip.bottom);
    for (const db::Record* each : records) {
        const auto place = places().find(each);
        if (place == places().end()) continue;
        const Item& item = items_[place->second];
        if (item.rays.begin == item.rays.end && !meets(item.box, seen)) continue;
        drawItemAgain(item, raster, view, ground, emphasis);
    }
}

void DisplayList::drawItemAgain(const Item& item, Raster& raster, const View& view, Ground ground,
                                Emphasis emphasis) const {
    const Colour colour = colourOn(ground, item.colour), bare = groundColour(ground);
    int phase = 0;
    const auto pen = [&](const AcGePoint2d& from, const AcGePoint2d& to) {
        if (emphasis == Emphasis::dashed) {
            raster.line(from, to, bare);
            raster.dashes(from, to, colour, phase);
            return;
        }
        const bool isSteep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
        const AcGeVector2d beside = isSteep ? AcGeVector2d{1, 0} : AcGeVector2d{0, 1};
        raster.line(from, to, colour);
        raster.line(from + beside, to + beside, colour);
    };
    trace(item, view, pen);
    for (std::uint32_t i = item.texts.begin; i < item.texts.end; ++i) {
        const std::array<AcGePoint3d, 4> corners = texts_[i].inkCorners();
        for (std::size_t k = 0; k < corners.size(); ++k)
            pen(view.toScreen(corners[k]), view.toScreen(corners[(k + 1) % corners.size()]));
    }
}

} // namespace qx::draw
