#pragma once

// The Calculate command: from the typed rows to the posted results. One object per command holds
// the run's context and the solver's state; the project, the library and the seams are the
// caller's.

#include "calc/calculation_screen.h"
#include "calc/pump.h"
#include "calc/results_screen.h"
#include "solver/run_context.h"
#include "solver/solver_state.h"

namespace quench {

class Calculation {
public:
    Calculation(Project& project, const PipeLibrary& library, Dialogs& dialogs, Progress& progress,
                Screens& screens);

    // The Calculate button of the Calculation screen, with its blank-row test. The toolbar's
    // path skips that test. True when results were posted.
    bool Calculate(const CalculationScreen& screen);
    bool CalculateFromToolbar(const CalculationScreen& screen);

    // One run: checks, preparation, solve, results (a pump pass may post only).
    void RunCalculation();

    RunContext& Context() { return context_; }
    const RunContext& Context() const { return context_; }
    SolverState& State() { return state_; }
    const ResultsScreen& Results() const { return results_; }

private:
    void BeginCommand();
    bool RunCommand();
    bool CheckAndPrepare();
    bool CheckAndPrepareSteps();
    bool AskAutosize();
    bool SolvePasses();
    bool SolvePass();
    void PostResults();
    void WriteEstimates();
    void WriteAutosizedDiameters();

    RunContext context_;
    SolverState state_;
    CalculationScreen screen_;
    ResultsScreen results_;
    PumpPasses pump_;
};

} // namespace quench
