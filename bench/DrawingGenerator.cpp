#include "bench/DrawingGenerator.h"

#include "Frame.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <random>

namespace qx::bench {

using namespace samples;

namespace {

constexpr Handle firstEntity = firstFreeHandle;
constexpr Handle symbolRecord = 0x80, symbolBegin = 0x81, symbolEnd = 0x85;
const std::array<std::string, 4> layerNames{"0", "WALLS", "标注", "SYMBOLS"};

enum class Kind { line, polyline, circle, arc, text, multilineText, insert };

// The twenty of a round, mixed so that neighbours differ.
constexpr std::array<Kind, 20> round20{Kind::line,          Kind::text,     Kind::polyline, Kind::circle,
                                       Kind::line,          Kind::insert,   Kind::arc,      Kind::line,
                                       Kind::text,          Kind::polyline, Kind::line,     Kind::insert,
                                       Kind::multilineText, Kind::polyline, Kind::line,     Kind::circle,
                                       Kind::text,          Kind::polyline, Kind::arc,      Kind::line};

class Generator {
public:
    Generator(const DrawingOptions& options, const std::string& path);
    bool run();

private:
    double uniform(double from, double to);
    Point near(Point p, double reach);
    void writeSymbol();
    void writeEntity(std::size_t index);
    void open(std::size_t index, const char* kind, const char* subclass);
    void writeLine(std::size_t index, Point at);
    void writePolyline(std::size_t index, Point at);
    void writeCircle(std::size_t index, Point at);
    void writeArc(std::size_t index, Point at);
    void writeText(std::size_t index, Point at);
    void writeMultilineText(std::size_t index, Point at);
    void writeInsert(std::size_t index, Point at);
    Handle groupOf(std::size_t index) const;
    std::vector<Group> groups() const;
    void flush();

