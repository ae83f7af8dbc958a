#pragma once

// Test networks typed as a designer types them: pipe rows between numbered nodes, node data
// spread to every row that names the node, the inflow marked, and the Calculation screen's
// settings. Material 1 of the default library is Schedule 40 steel, C 120.

#include "calc/calculation.h"
#include "core/progress.h"
#include "core/project.h"
#include "core/screens.h"
#include "library/pipe_library.h"
#include "library/pipe_library_file.h"
#include "solver/run_context.h"
#include "solver/solver_state.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <string>

namespace quench::testing {

constexpr Integer Sch40Steel = 1;

// The default pipe library built beside the programs. (Inline, as are the helpers that run a
// calculation, so that the support library itself needs only the core.)
inline const PipeLibrary& DefaultLibrary() {
    static const PipeLibrary library = LoadPipeLibrary(PipeLibraryPath(DataDirectory()));
    return library;
}

class NetworkBuilder {
public:
    explicit NetworkBuilder(Project& project);

    // A pipe row; a diameter of 0 asks for sizing.
    PipeRecord& Pipe(int begin, int end, Single length, Single diameter,
                     Integer material = Sch40Steel);
    // A device row (material 51 to 54) with its loss or boost (-4 for none given).
    PipeRecord& Device(int begin, int end, Integer material, Single loss);

    NetworkBuilder& Sprinkler(int node, const std::string& kFactor);
    NetworkBuilder& Sprinkler(int node, double kFactor);
    NetworkBuilder& Elevation(int node, Single feet);
    NetworkBuilder& FixedFlow(int node, Single gpm);
    NetworkBuilder& Area(int node, Single squareFeet);
    NetworkBuilder& Group(int node, const std::string& group);
    NetworkBuilder& Inflow(int node);

    NetworkBuilder& SupplyMode(double inflowPressure);
    NetworkBuilder& DemandMode(Single minimumPressure, Single density = 0);
    NetworkBuilder& MaximumImbalance(double tolerance);

    Project& Model() { return project_; }

private:
    template <class Apply>
    void AtNode(int node, Apply apply);

    Project& project_;
};

// The node of NodeRecord with a typed number (the supply by its own number).
const NodeRecord& NodeOf(const Project& project, int number);

// The Calculate command of the Calculation screen on a project, with the screen as it shows the
// stored settings; questions are answered from the script, else by their default.
struct CalculationRun {
    ScriptedDialogs Dialogs;
    NoProgress Progress;
    NoScreens Screens;
    bool Posted = false;

    CalculationRun() = default;
    explicit CalculationRun(Project& project) { Calculate(project); }
    bool Calculate(Project& project) {
        return Calculate(project, CalculationScreenFromProject(project));
    }
    bool Calculate(Project& project, const CalculationScreen& screen) {
        Calculation calculation(project, DefaultLibrary(), Dialogs, Progress, Screens);
        Posted = calculation.Calculate(screen);
        return Posted;
    }
};

// A solver's state and run context on an empty project and library, for tests of single steps.
struct SolverHarness {
    Project Model;
    PipeLibrary Library;
    ScriptedDialogs Dialogs;
    NoProgress Bar;
    NoScreens Words;
    RunContext Context{Model, Library, Dialogs, Bar, Words};
    SolverState State;
};

} // namespace quench::testing
