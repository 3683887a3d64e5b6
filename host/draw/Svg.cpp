#include "draw/Svg.h"

#include "draw/SvgPen.h"
#include "draw/palette.h"
#include "draw/svgNumbers.h"
#include "draw/svgText.h"
#include "os/encoding.h"
#include "shape/ExtentsSink.h"

#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qx::draw {
namespace {

/// Passes on what a picture shows.
class DrawableSink final : public shape::Sink {
public:
    explicit DrawableSink(shape::Sink& target) : target_(target) {}
    void segment(const shape::Segment& segment) override {
        if (isDrawable(segment)) target_.segment(segment);
    }
    void arc(const shape::EllipticArc& arc) override {
        if (isDrawable(arc)) target_.arc(arc);
    }
    void text(const shape::TextRun& run) override {
        if (isDrawable(run)) target_.text(run);
    }
    void bezier(const shape::Bezier& curve) override {
        if (isDrawable(curve)) target_.bezier(curve);
    }

private:
    shape::Sink& target_;
};

struct LayerContent {
    const db::LayerState* layer;
    std::vector<const AcDbEntity*> entities;
};

/// Layers in the order in which the file first uses them.
std::vector<LayerContent> visibleContent(const db::Drawing& drawing) {
    std::vector<LayerContent> content;
    std::unordered_map<const db::LayerState*, std::size_t> places;
    drawing.forEachInModelSpace([&](db::Record* record) {
        if (record->has(db::Record::erased) || record->has(db::Record::unusable)) return;
        const AcDbEntity* entity = drawing.liveEntity(record);
        if (!entity || !entity->isVisible()) return;
        const auto [place, isNew] = places.try_emplace(&entity->layerState(), content.size());
        if (isNew) content.push_back({&entity->layerState(), {}});
        content[place->second].entities.push_back(entity);
    });
    return content;
}

shape::Box extentsOf(const std::vector<LayerContent>& content) {
    shape::ExtentsSink extents;
    DrawableSink drawable{extents};
    for (const LayerContent& each : content)
        for (const AcDbEntity* entity : each.entities) entity->extremes(drawable);
    return extents.box();
}

std::string colourAttribute(int index) {
    constexpr char digits[] = "0123456789abcdef";
    std::string attribute = " color=\"#";
    const std::uint32_t colour = colourOnWhite(index);
    for (int shift = 20; shift >= 0; shift -= 4) attribute += digits[colour >> shift & 15];
    return attribute += '"';
}

/// Collects the document and hands it on in pieces of some size.
class Document {
public:
    using Write = std::function<bool(std::string_view)>;
    explicit Document(Write write) : write_{std::move(write)} {}

    void put(const db::Drawing& drawing);

private:
    void putHead(const PictureFrame& frame);
    void putLayer(const LayerContent& content, SvgPen& pen);
    void handOn() {
        isWritable_ = isWritable_ && write_(text_);
        text_.clear();
    }

    Write write_;
    std::string text_;
    bool isWritable_ = true;
};

void Document::put(const db::Drawing& drawing) {
    const std::vector<LayerContent> content = visibleContent(drawing);
    const PictureFrame frame{extentsOf(content)};
    SvgPen pen{frame};
    putHead(frame);
    for (const LayerContent& each : content) putLayer(each, pen);
    text_ += "</svg>\n";
    handOn();
}

void Document::putHead(const PictureFrame& frame) {
    std::string width, height;
    putNumber(width, frame.width());
    putNumber(height, frame.height());
    text_ +=
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
        width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + " " + height +
        "\" xml:space=\"preserve\">\n"
        "<style>path{fill:none;stroke:currentColor;stroke-width:1;stroke-linecap:round;stroke-linejoin:round;"
        "vector-effect:non-scaling-stroke}text{fill:currentColor;font-family:\"Noto Sans CJK SC\","
        "\"WenQuanYi Micro Hei\",\"Microsoft YaHei\",sans-serif}</style>\n"
        "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
}

void Document::putLayer(const LayerContent& content, SvgPen& pen) {
    constexpr int byLayer = 256;
    constexpr std::size_t pieceSize = 1 << 16;
    text_ += "<g data-layer=\"" + escaped(os::toUtf32(content.layer->name)) + "\"" +
             colourAttribute(content.layer->colour) + ">\n";
    for (const AcDbEntity* entity : content.entities) {
        if (!isWritable_) return;
        entity->shape(pen);
        const int colour = entity->colorIndex();
        pen.putElements(text_, colour == byLayer ? std::string{} : colourAttribute(colour));
        if (text_.size() >= pieceSize) handOn();
    }
    text_ += "</g>\n";
}

} // namespace

Outcome writeSvg(const db::Drawing& drawing, const std::string& path) {
    Result<os::AtomicFile> file = os::AtomicFile::create(path);
    if (!file) return Outcome::failure(file.error());
    Document{[&](std::string_view piece) { return file->write(piece); }}.put(drawing);
    return file->commit();
}

std::string svgOf(const db::Drawing& drawing) {
    std::string document;
    Document{[&](std::string_view piece) {
        document += piece;
        return true;
    }}.put(drawing);
    return document;
}

} // namespace qx::draw
