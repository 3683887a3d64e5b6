// Generated drawings as the benchmarks use them: on disk for the time of a run, or opened and ready for a
// command. And how their figures are reported.
#pragma once

#include "bench/DrawingGenerator.h"
#include "db/Drawing.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace qx::bench {

/// A file in the folder for temporary files; it goes away with this object.
class TemporaryDrawing {
public:
    /// Throws when it can't be written.
    explicit TemporaryDrawing(const DrawingOptions& options);
    ~TemporaryDrawing();
    TemporaryDrawing(const TemporaryDrawing&) = delete;
    TemporaryDrawing& operator=(const TemporaryDrawing&) = delete;

    const std::string& path() const { return path_; }
    std::size_t size() const;

private:
    std::string path_;
};

/// Throws when it can't be read.
std::unique_ptr<db::Drawing> opened(const DrawingOptions& options);

/// Adds the processor time that the loop of `state` takes for each of so many objects.
void reportPerObject(benchmark::State& state, std::size_t objects);

/// Several repetitions on a machine that may be busy with other work: the least and the median are shown.
void repeat(benchmark::internal::Benchmark* benchmark);

} // namespace qx::bench
