#include "calc/check_pipe_input.h"

#include "calc/check_calculation_screen.h"
#include "calc/messages.h"
#include "calc/screen_words.h"
#include "core/formats.h"
#include "core/text.h"
#include "core/units.h"
#include "library/material_tables.h"
#include "solver/calculation_options.h"
#include "solver/hydraulics.h"

#include <algorithm>

namespace quench {

namespace {

// A fault of the rows: the run stops and the pipe data screen comes forward.
bool Fault(RunContext& context, const std::string& text, int row = 0) {
    context.Stop(Diagnostic(MessageStyle::Plain, "", text)
                     .OnRow(row)
                     .Bring(screens::PipeData, screens::Show));
    return false;
}

bool IsPipeRow(const WorkPipeRecord& row) {
    return HasBothNodes(row) && IsTrue(row.Active);
}

// A diameter as the pipe data screen shows it, with its unit.
std::string DiameterText(const Project& project, Single diameter, std::string& unit) {
    const MeasureSystem system = project.UnitSystem == 1 ? MeasureSystem::SI : MeasureSystem::US;
    unit = std::string(UnitWord(UnitKind::Fine_Length, system));
    return NumberText(static_cast<Single>(ShownValue(UnitKind::Fine_Length, diameter, system)));
}

bool HasAnySize(const PipeLibrary& library, int material) {
    const auto& diameters = library.Material(material).Diameters;
    return std::any_of(diameters.begin(), diameters.end(),
                       [](const PipeDiameterRecord& size) { return size.Nominal > 0; });
}

// Lengths, diameters and materials of the active rows, in row order.
bool CheckRows(RunContext& context) {
    Project& project = context.Project;
    const bool supply = IsSupplyMode(project.CalculationData);
    int index = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsPipeRow(work)) {
            continue;
        }
        ++index;
        const std::string begin = TypedNodeText(project, work.BegNode);
        const std::string end = TypedNodeText(project, work.EndNode);
        const bool pipe = work.Material <= LibraryMaterials;
        if (pipe && work.Length == 0) {
            return Fault(context, messages::ZeroLength(begin, end, index), row);
        }
        if (ToNumber(work.BegNode) == 0 && ToNumber(work.EndNode) == 0) {
            return Fault(context, messages::NoBlankRows, row);
        }
        if (supply && pipe && (work.Diameter == 0 || work.Diameter == NotGiven)) {
            context.Stop(
                Diagnostic(MessageStyle::Warning, "", messages::SupplyDiameterMissing(index))
                    .OnRow(row)
                    .Bring(screens::Calculation, screens::ShowInputTab));
            project.CalculationData.DemandMode = True;
            return false;
        }
    }
    if (!BuildMaterialTables(context.Library, context.Materials)) {
        context.Stop({MessageStyle::Plain, "", LibraryMissingMessage});
        return false;
    }
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsPipeRow(work)) {
            continue;
        }
        if (IsLibraryMaterial(work.Material) && work.Diameter > 0 &&
            FindDiameterSlot(context.Library, work.Material, work.Diameter) < 0) {
            std::string unit;
            const std::string diameter = DiameterText(project, work.Diameter, unit);
            return Fault(context,
                         messages::DiameterNotInLibrary(TypedNodeText(project, work.BegNode),
                                                        TypedNodeText(project, work.EndNode),
                                                        diameter, unit),
                         row);
        }
        if (work.Material < 1) {
            return Fault(context, messages::MaterialBelowOne(work.Material == 0, row), row);
        }
        if (IsLibraryMaterial(work.Material)) {
            const bool toSize = work.Diameter <= 0;
            const bool noSize =
                toSize ? context.Materials
                                 .UsableDiameterCount[static_cast<std::size_t>(work.Material)] == 0
                       : !HasAnySize(context.Library, work.Material);
            if (noSize) {
                return Fault(context, messages::NoValidDiameters(work.Material), row);
            }
        }
    }
    return true;
}

bool NeedsSizing(const Project& project) {
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        if (record.Material <= LibraryMaterials && record.NominalDiameter == 0) {
            return true;
        }
    }
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (IsPipeRow(work) && HasNoGivenDiameter(work) && work.Material <= LibraryMaterials) {
            return true;
        }
    }
    return false;
}

