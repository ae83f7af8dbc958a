// The pipe table on a full project (1000 rows): one node's data spread while a field is typed,
// where the node stands in every row, and the 40 visible rows formatted as a repaint shows them.
// Each must stay well under a frame (16 ms).

#include "entry/node_data_sync.h"
#include "entry/pipe_row_text.h"
#include "entry/undo_stack.h"

#include <memory>

#include <benchmark/benchmark.h>

namespace {

using namespace quench;

// A star: every row names node 1 at its beginning, so a spread of node 1 writes all of them.
std::unique_ptr<Project> StarProject() {
    auto project = std::make_unique<Project>();
    project->NumberOfPipeRows = MaxPipes;
    for (std::size_t row = 1; row <= MaxPipes; ++row) {
        PipeRecord& pipe = project->PipeRecord[row];
        pipe.BegNode = "1";
        pipe.EndNode = std::to_string(row * 10);
        pipe.KFactorE = "5.6";
        pipe.Active = True;
        pipe.Material = 1;
        pipe.Diameter = 1.25f;
        pipe.DiameterFixed = True;
        pipe.Length = 10.5f;
        pipe.FittingText = "2E";
        pipe.TotalEquivLength = 14.5f;
    }
    return project;
}

void SpreadOverTheTable(benchmark::State& state) {
    const auto project = StarProject();
    Single elevation = 0;
    for (auto _ : state) {
        project->PipeRecord[1].ElevationB = ++elevation;
        benchmark::DoNotOptimize(
            SyncNodeData(*project, 1, NodeEnd::Beginning, SyncDirection::Spread));
    }
}
BENCHMARK(SpreadOverTheTable)->Unit(benchmark::kMicrosecond);

// An edit as the screen records it: the table's snapshot before, the spread, the comparison after.
void RecordedSpread(benchmark::State& state) {
    const auto project = StarProject();
    UndoStack undo(20);
    Single elevation = 0;
    for (auto _ : state) {
        undo.Record(*project, [&] {
            project->PipeRecord[1].ElevationB = ++elevation;
            SyncNodeData(*project, 1, NodeEnd::Beginning, SyncDirection::Spread);
        });
    }
}
BENCHMARK(RecordedSpread)->Unit(benchmark::kMicrosecond);

void RepaintFortyRows(benchmark::State& state) {
    const auto project = StarProject();
    int first = 1;
    for (auto _ : state) {
        for (int row = first; row < first + 40; ++row) {
            benchmark::DoNotOptimize(ShowRow(*project, row, MeasureSystem::US));
        }
        first = first % (MaxPipes - 40) + 1; // scrolling
    }
}
BENCHMARK(RepaintFortyRows)->Unit(benchmark::kMicrosecond);

} // namespace
