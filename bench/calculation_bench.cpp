// The Calculate command on generated trees and grids of about 200 and 1000 pipes with shuffled
// node numbers, at the damping of small networks (2, 1) and of large ones (65, 60), in both modes;
// and one Newton step of the solver on the same grids.

#include "app/directories.h"
#include "bench/network_generator.h"
#include "calc/calculation.h"
#include "library/pipe_library_file.h"
#include "solver/apply_corrections.h"
#include "solver/build_matrix.h"
#include "solver/hydraulics.h"
#include "solver/solve_matrix.h"

#include <algorithm>
#include <chrono>
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

// The damping a small network is given (2, 1) and the one a large network or a CAD import needs
// (65, 60): the range's second argument is the initial factor.
int MinimumDampingFor(int initial) {
    return initial >= 60 ? 60 : 1;
}

std::unique_ptr<Project> ProjectFor(Mode mode, Shape shape, int pipes, int damping,
                                    Numbering numbering) {
    auto project = std::make_unique<Project>();
    NetworkGenerator generator(*project);
    GeneratedNetwork network = SizedNetwork(shape, pipes);
    network.Numbers = numbering;
    generator.Build(network);
    if (mode == Mode::Supply) {
        generator.SupplyMode(60);
    } else {
        generator.DemandMode(7, 0.15f, mode == Mode::DemandSized);
    }
    generator.Damping(static_cast<Single>(damping),
                      static_cast<Single>(MinimumDampingFor(damping)));
    return project;
}

// The Calculate command on a project with no one watching: every question answered Yes.
class QuietCalculation {
public:
    explicit QuietCalculation(Project& project)
        : project_(project), calculation_(project, Library(), dialogs_, progress_, screens_) {}

    // False, the benchmark told, when the run posts no results.
    bool Solve(benchmark::State& state) {
        if (calculation_.Calculate(CalculationScreenFromProject(project_))) {
            return true;
        }
        state.SkipWithError("the run did not post its results");
        return false;
    }
    RunContext& Context() { return calculation_.Context(); }
    SolverState& State() { return calculation_.State(); }

private:
    Project& project_;
    QuietDialogs dialogs_;
    NoProgress progress_;
    NoScreens screens_;
    Calculation calculation_;
};

