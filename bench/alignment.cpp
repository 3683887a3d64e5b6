// What the alignment costs in memory once all objects are decoded: later runs of a command, with undo
// recorded and the selection made. Ending the step, which only puts the log away, is left out of the time.
#include "adslib.h"
#include "bench/BenchDrawing.h"
#include "dbapserv.h"
#include "dbents.h"
#include "ed/Session.h"
#include "ed/adsNames.h"
#include "kernel/SelectionSet.h"
#include "kernel/groupLookup.h"
#include "objectalign/alignToLine.h"
#include "objectalign/wholeSelection.h"
#include "positionalign/actions.h"

#include <cmath>
#include <stdexcept>

namespace {

using namespace qx;
using namespace qx::positionalign;

const AcGePoint3d base{100, 50, 0};

/// All that a person can select in a drawing, after a first run has gone over it: every object is decoded and
/// differs from the file.
class Scene {
public:
    explicit Scene(const bench::DrawingOptions& options);

    db::Drawing& drawing() { return *session_.drawing(); }
    ed::Session& session() { return session_; }
    const AcDbObjectIdArray& ids() const { return ids_; }
    std::size_t selected() const { return static_cast<std::size_t>(ids_.length()); }

    /// The scene with so many entities and groups. One is kept, for the repetitions that follow.
    static Scene& of(std::size_t count, std::size_t groups, std::size_t groupSize);

private:
    ed::Session session_{[](std::string_view) {}};
    AcDbObjectIdArray ids_;
};

// The first run goes along the other axis, so that the later ones find everything in disorder.
Scene::Scene(const bench::DrawingOptions& options) {
    session_.setDrawing(bench::opened(options));
    drawing().setLocked(true);
    drawing().forEachInModelSpace([this](db::Record* each) {
        if (drawing().isSelectable(each)) ids_.append(AcDbObjectId{each});
    });
    drawing().history().begin("first run");
    applyAction({Action::top, true, 0, SelectionMode::objects}, ids_, base);
    const std::size_t changes = drawing().history().changesSoFar();
    if (changes < selected()) throw std::runtime_error{"the first run did not reach all objects"};
    drawing().history().end();
}

Scene& Scene::of(std::size_t count, std::size_t groups, std::size_t groupSize) {
    static std::unique_ptr<Scene> scene;
    static std::size_t countThere, groupsThere;
    if (!scene || countThere != count || groupsThere != groups) {
        scene.reset();
        scene = std::make_unique<Scene>(bench::DrawingOptions{count, groups, groupSize});
        countThere = count;
        groupsThere = groups;
    }
    return *scene;
}

/// Times `run` as a command that changes at least `changes` objects, again and again; `finish` puts its step
/// away, in time that does not count.
template <class Run, class Finish>
void measureRuns(benchmark::State& state, Scene& scene, std::size_t changes, const Run& run,
                 const Finish& finish) {
    db::History& history = scene.drawing().history();
    for ([[maybe_unused]] auto _ : state) {
        history.begin("run");
        run();
        state.PauseTiming();
        if (history.changesSoFar() < changes) state.SkipWithError("not all objects were moved");
        finish(history);
        state.ResumeTiming();
    }
    bench::reportPerObject(state, scene.selected());
}

/// From the same state each time. Taking a run back makes the sizes of the objects unknown again.
template <class Run>
void measure(benchmark::State& state, Scene& scene, std::size_t changes, const Run& run) {
    measureRuns(state, scene, changes, run, [](db::History& history) { history.rollBack(); });
}

/// Each from where the one before ended, as a person goes on: `run` gets a base point that has moved on.
template <class Run> void measureOneAfterAnother(benchmark::State& state, Scene& scene, const Run& run) {
    AcGePoint3d next = base;
    const auto toNext = [&] { run(next += AcGeVector3d::kXAxis); };
    scene.drawing().history().begin("first run");
    toNext();
    scene.drawing().history().end();
    measureRuns(state, scene, scene.selected(), toNext, [](db::History& history) { history.end(); });
}

std::size_t countOf(const benchmark::State& state) { return static_cast<std::size_t>(state.range(0)); }

void leftAlignment(benchmark::State& state) {
    Scene& scene = Scene::of(countOf(state), countOf(state) / 1000, 10);
    measureOneAfterAnother(state, scene, [&](const AcGePoint3d& to) {
        applyAction({Action::left, true, 0, SelectionMode::objects}, scene.ids(), to);
    });
}

void horizontalDistribution(benchmark::State& state) {
    Scene& scene = Scene::of(countOf(state), countOf(state) / 1000, 10);
    // The one that begins the row stays.
    measure(state, scene, scene.selected() - 1, [&] {
        applyAction({Action::horizontalDistribution, true, 0, SelectionMode::objects}, scene.ids(), base);
    });
}

/// From the editor's selection set on, name by name.
void leftAlignmentOfSelectionSet(benchmark::State& state) {
    Scene& scene = Scene::of(countOf(state), countOf(state) / 1000, 10);
    std::vector<db::Record*> members;
    for (const AcDbObjectId id : scene.ids()) members.push_back(id.record());
    ads_name selection{0, 0};
    scene.session().sets().create(selection, ed::RecordSet{scene.drawing(), std::move(members)});
    measureOneAfterAnother(state, scene, [&](const AcGePoint3d& to) {
        applyAction({Action::left, true, 0, SelectionMode::objects}, kernel::selectedIds(selection), to);
    });
    acedSSFree(selection);
}

/// A line across the drawing, in no drawing itself, and its angle.
const AcDbLine slope{{0, 0, 0}, {1000, 500, 0}};
const double slopeAngle = std::atan2(500, 1000);

/// Each object turned onto the slope and set off from it.
void objectsToLine(benchmark::State& state) {
    Scene& scene = Scene::of(countOf(state), countOf(state) / 1000, 10);
    measure(state, scene, scene.selected(), [&] {
        AcGePoint3d landing;
        for (const AcDbObjectId id : scene.ids())
            objectalign::alignObjectToBaseLine(id, {100, 50}, slopeAngle, 5, true, slope, landing);
    });
}

AcDbObjectId firstLine(const Scene& scene) {
    for (const AcDbObjectId id : scene.ids())
        if (id.record()->kind == db::Kind::line) return id;
    throw std::runtime_error{"there is no line in the drawing"};
}

/// All as one, by the first line there is.
void selectionToLine(benchmark::State& state) {
    Scene& scene = Scene::of(countOf(state), countOf(state) / 1000, 10);
    const AcDbObjectId baseLine = firstLine(scene);
    measure(state, scene, scene.selected(), [&] {
        AcGePoint3d reference;
        objectalign::alignToBoundary(scene.ids(), baseLine, slopeAngle, 5, true, slope, {100, 50}, reference);
    });
}

/// Each object is in one group; the argument says how many groups share them.
constexpr std::size_t groupedObjects = 100000;

Scene& groupScene(const benchmark::State& state) {
    return Scene::of(groupedObjects, countOf(state), groupedObjects / countOf(state));
}

void leftAlignmentOfGroups(benchmark::State& state) {
    Scene& scene = groupScene(state);
    measure(state, scene, scene.selected(), [&] {
        applyAction({Action::left, true, 0, SelectionMode::groups}, scene.ids(), base);
    });
}

void groupsContaining(benchmark::State& state) {
    Scene& scene = groupScene(state);
    measure(state, scene, 0, [&] {
        const int found = kernel::groupsContaining(scene.ids()).length();
        if (static_cast<std::size_t>(found) != countOf(state)) state.SkipWithError("groups are missing");
    });
}

void objectCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100000)->Arg(1000000)->ArgName("objects");
    bench::repeat(benchmark);
}

void groupCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(10000)->ArgName("groups");
    bench::repeat(benchmark);
}

BENCHMARK(leftAlignment)->Apply(objectCounts);
BENCHMARK(leftAlignmentOfSelectionSet)->Apply(objectCounts);
BENCHMARK(horizontalDistribution)->Apply(objectCounts);
BENCHMARK(objectsToLine)->Apply(objectCounts);
BENCHMARK(selectionToLine)->Apply(objectCounts);
BENCHMARK(leftAlignmentOfGroups)->Apply(groupCounts);
BENCHMARK(groupsContaining)->Apply(groupCounts);

} // namespace
