// The full report of a calculated project of about 1000 pipes, every section on: the layout on
// the plain-text canvas, and the whole `quench report` command writing the PDF (the wall time of
// the process, as a user waits for it; the target is under a second).

#include "app/directories.h"
#include "bench/network_generator.h"
#include "calc/calculation.h"
#include "core/project_file.h"
#include "library/pipe_library_file.h"
#include "reports/build_report.h"
#include "reports/text_canvas.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>

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

const PipeLibrary& Library() {
    static const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(ExecutableDirectory()));
    if (!library.FileFound) {
        throw std::runtime_error("PIPE.DAT is not beside the benchmark");
    }
    return library;
}

// The calculated 1000-pipe grid, made once.
const Project& CalculatedProject() {
    static const std::unique_ptr<Project> project = [] {
        auto made = std::make_unique<Project>();
        NetworkGenerator generator(*made);
        generator.Build(SizedNetwork(Shape::Grid, 1000));
        generator.DemandMode(7, 0.15f, false);
        YesDialogs dialogs;
        NoProgress progress;
        NoScreens screens;
        Calculation calculation(*made, Library(), dialogs, progress, screens);
        if (!calculation.Calculate(CalculationScreenFromProject(*made))) {
            throw std::runtime_error("the 1000-pipe grid did not calculate");
        }
        return made;
    }();
    return *project;
}

ReportOptions EverySection() {
    ReportOptions options = DefaultReportOptions();
    options.Sections.fill(true);
    return options;
}

void ReportToText(benchmark::State& state) {
    const Project& project = CalculatedProject();
    const ReportOptions options = EverySection();
    int pages = 0;
    for (auto _ : state) {
        ReportInput input(project);
        input.Library = &Library();
        input.ProjectFileName = "grid.qnw";
        TextCanvas canvas;
        pages = BuildReport(canvas, input, options).Pages;
        benchmark::DoNotOptimize(canvas.Result().data());
    }
    state.counters["pages"] = pages;
    state.counters["pipes"] = project.NumberOfPipes;
}
BENCHMARK(ReportToText)->Unit(benchmark::kMillisecond);

void QuenchReportToPdf(benchmark::State& state) {
    const auto directory = std::filesystem::temp_directory_path() / "quench_report_bench";
    std::filesystem::create_directories(directory);
    const auto project = directory / "grid.qnw";
    if (WriteProject(CalculatedProject(), project) != WriteOutcome::Written) {
        state.SkipWithError("the project could not be written");
        return;
    }
    const std::string command = (ExecutableDirectory() / "quench").string() + " report '" +
                                project.string() + "' -o '" + (directory / "grid.pdf").string() +
                                "'";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("quench report failed");
            break;
        }
    }
    std::filesystem::remove_all(directory);
}
BENCHMARK(QuenchReportToPdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

} // namespace
} // namespace quench::bench