double LargestSize(const MaterialTables& tables, int material) {
    double largest = 0;
    for (int k = 0; k < tables.UsableDiameterCount[static_cast<std::size_t>(material)]; ++k) {
        largest = std::max(
            largest, static_cast<double>(tables.UsableDiameters[static_cast<std::size_t>(material)]
                                                               [static_cast<std::size_t>(k)]));
    }
    return largest;
}

// The smallest sizes sizing may take must exist in each pipe's material.
bool CheckSizingBounds(RunContext& context) {
    const Project& project = context.Project;
    const CalculationData& data = project.CalculationData;
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[pipe];
        if (!IsLibraryMaterial(record.Material)) {
            continue;
        }
        const double largest = LargestSize(context.Materials, record.Material);
        const int group = record.TypeGroup;
        if (group >= 1 && group <= 10 &&
            data.TypeGroupMinDiameter[static_cast<std::size_t>(group)] > largest) {
            return Fault(context, messages::GroupedMinimumTooLarge(record.Material));
        }
        if (group == 0 && data.TypeGroupMinDiameter[0] > largest) {
            return Fault(context, messages::UngroupedMinimumTooLarge(record.Material));
        }
    }
    return true;
}

struct FlowSeen {
    bool KFactor = false;
    bool FixedFlow = false;
};

// Negative values, row by row; notes whether any sprinkler or fixed flow was seen.
bool CheckNegatives(RunContext& context, FlowSeen& seen) {
    const Project& project = context.Project;
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsPipeRow(work)) {
            continue;
        }
        const PipeRecord& input = project.PipeRecord[row];
        const std::string begin = Trim(input.BegNode);
        const std::string end = Trim(input.EndNode);
        if (work.Diameter < 0 && work.Diameter != NotGiven) {
            return Fault(context, messages::NegativeDiameter(row), row);
        }
        if (work.Length < 0) {
            return Fault(context, messages::NegativeLength(row), row);
        }
        const bool negativeCount = std::any_of(work.FittingCounts.begin(), work.FittingCounts.end(),
                                               [](Integer count) { return count < 0; });
        if (work.NonStandardFitLength < 0 || work.OldFittingLength < 0 || negativeCount) {
            return Fault(context, messages::NegativeFittingLength(row), row);
        }
        // Only the end node's K-factor is refused when negative, and only when it is a number.
        if (IsNumeric(Trim(input.KFactorE)) && ToNumber(input.KFactorE) < 0) {
            return Fault(context, messages::NegativeKFactor(end), row);
        }
        if (work.SprinklerAreaB < 0) {
            return Fault(context, messages::NegativeSprinklerArea(begin), row);
        }
        if (work.SprinklerAreaE < 0) {
            return Fault(context, messages::NegativeSprinklerArea(end), row);
        }
        if (work.NonSprinklerFlowB < 0) {
            return Fault(context, messages::NegativeFixedFlow(begin), row);
        }
        if (work.NonSprinklerFlowE < 0) {
            return Fault(context, messages::NegativeFixedFlow(end), row);
        }
        seen.KFactor = seen.KFactor || work.KFactorB > 0 || work.KFactorE > 0;
        seen.FixedFlow = seen.FixedFlow || work.NonSprinklerFlowB > 0 || work.NonSprinklerFlowE > 0;
    }
    return true;
}

} // namespace

void CheckPipeInput(RunContext& context) {
    Project& project = context.Project;
    if (!CheckRows(context)) {
        return;
    }
    context.AutosizeRequested = NeedsSizing(project);
    if (context.AutosizeRequested && !CheckSizingBounds(context)) {
        return;
    }
    FlowSeen seen;
    if (!CheckNegatives(context, seen)) {
        return;
    }
    const std::string& discharge = project.SystemData.PrimaryDischargeName;
    if (!seen.KFactor && !seen.FixedFlow) {
        Fault(context, messages::NoFlowEntered(discharge));
        return;
    }
    if (!seen.KFactor && !IsSupplyMode(project.CalculationData)) {
        context.Report({MessageStyle::Plain, "", messages::NoSprinklerInDemand(discharge)});
    }
}

} // namespace quench