    DrawingOptions options_;
    std::size_t stride_; // from the start of one group to the next
    double side_;
    Frame frame_;
    TagWriter out_;
    std::ofstream file_;
    std::mt19937_64 random_;
};

Generator::Generator(const DrawingOptions& options, const std::string& path)
    : options_(options), stride_(options.groups ? options.count / options.groups : 1),
      side_(std::max(1.0, std::floor(std::sqrt(static_cast<double>(options.count)))) * 20),
      frame_{options.r2000 ? Version::r2000 : Version::r2007,
             Unit::millimetre,
             {0, 0},
             {side_, side_},
             {{layerNames[1], 1}, {layerNames[2], 3}, {layerNames[3], 5}}},
      out_(options.crlf ? LineEnd::crlf : LineEnd::lf, options.r2000 ? Encoding::gbk : Encoding::utf8),
      file_(path, std::ios::binary), random_(options.seed) {}

double Generator::uniform(double from, double to) {
    return from + (to - from) * static_cast<double>(random_() >> 11) * 0x1p-53;
}

Point Generator::near(Point p, double reach) {
    const double dx = uniform(-reach, reach);
    return p + Point{dx, uniform(-reach, reach)};
}

Handle Generator::groupOf(std::size_t index) const {
    const std::size_t group = index / stride_;
    const bool member = group < options_.groups && index % stride_ < options_.groupSize;
    return member ? firstEntity + options_.count + group : 0;
}

std::vector<Group> Generator::groups() const {
    std::vector<Group> all;
    for (std::size_t g = 0; g < options_.groups; ++g) {
        Group group{"G" + std::to_string(g), "", firstEntity + options_.count + g, {}};
        for (std::size_t i = 0; i < options_.groupSize; ++i)
            group.members.push_back(firstEntity + g * stride_ + i);
        all.push_back(std::move(group));
    }
    return all;
}

void Generator::writeSymbol() {
    const BlockName symbol{"SYM", symbolRecord};
    openBlock(out_, symbol, symbolBegin);
    openEntity(out_, "LINE", 0x82, 0, symbolRecord, "0");
    out_.text(100, "AcDbLine");
    out_.point3(10, {0, 0});
    out_.point3(11, {4, 2});
    openEntity(out_, "CIRCLE", 0x83, 0, symbolRecord, "0");
    out_.text(100, "AcDbCircle");
    out_.point3(10, {2, 1});
    out_.real(40, 1.5);
    openEntity(out_, "TEXT", 0x84, 0, symbolRecord, "0");
    out_.text(100, "AcDbText");
    out_.point3(10, {0, 3});
    out_.real(40, 1);
    out_.text(1, "SYM");
    out_.text(100, "AcDbText");
    closeBlock(out_, symbol, symbolEnd);
}

void Generator::open(std::size_t index, const char* kind, const char* subclass) {
    openEntity(out_, kind, firstEntity + index, groupOf(index), modelSpace, layerNames[index % 4]);
    if (index % 7 == 0) out_.integer(62, static_cast<std::int64_t>(1 + index % 250));
    out_.text(100, subclass);
}

void Generator::writeLine(std::size_t index, Point at) {
    open(index, "LINE", "AcDbLine");
    out_.point3(10, at);
    out_.point3(11, near(at, 50));
}

void Generator::writePolyline(std::size_t index, Point at) {
    open(index, "LWPOLYLINE", "AcDbPolyline");
    out_.integer(90, 8);
    out_.integer(70, index % 3 == 0 ? 1 : 0);
    out_.real(43, 0);
    for (int i = 0; i < 8; ++i) {
        out_.point(10, near(at, 20));
        if (index % 2 == 1 && i % 3 == 0) out_.real(42, uniform(-1, 1));
    }
}

void Generator::writeCircle(std::size_t index, Point at) {
    open(index, "CIRCLE", "AcDbCircle");
    out_.point3(10, at);
    out_.real(40, uniform(0.5, 20));
}

void Generator::writeArc(std::size_t index, Point at) {
    open(index, "ARC", "AcDbCircle");
    out_.point3(10, at);
    out_.real(40, uniform(0.5, 20));
    out_.text(100, "AcDbArc");
    out_.real(50, uniform(0, 360));
    out_.real(51, uniform(0, 360));
}

void Generator::writeText(std::size_t index, Point at) {
    open(index, "TEXT", "AcDbText");
    out_.point3(10, at);
    out_.real(40, 2.5);
    out_.text(1, (index % 3 == 0 ? "文字对齐 " : "TEXT ") + std::to_string(index));
    if (index % 4 == 0) out_.real(50, uniform(0, 360));
    out_.text(7, "Standard");
    const bool centred = index % 5 == 0;
    if (centred) {
        out_.integer(72, 1);
        out_.point3(11, at);
    }
    out_.text(100, "AcDbText");
    if (centred) out_.integer(73, 2);
}

void Generator::writeMultilineText(std::size_t index, Point at) {
    open(index, "MTEXT", "AcDbMText");
    out_.point3(10, at);
    out_.real(40, 2.5);
    out_.real(41, 60);
    out_.integer(71, static_cast<std::int64_t>(1 + index % 9));
    out_.integer(72, 5);
    out_.text(1, "First line " + std::to_string(index) + "\\PSecond {\\C1;red} line\\P第三行");
    out_.text(7, "Standard");
    out_.integer(73, 1);
    out_.real(44, 1);
}

void Generator::writeInsert(std::size_t index, Point at) {
    open(index, "INSERT", "AcDbBlockReference");
    out_.text(2, "SYM");
    out_.point3(10, at);
    if (index % 3 == 0)
        for (const int code : {41, 42, 43}) out_.real(code, 2);
    out_.real(50, uniform(0, 360));
}

void Generator::writeEntity(std::size_t index) {
    using Writer = void (Generator::*)(std::size_t, Point);
    static constexpr std::array<Writer, 7> writers{
        &Generator::writeLine, &Generator::writePolyline,      &Generator::writeCircle, &Generator::writeArc,
        &Generator::writeText, &Generator::writeMultilineText, &Generator::writeInsert};
    const double x = uniform(0, side_);
    const Point at{x, uniform(0, side_)};
    (this->*writers[static_cast<std::size_t>(round20[index % 20])])(index, at);
    if (index % 50 != 0) return;
    out_.text(1001, "GENAPP");
    out_.text(1000, "item " + std::to_string(index));
    out_.integer(1070, static_cast<std::int64_t>(index % 100));
    out_.real(1040, x);
}

void Generator::flush() {
    file_ << out_.bytes();
    out_.clear();
}

bool Generator::run() {
    writeHeader(out_, frame_, firstEntity + options_.count + options_.groups);
    writeTables(out_, frame_, {{"SYM", symbolRecord}});
    openSection(out_, "BLOCKS");
    writeLayoutBlocks(out_);
    writeSymbol();
    closeSection(out_);
    openSection(out_, "ENTITIES");
    for (std::size_t i = 0; i < options_.count; ++i) {
        writeEntity(i);
        if (out_.bytes().size() > 1u << 20) flush();
    }
    closeSection(out_);
    writeObjects(out_, frame_, groups());
    flush();
    file_.close();
    return !file_.fail();
}

} // namespace

bool fits(const DrawingOptions& options) {
    return options.groups == 0 || options.groupSize <= options.count / options.groups;
}

bool writeDrawing(const DrawingOptions& options, const std::string& path) {
    return Generator(options, path).run();
}

} // namespace qx::bench
