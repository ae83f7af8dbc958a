#include "calc/check_calculation_screen.h"

#include "calc/messages.h"
#include "calc/screen_words.h"
#include "core/formats.h"
#include "core/text.h"

namespace quench {

bool HasBothNodes(const WorkPipeRecord& row) {
    return !TrimmedView(row.BegNode).empty() && !TrimmedView(row.EndNode).empty();
}

bool HasNoGivenDiameter(const WorkPipeRecord& row) {
    return !IsTrue(row.DiameterFixed) || row.Diameter == 0 || row.Diameter == NotGiven;
}

namespace {

bool IsBlank(const std::string& text) {
    return TrimmedView(text).empty();
}

// A faulty setting: its message with the title "Input Data Error" and the screen to correct it.
bool Refuse(RunContext& context, const std::string& text, const char* screen, const char* word,
            MessageStyle style = MessageStyle::Information,
            const char* title = messages::InputDataErrorTitle) {
    context.Stop(Diagnostic(style, title, text).Bring(screen, word));
    return false;
}

bool RefuseOnTab(RunContext& context, const std::string& text) {
    return Refuse(context, text, screens::Calculation, screens::ShowInputTab);
}

bool RefuseOnPipes(RunContext& context, const std::string& text,
                   MessageStyle style = MessageStyle::Information,
                   const char* title = messages::InputDataErrorTitle) {
    return Refuse(context, text, screens::PipeData, screens::Show, style, title);
}

bool HasAnyPipe(const Project& project) {
    for (int row = 1; row <= MaxPipes; ++row) {
        if (HasBothNodes(project.WorkPipeRecord[row])) {
            return true;
        }
    }
    return false;
}

bool CheckInflowPressures(RunContext& context, const CalculationScreen& screen) {
    if (!screen.optSupplyMode) {
        return true;
    }
    if (!IsBlank(screen.lblSystemInflowNodeNumber) &&
        (IsBlank(screen.txtInflowResidualPressure1) ||
         ToNumber(screen.txtInflowResidualPressure1) <= 0)) {
        return RefuseOnTab(
            context, messages::PositiveInflowPressure(Trim(screen.lblSystemInflowNodeNumber)));
    }
    if (!IsBlank(screen.lblSecondInflowNodeNumber) && IsBlank(screen.txtInflowResidualPressure2)) {
        return RefuseOnTab(context,
                           messages::InflowPressureMissing(Trim(screen.lblSecondInflowNodeNumber)));
    }
    if (!IsBlank(screen.lblThirdInflowNodeNumber) && IsBlank(screen.txtInflowResidualPressure3)) {
        return RefuseOnTab(context,
                           messages::InflowPressureMissing(Trim(screen.lblThirdInflowNodeNumber)));
    }
    return true;
}

bool CheckImbalanceAndDamping(RunContext& context, const CalculationScreen& screen) {
    if (!screen.optMaximumNodalPressure && !screen.optAverageNodalPressure) {
        return RefuseOnTab(context, messages::ChooseImbalance);
    }
    if (screen.optMaximumNodalPressure && IsBlank(screen.txtMaximumNodePressureImbalance)) {
        return RefuseOnTab(context, messages::MaximumImbalanceMissing);
    }
    if (screen.optAverageNodalPressure && IsBlank(screen.txtAverageNodalPressure)) {
        return RefuseOnTab(context, messages::AverageImbalanceMissing);
    }
    const std::string& initial = screen.txtInitialOscillationDampingFactor;
    const std::string& minimum = screen.txtMinimumOscillationDampingFactor;
    if (IsBlank(initial) || ToNumber(initial) == 0) {
        return RefuseOnTab(context, messages::InitialDampingMissing);
    }
    if (IsBlank(minimum) || ToNumber(minimum) == 0) {
        return RefuseOnTab(context, messages::MinimumDampingMissing);
    }
    if (ToNumber(initial) < ToNumber(minimum)) {
        return RefuseOnTab(context, messages::DampingOrder);
    }
    return true;
}

bool NeedsSizing(const WorkPipeRecord& row) {
    return HasBothNodes(row) && HasNoGivenDiameter(row) && row.Material <= LibraryMaterials &&
           IsTrue(row.Active);
}

// Sizing asked for needs at least one of its limits.
bool CheckSizingLimits(RunContext& context, const CalculationScreen& screen) {
    if (context.AutosizeRequested && IsBlank(screen.txtSizingMaximumAllowableWaterVelocity) &&
        IsBlank(screen.txtSizingMiximumAllowableFrictionalLoss)) {
        return Refuse(context, messages::SizingLimitsMissing, screens::Calculation,
                      screens::ShowSizingTab);
    }
    return true;
}

// A diameter found by an earlier sizing run is forgotten, so that it is sized afresh.
void ForgetOpenDiameters(Project& project) {
    for (int row = 1; row <= MaxPipes; ++row) {
        WorkPipeRecord& work = project.WorkPipeRecord[row];
        PipeRecord& input = project.PipeRecord[row];
        if (HasBothNodes(work) && HasNoGivenDiameter(work) && work.Material <= LibraryMaterials) {
            work.Diameter = 0;
        }
        if (quench::HasBothNodes(input) && input.Material <= LibraryMaterials &&
            (!IsTrue(input.DiameterFixed) || input.Diameter == 0 || input.Diameter == NotGiven)) {
            input.Diameter = 0;
        }
    }
}

struct MarkedInflow {
    bool Found = false;
    std::string Node;
};

MarkedInflow FindMarkedInflow(const Project& project) {
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsTrue(work.Active)) {
            continue;
        }
        if (work.BegIsInflow == 1) {
            return {true, Trim(work.BegNode)};
        }
        if (work.EndIsInflow == 1) {
            return {true, Trim(work.EndNode)};
        }
    }
    return {};
}

