#include "bench/BenchDrawing.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace qx::bench {

TemporaryDrawing::TemporaryDrawing(const DrawingOptions& options) {
    const std::string name =
        "qx-bench-" + std::to_string(options.count) + "-" + std::to_string(options.groups) + ".dxf";
    path_ = (std::filesystem::temp_directory_path() / name).string();
    if (!writeDrawing(options, path_)) throw std::runtime_error{"can't write " + path_};
}

TemporaryDrawing::~TemporaryDrawing() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

std::size_t TemporaryDrawing::size() const { return std::filesystem::file_size(path_); }

std::unique_ptr<db::Drawing> opened(const DrawingOptions& options) {
    const TemporaryDrawing file{options};
    auto drawing = db::Drawing::read(file.path());
    if (!drawing) throw std::runtime_error{drawing.error()};
    return std::move(*drawing);
}

void reportPerObject(benchmark::State& state, std::size_t objects) {
    using benchmark::Counter;
    state.counters["per_object"] =
        Counter(static_cast<double>(objects), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void repeat(benchmark::internal::Benchmark* benchmark) {
    benchmark->Iterations(3)
        ->Repetitions(5)
        ->ReportAggregatesOnly(true)
        ->ComputeStatistics("least",
                            [](const std::vector<double>& all) { return *std::ranges::min_element(all); })
        ->Unit(benchmark::kMillisecond);
}

} // namespace qx::bench
