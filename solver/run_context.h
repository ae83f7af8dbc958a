#pragma once

// What a calculation run works with besides the solver's own tables: the project, the pipe
// library, the seams to the user and the flags through which the steps of a run talk. One object
// per run (or per Calculate command), passed by reference: there is no global state, so two
// projects can be calculated side by side.

#include "core/diagnostic.h"
#include "core/dialogs.h"
#include "core/progress.h"
#include "core/project.h"
#include "core/screens.h"
#include "library/material_tables.h"
#include "library/pipe_library.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace quench {

// Every run ends: a budget of Newton iterations over all passes and rounds, and of returns from
// the outer rounds into the iteration.
constexpr long NewtonIterationBudget = 300000;
constexpr long OuterReturnBudget = 100000;

// Why the sizing of a pipe stopped, kept for the reports.
enum class SizingReason { Velocity = 0, Friction = 1, Other = 2 };

struct RunContext {
    RunContext(::quench::Project& project, const PipeLibrary& library, ::quench::Dialogs& dialogs,
               ::quench::Progress& progress, ::quench::Screens& screens)
        : Project(project), Library(library), Dialogs(dialogs), Progress(progress),
          Screens(screens) {}

    ::quench::Project& Project;
    const PipeLibrary& Library;
    ::quench::Dialogs& Dialogs;
    ::quench::Progress& Progress;
    ::quench::Screens& Screens;
    MaterialTables Materials;

    // Run flags.
    Integer AbortFlag = 0;       // 1: the run failed and posts nothing
    Integer CancelRequested = 0; // 1: the user pressed Cancel
    bool AutosizeRequested = false;
    bool PumpRerunPending = false;
    bool ResultsPending = false; // the next run posts only
    bool ResultsFresh = false;
    bool CalculationInProgress = false;
    bool CalculationBusy = false;

    // The soft iteration limit of the iteration display, held across the runs of one command.
    float IterationLimit = 10;
    bool IterationLimitTyped = false; // the user typed a limit in the display during the run

    // Budgets of the whole command (see NewtonIterationBudget).
    long NewtonIterations = 0;
    long OuterReturns = 0;

    // From validation: the reached nodes equal the rows (one loop's worth of pipes).
    bool OneLoopNetwork = false;
    // From preparation: 1.3 for a dry system, for the adjusted area of the summary.
    Single DryAreaFactor = 1.0f;
    // From preparation: a pump row without a typed boost in Supply mode uses the curve.
    bool PumpUsesCurve = false;
    // The boost of the run's pump, kept for the reports.
    double RunPumpBoost = 0;
    // A typed constant boost in Supply mode, added to the first supply's pressure.
    double SupplyPumpBoost = 0;
    // Pump curve state between the passes of one command.
    double LastPumpFlow = 0;
    double PumpFlow = 0;
    std::array<double, PumpCurvePoints> PumpWorkCoefficients{};

    // Notes of the sizing step by reason, for the reports: the pipe rows of CalcPipeRecord.
    std::array<std::vector<int>, 3> SizingNotes;

    // "Update Estimates In Case of Oscillation" of the Calculation screen.
    bool UpdateEstimatesOnOscillation = false;

    // What went wrong, in the order it happened. A check or a numeric routine never shows a box
    // itself: it records a diagnostic and returns,
    //     context.Report({MessageStyle::Plain, "", text});   // the run goes on
    //     context.Stop({MessageStyle::Plain, "", text});     // the run stops (AbortFlag = 1)
    //     context.Stop(Diagnostic(style, title, text).OnRow(row).Bring(screen, word));
    // (see core/diagnostic.h), and the run's loop alone calls ShowDiagnostics, which shows each
    // one once, in order.
    std::vector<Diagnostic> Diagnostics;
    std::size_t DiagnosticsShown = 0;

    void Report(Diagnostic diagnostic) { Diagnostics.push_back(std::move(diagnostic)); }
    void Stop(Diagnostic diagnostic) {
        Report(std::move(diagnostic));
        AbortFlag = 1;
    }
    void ShowDiagnostics() {
        while (DiagnosticsShown < Diagnostics.size()) {
            ShowDiagnostic(Diagnostics[DiagnosticsShown++], Dialogs, Screens);
        }
    }
};

} // namespace quench
