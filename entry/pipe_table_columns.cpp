#include "entry/pipe_table_columns.h"

#include "core/text.h"

#include <array>

namespace quench {

namespace {

using Kind = NumberFieldKind;
using Unit = UnitKind;

constexpr std::array<PipeColumnInfo, PipeColumnCount> Columns{{
    {"txtBNodeNumber", "Beg", "EEPipeDataNode", Kind::NodeNumber, std::nullopt, std::nullopt},
    {"txtKFactBNode", "KFact", "EEPipeDataKFactorB", Kind::KFactor, std::nullopt, Unit::K_Factor},
    {"txtBElevation", "Elev", "EEPipeDataSprinklerElevation", Kind::Elevation, std::nullopt,
     Unit::Length},
    {"txtBPressEstimate", "Est Press", "EEPipeDataPressureEstimate", Kind::PressureEstimate,
     std::nullopt, Unit::Pressure},
    {"txtBSprinklerArea", "Sprk Area", "EEPipeDataSprinklerArea", Kind::SprinklerArea, std::nullopt,
     Unit::Area},
    {"txtBSprinklerGroup", "Sprk Grp", "EEPipeDataSprinklerGroup", std::nullopt,
     TextFieldKind::AreaGroup, std::nullopt},
    {"txtBNonSprinklerFlow", "NSprk Flow", "EEPipeDataNonSprinklerFlow", Kind::NonSprinklerFlow,
     std::nullopt, Unit::Volumetric_Flow},
    {"txtENodeNumber", "End", "EEPipeDataNode", Kind::NodeNumber, std::nullopt, std::nullopt},
    {"txtKFactENode", "KFact", "EEPipeDataKFactorE", Kind::KFactor, std::nullopt, Unit::K_Factor},
    {"txtEElevation", "Elev", "EEPipeDataSprinklerElevation", Kind::Elevation, std::nullopt,
     Unit::Length},
    {"txtEPressEstimate", "Est Press", "EEPipeDataPressureEstimate", Kind::PressureEstimate,
     std::nullopt, Unit::Pressure},
    {"txtESprinklerArea", "Sprk Area", "EEPipeDataSprinklerArea", Kind::SprinklerArea, std::nullopt,
     Unit::Area},
    {"txtESprinklerGroup", "Sprk Grp", "EEPipeDataSprinklerGroup", std::nullopt,
     TextFieldKind::AreaGroup, std::nullopt},
    {"txtENonSprinklerFlow", "NSprk Flow", "EEPipeDataNonSprinklerFlow", Kind::NonSprinklerFlow,
     std::nullopt, Unit::Volumetric_Flow},
    {"cmdActive", "Status", "EEPipeDataActive", std::nullopt, std::nullopt, std::nullopt},
    {"txtPipeMaterial", "Mat", "EEPipeDataPipeMaterial", Kind::MaterialNumber, std::nullopt,
     std::nullopt},
    {"txtPipeType", "P Type", "EEPipeDataPipeType", Kind::TypeGroup, std::nullopt, std::nullopt},
    {"txtMeterLoss", "Loss", "EEPipeDataMeterLoss", Kind::DeviceLoss, std::nullopt,
     Unit::Pressure_Drop},
    {"txtPipeDiameter", "Dia", "EEPipeDataPipeDiameter", Kind::Diameter, std::nullopt,
     Unit::Fine_Length},
    {"txtPipeLength", "Len", "EEPipeDataPipeLength", Kind::Length, std::nullopt, Unit::Length},
    {"txtStandardFittings", "Std Fit", "EEPipeDataStandardFitting", std::nullopt,
     TextFieldKind::FittingText, std::nullopt},
    {"txtNonStandardFitLength", "NStd Fit", "EEPipeDataNonStandardFitting",
     Kind::NonStandardFittingLength, std::nullopt, Unit::Length},
    {"txtEquivLength", "Eq Len", "EEPipeDataEquivLength", std::nullopt, std::nullopt, Unit::Length},
}};

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

} // namespace

const PipeColumnInfo& ColumnInfo(PipeColumn column) {
    return Columns[static_cast<std::size_t>(column)];
}

PipeColumn ColumnAt(int index) {
    return static_cast<PipeColumn>(index);
}

int IndexOf(PipeColumn column) {
    return static_cast<int>(column);
}

ColumnEnd EndOfColumn(PipeColumn column) {
    if (column < PipeColumn::EndNode) {
        return ColumnEnd::Beginning;
    }
    if (column < PipeColumn::Active) {
        return ColumnEnd::Ending;
    }
    return ColumnEnd::None;
}

PipeColumn NodeColumn(PipeColumn column, bool ending) {
    const int span = IndexOf(PipeColumn::EndNode) - IndexOf(PipeColumn::BegNode);
    switch (EndOfColumn(column)) {
    case ColumnEnd::Beginning:
        return ending ? ColumnAt(IndexOf(column) + span) : column;
    case ColumnEnd::Ending:
        return ending ? column : ColumnAt(IndexOf(column) - span);
    case ColumnEnd::None:
        break;
    }
    return column;
}

bool IsNodeDataColumn(PipeColumn column) {
    return EndOfColumn(column) != ColumnEnd::None && column != PipeColumn::BegNode &&
           column != PipeColumn::EndNode;
}

bool IsHoseDischarge(const Project& project) {
    return EqualsIgnoreCase(Trim(project.SystemData.PrimaryDischargeName), "Hose");
}

std::string DischargeWord(const Project& project) {
    return IsHoseDischarge(project) ? "Hose" : "Sprinkler";
}

std::string InDischargeWords(std::string_view text, const Project& project) {
    std::string result(text);
    if (!IsHoseDischarge(project)) {
        return result;
    }
    ReplaceAll(result, "NSprk", "Fixed");
    ReplaceAll(result, "Sprk", "Flow");
    ReplaceAll(result, "Sprinkler", "Hose");
    ReplaceAll(result, "sprinkler", "hose");
    return result;
}

std::string ColumnCaption(PipeColumn column, const Project& project) {
    return InDischargeWords(ColumnInfo(column).Caption, project);
}

} // namespace quench
