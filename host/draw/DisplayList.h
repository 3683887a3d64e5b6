// What model space looks like from above, kept in a form that can be drawn again and again: flat strokes with
// a box around those of each entity, in file order. Entities whose box is outside of what is shown are passed
// over, those smaller than a pixel are a point, and text too small to be read is a line.
//
// The list belongs to one drawing, which must stay. It shows what entities looked like when it was last told
// of them.
#pragma once

#include "db/Drawing.h"
#include "draw/Raster.h"
#include "draw/View.h"
#include "draw/palette.h"

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace qx::draw {

/// Draws characters, which a raster can't.
class TextPainter {
public:
    virtual ~TextPainter() = default;
    /// The run is drawable and large enough to be read. Nothing may change outside of the clip rectangle.
    virtual void paint(const shape::TextRun& run, const View& view, const PixelRect& clip, Colour colour) = 0;
};

/// How something that stands out is drawn.
enum class Emphasis {
    dashed, ///< in the entity's colour, over the ground
    strong  ///< twice as wide
};

class QX_HOST_API DisplayList {
public:
    explicit DisplayList(const db::Drawing& drawing);

    /// Takes in everything anew.
    void rebuild();
    /// Takes in what became of these records; of a part, what became of the entity it belongs to.
    void update(std::span<db::Record* const> records);

    /// Of everything that is shown and drawable; empty when nothing is.
    const shape::Box& extents() const;
    /// Entities whose box meets the rectangle (only x and y count), in drawing order. Infinite ones always
    /// do.
    std::vector<db::Record*> meeting(const shape::Box& rectangle) const;
    /// Lines, arcs, runs of text and rays that take up memory, replaced ones included.
    std::size_t strokeCount() const { return lines_.size() + arcs_.size() + texts_.size() + rays_.size(); }

    /// Draws what is shown within the raster's clip rectangle. The ground is the caller's.
    void draw(Raster& raster, const View& view, Ground ground, TextPainter& texts) const;
    /// Draws some entities once more, those that are shown; text as the outline of its ink.
    void drawAgain(std::span<db::Record* const> records, Raster& raster, const View& view, Ground ground,
                   Emphasis emphasis) const;

private:
    class Recorder;
    struct Line {
        AcGePoint2d from, to;
    };
    struct Arc {
        AcGePoint2d centre;
        AcGeVector2d u, v;
        double sweep;
    };
    struct Ray {
        AcGePoint2d base;
        AcGeVector2d along; ///< of length 1
        bool goesBothWays;
    };
    struct Range {
        std::uint32_t begin = 0, end = 0;
    };
    struct Item {
        db::Record* record;
        shape::Box box{};
        Range lines{}, arcs{}, texts{}, rays{};
        std::int32_t colour = 0; ///< an index
        bool isListedAsEndless = false;
    };
    struct Group { ///< of neighbours in the list
        shape::Box box;
    };
    static constexpr std::size_t groupSize = 64;

    void take(db::Record* record, Item& item);
    bool isShown(db::Record* record) const;
    void noteBox(std::size_t item);
    std::unordered_map<const db::Record*, std::size_t>& places() const;
    std::size_t placeOf(db::Record* record);
    template <class Visit> void forEachMeeting(const shape::Box& rectangle, Visit&& visit) const;
    void drawItem(const Item& item, Raster& raster, const View& view, Ground ground,
                  TextPainter& texts) const;
    void drawItemAgain(const Item& item, Raster& raster, const View& view, Ground ground,
                       Emphasis emphasis) const;
    template <class Pen> void trace(const Item& item, const View& view, Pen&& pen) const;
    template <class Pen> static void traceArc(const Arc& arc, const View& view, Pen&& pen);

    const db::Drawing& drawing_;
    std::vector<Item> items_;
    std::vector<Group> groups_;
    std::vector<Line> lines_;
    std::vector<Arc> arcs_;
    std::vector<shape::TextRun> texts_;
    std::vector<Ray> rays_;
    std::size_t strokesWhenBuilt_ = 0;
    std::vector<std::size_t> endless_;                                  ///< items that have, or had, rays
    mutable std::unordered_map<const db::Record*, std::size_t> places_; ///< empty until first needed
    mutable shape::Box extents_;
    mutable bool areExtentsKnown_ = false;
};

} // namespace qx::draw
