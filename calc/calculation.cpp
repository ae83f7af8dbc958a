#include "calc/calculation.h"

#include "calc/build_working_rows.h"
#include "calc/check_calculation_screen.h"
#include "calc/check_device_elevations.h"
#include "calc/check_finite_input.h"
#include "calc/check_network.h"
#include "calc/check_pipe_input.h"
#include "calc/collect_devices.h"
#include "calc/finish_results.h"
#include "calc/messages.h"
#include "calc/prepare_network.h"
#include "calc/screen_words.h"
#include "core/formats.h"
#include "core/text.h"
#include "library/equivalent_length.h"
#include "solver/autosizing.h"
#include "solver/solve_network.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <vector>

namespace quench {

namespace {

constexpr const char* CalculatingCaption = "Calculating...";
constexpr const char* PleaseWait = "Please Wait ...";

} // namespace

Calculation::Calculation(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                         Progress& progress, Screens& screens)
    : context_(project, library, dialogs, progress, screens) {}

void Calculation::BeginCommand() {
    context_.Diagnostics.clear();
    context_.DiagnosticsShown = 0;
}

bool Calculation::Calculate(const CalculationScreen& screen) {
    BeginCommand();
    if (HasBlankRowBetween(context_.Project)) {
        context_.Report({MessageStyle::Plain, messages::AppTitle, messages::NoBlankRows});
        context_.ShowDiagnostics();
        return false;
    }
    screen_ = screen;
    return RunCommand();
}

bool Calculation::CalculateFromToolbar(const CalculationScreen& screen) {
    BeginCommand();
    context_.Progress.SetCaption(CalculatingCaption);
    context_.Progress.SetLabel(PleaseWait);
    context_.Progress.SetGauge(10);
    if (context_.Progress.Yield()) {
        context_.CancelRequested = 1;
    }
    screen_ = screen;
    return RunCommand();
}

bool Calculation::RunCommand() {
    context_.AbortFlag = 0;
    context_.CancelRequested = 0;
    context_.NewtonIterations = 0;
    context_.OuterReturns = 0;
    context_.IterationLimit = 10;
    context_.IterationLimitTyped = false;
    context_.PumpRerunPending = false;
    context_.ResultsPending = false;
    context_.LastPumpFlow = 0;
    context_.PumpWorkCoefficients = {};
    pump_ = PumpPasses{};
    RunCalculation();
    if (context_.PumpRerunPending && context_.AbortFlag != 1) {
        RunCalculation();
    }
    const bool posted = context_.AbortFlag != 1;
    if (posted) {
        if (context_.CancelRequested != 1) {
            context_.Screens.Send(screens::Calculation, screens::ShowResultsTab);
        }
        context_.ResultsFresh = true;
    }
    context_.Progress.CloseStatus();
    if (context_.Progress.IsDisplayOpen()) {
        context_.Progress.CloseDisplay();
    }
    return posted;
}

// The run's checks and preparation, each fault shown as it is found. False when the run stopped.
bool Calculation::CheckAndPrepare() {
    const bool prepared = CheckAndPrepareSteps();
    context_.ShowDiagnostics();
    return prepared;
}

// The autosize question, between the screen's settings and the sizing limits.
bool Calculation::AskAutosize() {
    if (!AnyRowNeedsSizing(context_.Project)) {
        return true;
    }
    context_.ShowDiagnostics(); // whatever came before the question is seen before it
    const Answer answer =
        context_.Dialogs.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question,
                             messages::InputDataTitle, messages::AutosizeQuestion);
    context_.AutosizeRequested = answer == Answer::Yes;
    if (!context_.AutosizeRequested) {
        context_.Screens.Send(screens::PipeData, screens::Show);
    }
    return context_.AutosizeRequested;
}

bool Calculation::CheckAndPrepareSteps() {
    Project& project = context_.Project;
    context_.CalculationBusy = true;
    BuildWorkingRows(project);
    CheckFiniteInput(context_);
    if (context_.AbortFlag == 1 || !CheckCalculationScreen(context_, screen_) || !AskAutosize() ||
        !CheckSizingAndInflow(context_, screen_)) {
        context_.AbortFlag = 1;
        return false;
    }
    context_.CalculationInProgress = true;
    StoreCalculationScreen(screen_, project);
    context_.UpdateEstimatesOnOscillation = screen_.chkOscillationEstimate;
    if (project.InflowNode != 0) {
        project.CalculationData.SystemInflowNode = project.InflowNode;
    }
    ReadPumpBoost(context_);
    const std::optional<PrepareResult> preparedForCheck = CheckNetwork(context_);
    if (context_.AbortFlag == 1) {
        return false;
    }
    PrepareOptions options;
    options.PumpRerunPending = context_.PumpRerunPending;
    // The check's own preparation stands when a second one would only repeat it.
    const PrepareResult prepared = preparedForCheck && PreparingAgainRepeats(project)
                                       ? *preparedForCheck
                                       : PrepareNetwork(project, context_.Library, options);
    context_.DryAreaFactor = prepared.DryAreaFactor;
    context_.PumpUsesCurve = prepared.PumpUsesCurve;
    if (prepared.Failed) {
        context_.Stop({MessageStyle::Warning, "", messages::SprinklerAreaMissing});
        return false;
    }
    if (prepared.NodesAboveCapacity != 0) {
        context_.Stop({MessageStyle::Plain, messages::InputDataErrorTitle,
                       messages::TooManyNodes(prepared.NodesAboveCapacity)});
        return false;
    }
    CollectDevices(context_, state_);
    CheckPipeInput(context_);
    if (context_.AbortFlag == 1) {
        return false;
    }
    CheckDeviceElevations(context_, state_);
    return context_.AbortFlag != 1;
}

