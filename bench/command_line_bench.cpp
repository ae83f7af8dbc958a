// The whole `quench calc` process on generated grids of 1000 pipes, their node numbers shuffled
// or given mains first: start, open, calculate, save, exit, as a user meets it on the command line.

#include "app/directories.h"
#include "bench/network_generator.h"
#include "core/project_file.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

extern char** environ;

namespace quench::bench {
namespace {

namespace fs = std::filesystem;

// The projects go to QUENCH_BENCH_PROJECTS when it is set, and stay there (the regression
// check of bench/compare_results.sh calculates them with two builds); else to a scratch folder.
fs::path ScratchDirectory() {
    const char* kept = std::getenv("QUENCH_BENCH_PROJECTS");
    const fs::path directory =
        kept != nullptr
            ? fs::path(kept)
            : fs::temp_directory_path() / ("quench-bench-calc-" + std::to_string(::getpid()));
    fs::create_directories(directory);
    return directory;
}

// The project of a 1000-pipe grid, written once.
fs::path GridProject(bool demand, int damping, Numbering numbering) {
    Project project;
    NetworkGenerator generator(project);
    GeneratedNetwork network = SizedNetwork(Shape::Grid, 1000);
    network.Numbers = numbering;
    generator.Build(network);
    if (demand) {
        generator.DemandMode(7, 0.15f, false);
    } else {
        generator.SupplyMode(60);
    }
    generator.Damping(static_cast<Single>(damping), damping >= 60 ? 60.0f : 1.0f);
    const std::string numbers = numbering == Numbering::MainsFirst ? "-mains" : "";
    const fs::path file = ScratchDirectory() / ((demand ? "demand-" : "supply-") +
                                                std::to_string(damping) + numbers + ".qnw");
    WriteProject(project, file);
    return file;
}

int RunQuench(const fs::path& project) {
    std::string program = (ExecutableDirectory() / "quench").string();
    std::string command = "calc";
    std::string file = project.string();
    std::string answer = "--yes";
    char* arguments[] = {program.data(), command.data(), file.data(), answer.data(), nullptr};
    pid_t child = 0;
    if (::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0) {
        return -1;
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void QuenchCalc(benchmark::State& state, bool demand) {
    const Numbering numbering = state.range(1) != 0 ? Numbering::MainsFirst : Numbering::Shuffled;
    const fs::path source = GridProject(demand, static_cast<int>(state.range(0)), numbering);
    const fs::path work = source.parent_path() / ("run-" + source.filename().string());
    for (auto _ : state) {
        state.PauseTiming();
        fs::copy_file(source, work, fs::copy_options::overwrite_existing);
        state.ResumeTiming();
        if (RunQuench(work) != 0) {
            state.SkipWithError("quench calc did not finish with status 0");
            break;
        }
    }
    std::error_code ignored;
    fs::remove(work, ignored);
    if (std::getenv("QUENCH_BENCH_PROJECTS") == nullptr) {
        fs::remove_all(source.parent_path(), ignored);
    }
}

void SupplyGridProcess(benchmark::State& state) {
    QuenchCalc(state, false);
}
void DemandGridProcess(benchmark::State& state) {
    QuenchCalc(state, true);
}
BENCHMARK(SupplyGridProcess)
    ->ArgsProduct({{2, 65}, {0, 1}})
    ->ArgNames({"damping", "mains_first"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(DemandGridProcess)
    ->ArgsProduct({{2, 65}, {0, 1}})
    ->ArgNames({"damping", "mains_first"})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace
} // namespace quench::bench
