#pragma once

// One start of the desktop on scratch directories, with scripted message boxes and file dialogs,
// and the example project of the GUI tests: a branch line of four sprinklers in Supply mode whose
// pressures follow from the hand method.

#include "core/project_file.h"
#include "gui/main_frame.h"
#include "library/pipe_library_file.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <cmath>
#include <deque>
#include <memory>

#include <QApplication>

#include <gtest/gtest.h>

// Texts of the widgets shown as texts in the failures.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace quench::testing {

class ScriptedChoices final : public gui::DesktopChoices {
public:
    std::deque<std::filesystem::path> OpenFiles;
    std::deque<std::filesystem::path> SaveFiles;
    std::deque<TempFileChoice> TempChoices;
    std::vector<QString> TempTitles;

    std::optional<std::filesystem::path> ChooseOpenFile(const FileDialogRequest&,
                                                        QWidget*) override {
        return Next(OpenFiles);
    }
    std::optional<std::filesystem::path> ChooseSaveFile(const FileDialogRequest&,
                                                        QWidget*) override {
        return Next(SaveFiles);
    }
    TempFileChoice ChooseTempFileAction(const QString& title, QWidget*) override {
        TempTitles.push_back(title);
        if (TempChoices.empty()) {
            return TempFileChoice::DoNotOpen;
        }
        const TempFileChoice choice = TempChoices.front();
        TempChoices.pop_front();
        return choice;
    }

private:
    static std::optional<std::filesystem::path> Next(std::deque<std::filesystem::path>& script) {
        if (script.empty()) {
            return std::nullopt;
        }
        std::filesystem::path next = script.front();
        script.pop_front();
        return next;
    }
};

// The program as one start of it sees the scratch directories. The libraries lie in
// `programDirectory`: a test that writes them passes a copy.
struct Desktop {
    explicit Desktop(const std::filesystem::path& root,
                     const std::filesystem::path& programDirectory = DataDirectory())
        : Model(std::make_unique<Project>()) {
        std::filesystem::create_directories(root / "projects");
        gui::FrameSetup setup;
        setup.Model = Model.get();
        setup.Dialogs = &Dialogs;
        setup.Choices = &Choices;
        setup.Settings = IniFileHandler(root / "QUENCH.ini");
        setup.ProjectsDirectory = root / "projects";
        setup.ToolbarLayoutFile = root / "toolbar.lyt";
        setup.Library = LoadPipeLibrary(PipeLibraryPath(programDirectory));
        Frame = std::make_unique<gui::MainFrame>(std::move(setup));
        Frame->show();
    }

    ScriptedDialogs Dialogs;
    ScriptedChoices Choices;
    std::unique_ptr<Project> Model;
    std::unique_ptr<gui::MainFrame> Frame;
};

// The branch line by hand: 1" Schedule 40 steel (inside 1.049", C 120), 10 ft between the
// sprinklers of K 5.6 at nodes 20 to 50, the last one at 10 psi, the supply at node 10.
struct BranchLine {
    static constexpr double K = 5.6;
    static constexpr double LastPressure = 10.0;
    double Supply = 0;
    double Flow = 0;

    BranchLine() {
        double pressure = LastPressure;
        for (int sprinkler = 0; sprinkler < 4; ++sprinkler) {
            Flow += K * std::sqrt(pressure);
            // Hazen-Williams as the program writes it: Q = (c h)^0.5405, c = C^1.85 d^4.87 / 4.52 /
            // L.
            const double conductance = std::pow(120.0, 1.85) * std::pow(1.049, 4.87) / 4.52 / 10.0;
            pressure += std::pow(Flow, 1.0 / 0.5405) / conductance;
        }
        Supply = pressure;
    }

    std::filesystem::path Write(const std::filesystem::path& file) const {
        std::filesystem::create_directories(file.parent_path());
        auto project = std::make_unique<Project>();
        project->ProjectData.Title = "Branch line";
        const int nodes[] = {10, 20, 30, 40, 50};
        for (int row = 1; row <= 4; ++row) {
            PipeRecord& pipe = project->PipeRecord[static_cast<std::size_t>(row)];
            pipe.BegNode = std::to_string(nodes[row - 1]);
            pipe.EndNode = std::to_string(nodes[row]);
            pipe.KFactorE = "5.6";
            pipe.Active = True;
            pipe.Material = 1;
            pipe.Diameter = 1;
            pipe.DiameterFixed = True;
            pipe.Length = 10;
            pipe.TotalEquivLength = 10;
        }
        project->PipeRecord[1].BegIsInflow = 1;
        project->NumberOfPipeRows = 4;
        project->InflowNode = 10;
        CalculationData& data = project->CalculationData;
        data.SystemInflowNode = 10;
        data.DemandMode = 0;
        data.SupplyMode = 1;
        data.InflowResidualPressure1 = Supply;
        data.UseMaximumImbalance = 1;
        data.MaximumNodePressureImbalance = 0.000001;
        data.InitialDampingFactor = 2;
        data.MinimumDampingFactor = 1;
        EXPECT_EQ(WriteProject(*project, file), WriteOutcome::Written);
        return file;
    }
};

} // namespace quench::testing
