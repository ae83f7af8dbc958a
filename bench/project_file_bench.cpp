// Reading and writing a full project (1000 rows in every table): the records in memory, and the
// file with its flush to disk.

#include "core/project_file.h"

#include <filesystem>
#include <memory>
#include <unistd.h>

#include <benchmark/benchmark.h>

namespace {

using quench::MaxPipes;
using quench::Project;

std::unique_ptr<Project> FullProject() {
    auto project = std::make_unique<Project>();
    project->NumberOfPipeRows = MaxPipes;
    project->NumberOfNodes = MaxPipes;
    project->NumberOfPipes = MaxPipes;
    project->CalculationData.NumberOfUniquePipeSections = MaxPipes;
    for (std::size_t row = 1; row <= MaxPipes; ++row) {
        auto& pipe = project->PipeRecord[row];
        pipe.BegNode = std::to_string(row * 10);
        pipe.EndNode = std::to_string(row * 10 + 10);
        pipe.FittingText = "2E1T";
        pipe.Length = static_cast<float>(row);
        project->PipeResultRecord[row].FittingText = "2E1T";
        project->PipeResultRecord[row].Flow = static_cast<double>(row);
        project->NodeRecord[row].Number = static_cast<quench::Integer>(row);
        project->CalcPipeRecord[row].ResultFittingText = "Schedule 40 Steel";
        project->CalcPipeRecord[row].FittingText = "2E1T";
    }
    return project;
}

std::filesystem::path BenchFile() {
    return std::filesystem::temp_directory_path() /
           ("quench-bench-" + std::to_string(::getpid()) + ".qnw");
}

void LayFullProject(benchmark::State& state) {
    const auto project = FullProject();
    std::vector<std::uint8_t> image;
    for (auto _ : state) {
        quench::LayProjectImage(*project, image);
        benchmark::DoNotOptimize(image.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * image.size()));
}
BENCHMARK(LayFullProject)->Unit(benchmark::kMillisecond);

void ReadFullProjectImage(benchmark::State& state) {
    std::vector<std::uint8_t> image;
    quench::LayProjectImage(*FullProject(), image);
    auto project = std::make_unique<Project>();
    for (auto _ : state) {
        quench::ReadProjectImage(*project, image);
        benchmark::DoNotOptimize(project->NumberOfPipeRows);
    }
}
BENCHMARK(ReadFullProjectImage)->Unit(benchmark::kMillisecond);

void WriteFullProjectFile(benchmark::State& state) {
    const auto project = FullProject();
    const auto file = BenchFile();
    for (auto _ : state) {
        benchmark::DoNotOptimize(quench::WriteProject(*project, file));
    }
    std::filesystem::remove(file);
}
BENCHMARK(WriteFullProjectFile)->Unit(benchmark::kMillisecond)->UseRealTime();

// Save as the desktop does it: the working file and the named file from one image, the named
// file synced with its folder.
void SaveFullProject(benchmark::State& state) {
    const auto project = FullProject();
    const auto named = BenchFile();
    auto working = named;
    working.replace_extension(".tmp");
    for (auto _ : state) {
        benchmark::DoNotOptimize(quench::SaveProject(*project, working, named));
    }
    std::filesystem::remove(named);
    std::filesystem::remove(working);
}
BENCHMARK(SaveFullProject)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadFullProjectFile(benchmark::State& state) {
    const auto file = BenchFile();
    quench::WriteProject(*FullProject(), file);
    auto project = std::make_unique<Project>();
    for (auto _ : state) {
        quench::ResetProject(*project);
        benchmark::DoNotOptimize(quench::ReadProject(*project, file));
    }
    std::filesystem::remove(file);
}
BENCHMARK(ReadFullProjectFile)->Unit(benchmark::kMillisecond);

// A model made and given back, as every command does once.
void MakeEmptyProject(benchmark::State& state) {
    for (auto _ : state) {
        auto project = std::make_unique<Project>();
        benchmark::DoNotOptimize(project.get());
    }
}
BENCHMARK(MakeEmptyProject)->Unit(benchmark::kMillisecond);

} // namespace