bool CheckInflowNode(RunContext& context) {
    Project& project = context.Project;
    const MarkedInflow inflow = FindMarkedInflow(project);
    if (!inflow.Found) {
        return RefuseOnPipes(context, messages::NoInflowNode, MessageStyle::Warning, "");
    }
    const double value = ToNumber(inflow.Node);
    int rows = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (HasBothNodes(work) &&
            (ToNumber(work.BegNode) == value || ToNumber(work.EndNode) == value)) {
            ++rows;
        }
    }
    if (rows >= 2) {
        return RefuseOnPipes(context, messages::InflowOnOnePipe(inflow.Node), MessageStyle::Warning,
                             "");
    }
    if (rows == 0) {
        return RefuseOnPipes(context, messages::ValidInflowNode, MessageStyle::Warning, "");
    }
    // The mark on the rows names the supply.
    project.InflowNode = CInt(value);
    return true;
}

} // namespace

bool CheckCalculationScreen(RunContext& context, const CalculationScreen& screen) {
    const Project& project = context.Project;
    if (!HasAnyPipe(project)) {
        return RefuseOnPipes(context, messages::NoPipeSection);
    }
    if (!screen.optDemandMode && !screen.optSupplyMode) {
        return RefuseOnTab(context, messages::ChooseMode);
    }
    if (IsBlank(screen.lblSystemInflowNodeNumber) && IsBlank(screen.lblSecondInflowNodeNumber) &&
        IsBlank(screen.lblThirdInflowNodeNumber)) {
        return RefuseOnPipes(context, messages::SpecifyInflowNode);
    }
    if (!CheckInflowPressures(context, screen)) {
        return false;
    }
    if (screen.optDemandMode && !screen.optSupplyMode && IsBlank(screen.txtMinPressureAtHMDNode)) {
        return RefuseOnTab(context, messages::MinimumHmdPressure);
    }
    return CheckImbalanceAndDamping(context, screen);
}

bool AnyRowNeedsSizing(const Project& project) {
    for (int row = 1; row <= MaxPipes; ++row) {
        if (NeedsSizing(project.WorkPipeRecord[row])) {
            return true;
        }
    }
    return false;
}

bool CheckSizingAndInflow(RunContext& context, const CalculationScreen& screen) {
    if (!CheckSizingLimits(context, screen)) {
        return false;
    }
    if (context.AutosizeRequested) {
        ForgetOpenDiameters(context.Project);
    }
    return CheckInflowNode(context);
}

} // namespace quench