// Whole runs of the Calculate command: the time of a run, its Newton steps and the time per step.
void CalculationRun(benchmark::State& state, Mode mode, Shape shape) {
    const int pipes = static_cast<int>(state.range(0));
    const int damping = static_cast<int>(state.range(1));
    const auto project = ProjectFor(mode, shape, pipes, damping, Numbering::Shuffled);
    long steps = 0;
    long nodeOrderSteps = 0;
    long analyses = 0;
    long runs = 0;
    for (auto _ : state) {
        QuietCalculation calculation(*project);
        if (!calculation.Solve(state)) {
            return;
        }
        steps += calculation.Context().NewtonIterations;
        nodeOrderSteps += calculation.State().NodeOrderSteps;
        analyses += calculation.State().Elimination.Analyses();
        ++runs;
    }
    state.counters["pipes"] = project->NumberOfPipes;
    state.counters["steps"] = static_cast<double>(steps) / static_cast<double>(runs);
    state.counters["node_order_steps"] =
        static_cast<double>(nodeOrderSteps) / static_cast<double>(runs);
    state.counters["analyses"] = static_cast<double>(analyses) / static_cast<double>(runs);
    state.counters["per_step"] = benchmark::Counter(
        static_cast<double>(steps), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
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

// Pipes and initial damping.
void Networks(benchmark::internal::Benchmark* benchmark) {
    for (const int pipes : {200, 1000}) {
        for (const int damping : {2, 65}) {
            benchmark->Args({pipes, damping});
        }
    }
    benchmark->ArgNames({"pipes", "damping"})->Unit(benchmark::kMillisecond);
}
BENCHMARK(SupplyTree)->Apply(Networks);
BENCHMARK(SupplyGrid)->Apply(Networks);
BENCHMARK(DemandTree)->Apply(Networks);
BENCHMARK(DemandGrid)->Apply(Networks);
BENCHMARK(DemandTreeSized)->Args({200, 2})->Args({1000, 2})->Unit(benchmark::kMillisecond);

// Cancel pressed 20 ms into a run of a 1000-pipe grid at damping 65/60: the time from the press
// back to the caller, and the longest gap between two turns of the event loop.
class CancelAfter final : public Progress {
public:
    using Clock = std::chrono::steady_clock;
    explicit CancelAfter(Clock::duration delay) : press_(Clock::now() + delay) {}

    bool Yield() override {
        const auto now = Clock::now();
        if (last_ != Clock::time_point{}) {
            longestGap = std::max(longestGap, now - last_);
        }
        last_ = now;
        if (now >= press_ && answered == Clock::time_point{}) {
            answered = now;
        }
        return now >= press_;
    }

    Clock::time_point Press() const { return press_; }
    Clock::time_point answered{};
    Clock::duration longestGap{};

private:
    Clock::time_point press_;
    Clock::time_point last_{};
};

void CancelResponse(benchmark::State& state) {
    const auto project = ProjectFor(state.range(0) != 0 ? Mode::Demand : Mode::Supply, Shape::Grid,
                                    1000, 65, Numbering::Shuffled);
    double response = 0;
    double gap = 0;
    for (auto _ : state) {
        QuietDialogs dialogs;
        CancelAfter progress(std::chrono::milliseconds(20));
        NoScreens screens;
        Calculation calculation(*project, Library(), dialogs, progress, screens);
        calculation.Calculate(CalculationScreenFromProject(*project));
        const auto back = CancelAfter::Clock::now();
        if (progress.answered == CancelAfter::Clock::time_point{}) {
            state.SkipWithError("the run ended before Cancel was pressed");
            return;
        }
        response = std::max(
            response, std::chrono::duration<double, std::milli>(back - progress.Press()).count());
        gap = std::max(gap, std::chrono::duration<double, std::milli>(progress.longestGap).count());
    }
    state.counters["response_ms"] = response;
    state.counters["longest_gap_ms"] = gap;
}
BENCHMARK(CancelResponse)->ArgName("demand")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// One Newton step (matrix, elimination, damped corrections to the heads, flows) on a solved
// network, with its nodes numbered along the lines (0) or shuffled (1).
void NewtonStep(benchmark::State& state, Mode mode) {
    const auto project = ProjectFor(mode, Shape::Grid, static_cast<int>(state.range(0)), 2,
                                    state.range(1) != 0 ? Numbering::Shuffled : Numbering::Lines);
    QuietCalculation calculation(*project);
    if (!calculation.Solve(state)) {
        return;
    }
    RunContext& context = calculation.Context();
    SolverState& solver = calculation.State();
    const long nodeOrder = solver.NodeOrderSteps;
    for (auto _ : state) {
        solver.Iteration = 5;
        BuildMatrix(solver);
        benchmark::DoNotOptimize(SolveMatrix(context, solver));
        // Taken as a step of a run still converging, so that the damped corrections are applied
        // to the heads (they are tiny on the solved network, which therefore stays solved).
        solver.NotConverged = 1;
        ApplyCorrections(context, solver);
        ComputeFlows(solver);
    }
    state.counters["pipes"] = project->NumberOfPipes;
    state.counters["fill"] = static_cast<double>(solver.Elimination.FillCount());
    state.counters["node_order_steps"] = static_cast<double>(solver.NodeOrderSteps - nodeOrder);
}
void SupplyNewtonStep(benchmark::State& state) {
    NewtonStep(state, Mode::Supply);
}
void DemandNewtonStep(benchmark::State& state) {
    NewtonStep(state, Mode::Demand);
}
BENCHMARK(SupplyNewtonStep)
    ->ArgsProduct({{200, 1000}, {0, 1}})
    ->ArgNames({"pipes", "shuffled"})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(DemandNewtonStep)
    ->ArgsProduct({{200, 1000}, {0, 1}})
    ->ArgNames({"pipes", "shuffled"})
    ->Unit(benchmark::kMicrosecond);

// One step eliminated in node order, as a run's first step and a step with an odd row are, on the
// solved 1000-pipe grid numbered shuffled (0) or mains first (1), the numbering that fills in most.
void NodeOrderStep(benchmark::State& state) {
    const auto project =
        ProjectFor(Mode::Demand, Shape::Grid, 1000, 2,
                   state.range(0) != 0 ? Numbering::MainsFirst : Numbering::Shuffled);
    QuietCalculation calculation(*project);
    if (!calculation.Solve(state)) {
        return;
    }
    RunContext& context = calculation.Context();
    SolverState& solver = calculation.State();
    for (auto _ : state) {
        BuildNodeOrderMatrix(solver);
        solver.Layout.Built = false; // the ordered path stands aside
        solver.NodeOrder.Forget();   // every row eliminated, none taken over from the step before
        benchmark::DoNotOptimize(SolveMatrix(context, solver));
    }
    state.counters["fill"] = static_cast<double>(solver.NodeOrder.FillCount());
}
BENCHMARK(NodeOrderStep)->ArgName("mains_first")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quench::bench
