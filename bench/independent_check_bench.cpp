// The independent check of a posted result on generated trees and grids of about 200 and 1000
// pipes with shuffled node numbers, each calculated once before the timing.

#include "app/directories.h"
#include "bench/network_generator.h"
#include "calc/calculation.h"
#include "calc/independent_check.h"
#include "library/pipe_library_file.h"

#include <memory>

#include <benchmark/benchmark.h>

namespace quench::bench {
namespace {

class YesDialogs final : public Dialogs {
public:
    void ShowMessage(MessageStyle, std::string_view, std::string_view) override {}
    Answer Ask(Buttons, Answer, MessageStyle, std::string_view, std::string_view) override {
        return Answer::Yes;
    }
};

std::unique_ptr<Project> CalculatedProject(Shape shape, int pipes, bool demand) {
    static const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(ExecutableDirectory()));
    auto project = std::make_unique<Project>();
    NetworkGenerator generator(*project);
    GeneratedNetwork network = SizedNetwork(shape, pipes);
    network.Numbers = Numbering::Shuffled;
    generator.Build(network);
    if (demand) {
        generator.DemandMode(7, 0.15f, false);
    } else {
        generator.SupplyMode(60);
    }
    generator.Damping(2, 1);
    YesDialogs dialogs;
    NoProgress progress;
    NoScreens screens;
    Calculation calculation(*project, library, dialogs, progress, screens);
    if (!library.FileFound || !calculation.Calculate(CalculationScreenFromProject(*project))) {
        return nullptr;
    }
    return project;
}

void Check(benchmark::State& state, Shape shape, bool demand) {
    const auto project = CalculatedProject(shape, static_cast<int>(state.range(0)), demand);
    if (!project) {
        state.SkipWithError("the network was not calculated (is PIPE.DAT beside the benchmark?)");
        return;
    }
    bool passed = true;
    for (auto _ : state) {
        const CheckVerdict verdict = CheckPostedResults(*project);
        passed = verdict.Passed;
        benchmark::DoNotOptimize(verdict);
    }
    // The verdict is shown, not judged: the timing holds either way.
    state.counters["passed"] = passed ? 1 : 0;
    state.counters["pipes"] = project->NumberOfPipes;
}

void CheckSupplyGrid(benchmark::State& state) {
    Check(state, Shape::Grid, false);
}
void CheckDemandGrid(benchmark::State& state) {
    Check(state, Shape::Grid, true);
}
void CheckDemandTree(benchmark::State& state) {
    Check(state, Shape::Tree, true);
}

BENCHMARK(CheckSupplyGrid)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckDemandGrid)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(CheckDemandTree)->Arg(200)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quench::bench
