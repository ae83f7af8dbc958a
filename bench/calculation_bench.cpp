// The Calculate command on generated trees and grids of about 40, 200 and 1000 pipes, and one
// Newton iteration of the solver on the same networks.

#include "app/directories.h"
#include "bench/network_generator.h"
#include "calc/calculation.h"
#include "library/pipe_library_file.h"
#include "solver/apply_corrections.h"
#include "solver/build_matrix.h"
#include "solver/hydraulics.h"
#include "solver/solve_matrix.h"

#include <memory>
#include <stdexcept>

#include <benchmark/benchmark.h>

namespace quench::bench {
namespace {

// Dialogs that answer every question Yes and count the messages.
class QuietDialogs final : public Dialogs {
public:
    int Messages = 0;
    void ShowMessage(MessageStyle, std::string_view, std::string_view) override { ++Messages; }
    Answer Ask(Buttons, Answer, MessageStyle, std::string_view, std::string_view) override {
        return Answer::Yes;
    }
};

const PipeLibrary& Library() {
    static const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(ExecutableDirectory()));
    if (!library.FileFound) {
        throw std::runtime_error("PIPE.DAT is not beside the benchmark");
    }
    return library;
}

enum class Mode { Supply, Demand, DemandSized };

std::unique_ptr<Project> ProjectFor(Mode mode, Shape shape, int pipes) {
    auto project = std::make_unique<Project>();
    NetworkGenerator generator(*project);
    generator.Build(SizedNetwork(shape, pipes));
    if (mode == Mode::Supply) {
        generator.SupplyMode(60);
    } else {
        generator.DemandMode(7, 0.15f, mode == Mode::DemandSized);
    }
    return project;
}

void CalculationRun(benchmark::State& state, Mode mode, Shape shape) {
    const auto project = ProjectFor(mode, shape, static_cast<int>(state.range(0)));
    long iterations = 0;
    long runs = 0;
    for (auto _ : state) {
        QuietDialogs dialogs;
        NoProgress progress;
        NoScreens screens;
        Calculation calculation(*project, Library(), dialogs, progress, screens);
        if (!calculation.Calculate(CalculationScreenFromProject(*project))) {
            state.SkipWithError("the run did not post its results");
            return;
        }
        iterations += calculation.Context().NewtonIterations;
        ++runs;
    }
    state.counters["pipes"] = project->NumberOfPipes;
    state.counters["iterations"] = static_cast<double>(iterations) / static_cast<double>(runs);
    state.counters["per_iteration"] = benchmark::Counter(
        static_cast<double>(iterations), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void SupplyTree(benchmark::State& state) {
    CalculationRun(state, Mode::Supply, Shape::Tree);
}
void SupplyGrid(benchmark::State& state) {
    CalculationRun(state, Mode::Supply, Shape::Grid);
}
void DemandTree(benchmark::State& state) {
    CalculationRun(state, Mode::Demand, Shape::Tree);
}
void DemandGrid(benchmark::State& state) {
    CalculationRun(state, Mode::Demand, Shape::Grid);
}
void DemandTreeSized(benchmark::State& state) {
    CalculationRun(state, Mode::DemandSized, Shape::Tree);
}
void DemandGridSized(benchmark::State& state) {
    CalculationRun(state, Mode::DemandSized, Shape::Grid);
}
BENCHMARK(SupplyTree)->Arg(40)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(SupplyGrid)->Arg(40)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(DemandTree)->Arg(40)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(DemandGrid)->Arg(40)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(DemandTreeSized)->Arg(40)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(DemandGridSized)->Arg(40)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);

// One Newton step (matrix, elimination, damped correction, flows) on a solved network.
void NewtonIteration(benchmark::State& state) {
    const auto project = ProjectFor(Mode::Supply, Shape::Grid, static_cast<int>(state.range(0)));
    QuietDialogs dialogs;
    NoProgress progress;
    NoScreens screens;
    Calculation calculation(*project, Library(), dialogs, progress, screens);
    if (!calculation.Calculate(CalculationScreenFromProject(*project))) {
        state.SkipWithError("the run did not post its results");
        return;
    }
    RunContext& context = calculation.Context();
    SolverState& solver = calculation.State();
    for (auto _ : state) {
        solver.Iteration = 1;
        BuildMatrix(solver);
        benchmark::DoNotOptimize(SolveMatrix(context, solver));
        ApplyCorrections(context, solver);
        ComputeFlows(solver);
    }
    state.counters["pipes"] = project->NumberOfPipes;
    state.counters["elements"] = solver.Matrix.ElementCount();
}
BENCHMARK(NewtonIteration)->Arg(40)->Arg(200)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quench::bench