void Calculation::RunCalculation() {
    if (!(context_.PumpRerunPending && context_.ResultsPending)) {
        if (!SolvePasses()) {
            return; // nothing is posted
        }
        if (context_.PumpRerunPending) {
            context_.ResultsPending = true;
            return;
        }
        context_.ResultsPending = false;
    } else {
        // The pump's last pass left its results to be posted by this call.
        context_.PumpRerunPending = false;
        context_.ResultsPending = false;
    }
    PostResults();
}

// Passes of the whole run, one for each boost that a pump curve asks to try, until the flow
// through the pump settles. False when the run stopped.
bool Calculation::SolvePasses() {
    PumpStep step = PumpStep::NextPass;
    while (step == PumpStep::NextPass && SolvePass()) {
        step = FinishResults(context_, state_, pump_);
        context_.ShowDiagnostics();
    }
    if (pump_.Count > 1) {
        RestoreCurvePumpRow(context_.Project);
    }
    return context_.AbortFlag != 1;
}

// The checks, the preparation and the solve. False when the run stopped.
bool Calculation::SolvePass() {
    if (!CheckAndPrepare()) {
        return false;
    }
    Progress& progress = context_.Progress;
    progress.ShowStatus();
    progress.SetCaption(CalculatingCaption);
    progress.SetLabel(PleaseWait);
    progress.SetGauge(10);
    progress.SetGaugeLabelsVisible(true);
    if (progress.Yield()) {
        context_.CancelRequested = 1;
    }
    SolveNetwork(context_, state_);
    context_.ShowDiagnostics();
    if (context_.CancelRequested == 1) {
        context_.AbortFlag = 1;
    }
    return context_.AbortFlag != 1;
}

// The pressures and sizes back into the rows, the results on the screen.
void Calculation::PostResults() {
    Project& project = context_.Project;
    Progress& progress = context_.Progress;
    progress.SetGauge(90);
    progress.Yield();
    WriteEstimates();
    if (context_.AutosizeRequested) {
        WriteAutosizedDiameters();
    }
    results_ = ResultsToScreen(project);
    context_.AutosizeRequested = false;
    context_.CalculationInProgress = false;
    progress.SetGauge(100);
    progress.SetGaugeLabelsVisible(false);
    progress.Yield();
    context_.CalculationBusy = false;
    context_.PumpRerunPending = false;
    project.InputChanged = 0;
}

void Calculation::WriteEstimates() {
    Project& project = context_.Project;
    std::unordered_map<int, double> pressureOf;
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        const NodeRecord& node = project.NodeRecord[position];
        pressureOf.emplace(TypedNodeNumber(project, node.Number), node.ResidualPressure);
    }
    for (int row = 1; row <= MaxPipes; ++row) {
        PipeRecord& input = project.PipeRecord[row];
        if (!HasBothNodes(input)) {
            continue;
        }
        const auto begin = pressureOf.find(static_cast<int>(ToNumber(input.BegNode)));
        if (begin != pressureOf.end()) {
            input.PressEstimateB = static_cast<Single>(begin->second);
        }
        const auto end = pressureOf.find(static_cast<int>(ToNumber(input.EndNode)));
        if (end != pressureOf.end()) {
            input.PressEstimateE = static_cast<Single>(end->second);
        }
    }
    context_.Screens.Send(screens::PipeData, screens::UpdatePressure);
}

// The sizes found are written into the rows open to sizing, with their equivalent lengths.
void Calculation::WriteAutosizedDiameters() {
    Project& project = context_.Project;
    const auto typed = [&project](const std::string& text) {
        return ToNumber(TypedNodeText(project, text));
    };
    std::map<std::pair<double, double>, std::vector<int>> rowsOfPair;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& input = project.PipeRecord[row];
        if (HasBothNodes(input) && !IsTrue(input.DiameterFixed)) {
            const double begin = ToNumber(input.BegNode);
            const double end = ToNumber(input.EndNode);
            rowsOfPair[{std::min(begin, end), std::max(begin, end)}].push_back(row);
        }
    }
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        if (!IsSizable(record)) {
            continue;
        }
        const double begin = typed(record.BegNode);
        const double end = typed(record.EndNode);
        const auto rows = rowsOfPair.find({std::min(begin, end), std::max(begin, end)});
        if (rows == rowsOfPair.end()) {
            continue;
        }
        for (int row : rows->second) {
            project.PipeRecord[row].Diameter = static_cast<Single>(record.NominalDiameter);
            RecalcEquivLength(project, context_.Library, row);
        }
    }
    context_.Screens.Send(screens::PipeData, screens::UpdateAutoSizedDiameter);
}

} // namespace quench
