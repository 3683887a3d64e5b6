#include "random/RandomRun.h"

#include "db/RecordedShape.h"
#include "dbgroup.h"
#include "dxf/Tag.h"
#include "objectalign/command.h"
#include "positionalign/command.h"

#include <algorithm>
#include <complex>

namespace qx::tests {
using namespace drawings;
namespace {
using Points = std::vector<AcGePoint3d>;

void registerCommands() {
    const auto add = [](const ACHAR* name, AcRxFunctionPtr body) {
        acedRegCmds->addCommand(L"QX_TEST", name, name, ACRX_CMD_MODAL, body);
    };
    add(L"KV_PositionAlign", positionalign::runCommand);
    add(L"KV_ObjectAlign", objectalign::runCommand);
}

const db::Record* mainEntity(const db::Record* record) {
    while (record->owner && db::isEntity(record->owner->kind)) record = record->owner;
    return record;
}

Points outlineOf(const db::Drawing& drawing, Handle handle) {
    db::Record* record = drawing.find(handle);
    const AcDbEntity* entity = record ? drawing.liveEntity(record) : nullptr;
    return entity ? RecordedShape{*entity, 1, RecordedShape::few}.compared : Points{};
}

std::string text(const Points& points) {
    std::string all;
    for (const AcGePoint3d& p : points)
        all += " (" + decimal(p.x) + " " + decimal(p.y) + " " + decimal(p.z) + ")";
    return all;
}

double size(const Points& points) {
    double largest = 0;
    for (const AcGePoint3d& p : points)
        for (const double each : {p.x, p.y, p.z}) largest = std::max(largest, std::abs(each));
    return largest;
}

/// Where what was drawn at the usual size is bent by rounding alone.
constexpr double tooFar = 1e12;

/// Lengths that are told apart at such coordinates.
double tolerance(const Points& a, const Points& b) { return 1e-9 * (1 + size(a) + size(b)); }

bool areSame(const Points& a, const Points& b) {
    return std::ranges::equal(a, b, [within = tolerance(a, b)](const AcGePoint3d& p, const AcGePoint3d& q) {
        return p.distanceTo(q) <= within;
    });
}

std::complex<double> flat(const AcGeVector3d& v) { return {v.x, v.y}; }

enum class Motion { shift, turn };

/// Whether the points went from one place to the other together: shifted, or turned about Z as well. What is
/// in several groups may have gone there by way of another place, so far away.
bool haveMoved(const Points& from, const Points& to, Motion motion, double away) {
    if (from.size() != to.size()) return false;
    std::complex<double> turn{1}, longest{0};
    for (std::size_t i = 0; i < from.size() && motion == Motion::turn; ++i) {
        const auto was = flat(from[i] - from[0]), is = flat(to[i] - to[0]);
        if (std::abs(was) <= std::abs(longest) || std::abs(is) == 0) continue;
        longest = was;
        turn = is / was / (std::abs(is) / std::abs(was));
    }
    for (std::size_t i = 0; i < from.size(); ++i) {
        const auto was = from[i] - from[0], is = to[i] - to[0];
        const double off = std::abs(flat(was) * turn - flat(is)) + std::abs(was.z - is.z);
        if (!(off <= 8 * (tolerance(from, to) + 1e-15 * away))) return false; // nor what is no number
    }
    return true;
}

bool hasOnlyNumbers(std::string_view bytes) {
    dxf::TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    for (dxf::Tag tag; cursor.next(tag);) {
        const bool isReal = (tag.code >= 10 && tag.code < 60) || (tag.code >= 210 && tag.code < 240) ||
                            (tag.code >= 1010 && tag.code < 1060);
        const auto value = dxf::toReal(tag.value);
        if (isReal && !(value && std::abs(*value) < 1e16)) return false;
    }
    return true;
}
} // namespace

/// Notes what the running command is given.
class RandomRun::Selected final : public ed::CommandObserver {
public:
    explicit Selected(RandomRun& run) : run_{run} {
        run.selected_.clear();
        run.editor_.session.observer = this;
    }
    ~Selected() override { run_.editor_.session.observer = nullptr; }
    void commandBegins(const db::Drawing*, const std::string&) override {}
    void drawingChanges() override {}
    void selected(const ed::RecordSet& set) override {
        for (const db::Record* each : set.members()) run_.selected_.insert(each->handle);
    }
    void message(std::string_view) override {}
    void refused(const db::Record*, Acad::ErrorStatus) override {}
    void commandEnds(db::Drawing*, ed::CommandEnd) override {}

private:
    RandomRun& run_;
};

RandomRun::RandomRun(unsigned seed)
    : chance_{seed}, content_{chance_}, editor_{content_.content.bytes()}, person_{chance_, editor_.drawing(),
                                                                                   content_.objects,
                                                                                   editor_.transcript} {
    registerCommands();
}

std::string RandomRun::faults() {
    if (chance_.oneIn(4)) type("SETVAR\nPICKSTYLE\n" + std::to_string(chance_.below(4)));
    for (std::size_t count = 1 + chance_.below(3); count > 0 && faults_.empty(); --count) {
        if (chance_.oneIn(8)) run(Command::other, "ERASE");
        if (chance_.oneIn(2))
            run(Command::positionAlign, "KV_PositionAlign");
        else
            run(Command::objectAlign, "KV_ObjectAlign");
    }
    return faults_;
}

void RandomRun::type(const std::string& typed) {
    person_.begin(typed);
    ed::CommandRunner{editor_.session}.run(person_);
}

void RandomRun::run(Command command, const std::string& typed) {
    const Before before = this->before();
    {
        const Selected listener{*this};
        type(typed);
    }
    const std::string bytes = drawing().toBytes();
    if (command != Command::other && bytes != before.bytes) ++alignments;
    checkEnd(command, before);
    checkFile(command, before, bytes);
    checkUndo(before, bytes);
    if (chance_.oneIn(3)) type("U");
    if (!faults_.empty()) faults_ = typed + ":" + faults_;
}

RandomRun::Before RandomRun::before() {
    Before all{drawing().toBytes(), drawing().history().stepsDone(), editor_.session.reapedSets, {}};
    for (const Handle each : content_.objects) all.outlines[each] = outlineOf(drawing(), each);
    return all;
}

void RandomRun::expect(bool holds, const std::string& sentence) {
    if (!holds) faults_ += "\n  " + sentence;
}

void RandomRun::checkEnd(Command command, const Before& before) {
    ed::Session& session = editor_.session;
    expect(session.line().failure().empty(), session.line().failure());
    expect(session.violations == 0, "a rule of the host is broken");
    expect(drawing().openCount() == 0, "objects are open");
    expect(session.sets().count() == 0, "selection sets are left");
    // One command leaves its set to the host.
    expect(session.reapedSets - before.reapedSets <= (command == Command::positionAlign ? 1 : 0),
           "more selection sets than known are left");
}

RandomRun::Handles RandomRun::mayMove(Command command) {
    const bool hasBegun = command == Command::objectAlign ? person_.hasFlipped : !person_.hasCancelled;
    if (!hasBegun) return {};
    const bool takesGroups = person_.firstAnswer == "G";
    if (command == Command::objectAlign && person_.firstAnswer == "P") {
        Handles all;
        for (const db::Record* each : person_.picked)
            if (each) all.insert(each->handle);
        return all;
    }
    if (!takesGroups) return selected_;
    Handles all;
    for (db::Record* each : drawing().groups()) {
        const auto& members = static_cast<const AcDbGroup*>(drawing().live(each))->members();
        if (std::ranges::none_of(members, [&](auto* m) { return m && selected_.contains(m->handle); }))
            continue;
        for (const db::Record* member : members)
            if (member) all.insert(member->handle);
    }
    return all;
}

void RandomRun::checkFile(Command command, const Before& before, const std::string& bytes) {
    if (bytes == before.bytes) return;
    const auto was = db::Drawing::fromBytes(before.bytes, "before.dxf");
    const auto is = db::Drawing::fromBytes(bytes, "after.dxf");
    expect(static_cast<bool>(is), "what was saved can't be read");
    if (!is || command == Command::other) return;
    const Handles mayMove = this->mayMove(command);
    const bool keepsDrawn = content_.content.currentLayer == "LOCKED" && command == Command::objectAlign;
    const db::Record *from = (*was)->firstRecord(), *to = (*is)->firstRecord();
    for (; from && to; from = db::RecordChain::next(from), to = db::RecordChain::next(to)) {
        while (keepsDrawn && to->handle > 0xFFF && !(*was)->find(to->handle)) to = db::RecordChain::next(to);
        expect(from->handle == to->handle && from->kind == to->kind, "other objects than before");
        if (!faults_.empty()) return;
        const bool isHeader = from == (*was)->firstRecord();
        if (!(isHeader && keepsDrawn) && (*was)->bytesOf(from) != (*is)->bytesOf(to))
            checkChanged(from, to, **is, mayMove);
    }
    expect(!from && !to, "another number of objects than before");
    checkMotion(command, before, **is);
}

void RandomRun::checkChanged(const db::Record* record, const db::Record* saved, const db::Drawing& again,
                             const Handles& mayMove) {
    db::Record* live = drawing().find(mainEntity(record)->handle);
    const db::BlockDefinition* block = live && live->owner ? drawing().blocks().of(live->owner) : nullptr;
    if (block && block->dimension) live = block->dimension; // with which its block moves
    const std::string name = live ? hex(live->handle) : "an object that is gone";
    expect(live && mayMove.contains(live->handle), name + " is changed, and nobody meant it");
    expect(hasOnlyNumbers(again.bytesOf(saved)), name + " has a number that is none");
    const AcDbEntity* entity = live ? drawing().liveEntity(live) : nullptr;
    expect(entity && !entity->layerState().locked, name + " on a locked layer is changed");
}

void RandomRun::checkMotion(Command command, const Before& before, const db::Drawing& again) {
    double away = person_.largestNumber;
    for (const auto& [handle, from] : before.outlines)
        away = std::max({away, size(from), size(outlineOf(again, handle))});
    if (away > tooFar) return;
    for (const auto& [handle, from] : before.outlines) {
        if (drawing().find(handle)->has(db::Record::erased)) continue;
        const Points to = outlineOf(drawing(), handle), read = outlineOf(again, handle);
        expect(areSame(to, read), hex(handle) + " is not read as it is shown");
        expect(haveMoved(from, to, command == Command::positionAlign ? Motion::shift : Motion::turn, away),
               hex(handle) + " is bent from" + text(from) + " to" + text(to));
    }
}

void RandomRun::checkUndo(const Before& before, const std::string& bytes) {
    const bool isStep = drawing().history().stepsDone() != before.steps;
    expect(isStep || bytes == before.bytes, "changed without a step to undo");
    if (!isStep) return;
    type("U");
    expect(drawing().toBytes() == before.bytes, "U does not bring back the bytes");
    for (const auto& [handle, from] : before.outlines)
        if (!drawing().find(handle)->has(db::Record::erased))
            expect(outlineOf(drawing(), handle) == from, hex(handle) + " is not shown as before, after U");
    type("REDO");
    expect(drawing().toBytes() == bytes, "REDO does not bring back the bytes");
}

} // namespace qx::tests
