// The node data editor on a 1000-pipe grid: the lines built from the rows (on opening the screen
// and after a change of the network), and one edit written into every row of its node.

#include "bench/network_generator.h"
#include "entry/node_editor.h"

#include <memory>

#include <benchmark/benchmark.h>

namespace quench {
namespace {

std::unique_ptr<Project> GridProject() {
    auto project = std::make_unique<Project>();
    bench::NetworkGenerator(*project).Build(bench::SizedNetwork(bench::Shape::Grid, 1000));
    return project;
}

void RefreshLinesOfAThousandPipes(benchmark::State& state) {
    const std::unique_ptr<Project> project = GridProject();
    for (auto _ : state) {
        benchmark::DoNotOptimize(RefreshNodeLines(*project));
    }
}
BENCHMARK(RefreshLinesOfAThousandPipes)->Unit(benchmark::kMicrosecond);

void EditOfANodeLine(benchmark::State& state) {
    const std::unique_ptr<Project> project = GridProject();
    NodeEditor editor(*project, MeasureSystem::US);
    const int line = editor.LineCount() / 2;
    bool high = false;
    for (auto _ : state) {
        high = !high;
        benchmark::DoNotOptimize(editor.Change(line, NodeField::Elevation, high ? "12.5" : "10"));
    }
}
BENCHMARK(EditOfANodeLine)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quench
