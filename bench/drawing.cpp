// Opening, decoding and saving a drawing of 100 000 entities, each for itself.
#include "bench/BenchDrawing.h"

#include <cstdio>

namespace {

using namespace qx;

constexpr std::size_t count = 100000;

const bench::TemporaryDrawing& file() {
    static const bench::TemporaryDrawing made{{count, count / 1000}};
    return made;
}

std::unique_ptr<db::Drawing> readAgain(benchmark::State& state) {
    auto drawing = db::Drawing::read(file().path());
    if (drawing) return std::move(*drawing);
    state.SkipWithError(drawing.error().c_str());
    return nullptr;
}

/// From the file to a drawing that can be asked; freeing it is left out.
void open(benchmark::State& state) {
    file();
    for ([[maybe_unused]] auto _ : state) {
        auto drawing = readAgain(state);
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
    bench::reportPerObject(state, count);
}

void decodeAll(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto drawing = readAgain(state);
        if (!drawing) return;
        std::size_t decoded = 0;
        state.ResumeTiming();
        drawing->forEachInModelSpace([&](db::Record* each) { decoded += drawing->live(each) != nullptr; });
        state.PauseTiming();
        if (decoded != count) state.SkipWithError("not all objects could be decoded");
        drawing.reset();
        state.ResumeTiming();
    }
    bench::reportPerObject(state, count);
}

/// To a file beside the first one, until the bytes are on the disk.
void saveUnchanged(benchmark::State& state) {
    const auto drawing = readAgain(state);
    if (!drawing) return;
    const std::string copy = file().path() + ".copy";
    for ([[maybe_unused]] auto _ : state)
        if (const Outcome saved = drawing->save(copy, os::Backup::none); !saved)
            state.SkipWithError(saved.error().c_str());
    std::remove(copy.c_str());
    bench::reportPerObject(state, count);
}

BENCHMARK(open)->Apply(bench::repeat);
BENCHMARK(decodeAll)->Apply(bench::repeat);
BENCHMARK(saveUnchanged)->Apply(bench::repeat);

} // namespace
