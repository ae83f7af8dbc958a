#include "core/project.h"

#include "core/formats.h"
#include "core/text.h"

#include <algorithm>

namespace quench {

Project::Project()
    : PipeRecord(MaxPipes + 1), WorkPipeRecord(MaxPipes + 1), CalcPipeRecord(MaxPipes + 1),
      NodeRecord(MaxNodes + 1), PipeResultRecord(MaxPipes + 1) {
    ResetProject(*this);
}

namespace {

// The descriptive records, the system data and the format number: not touched by a template load.
void ResetGeneralRecords(Project& project) {
    project.ProjectData = {};
    project.ProjectData.GPDProjectFormat = ProgramFormat;
    project.ClientData = {};
    project.CompanyData = {};
    project.BuildingData = {};
    project.SystemData = {};
}

// Every row from row `first` on made a copy of one blank row: a copy of empty texts keeps the
// rows' room and allocates nothing.
template <class Record>
void FillRows(Table<Record>& rows, const Record& blank, std::size_t first) {
    std::fill(rows.begin() + static_cast<std::ptrdiff_t>(first), rows.end(), blank);
}

void ResetPipeRows(Project& project) {
    const Integer material = project.SystemData.DefaultPipeMaterial;
    PipeRecord pipe;
    pipe.Material = material;
    FillRows(project.PipeRecord, pipe, 1);
    WorkPipeRecord work;
    work.Material = material;
    FillRows(project.WorkPipeRecord, work, 1);
}

// All settings and results to zero, except the two option flags that outlive a reset.
void ResetCalculationData(CalculationData& data) {
    const Integer useFrictionLimit = data.UseFrictionLimit;
    const Integer doNotIncreaseSize = data.DoNotIncreaseSize;
    data = {};
    data.DemandMode = 1;
    data.SupplyMode = 0;
    data.UseFrictionLimit = useFrictionLimit;
    data.DoNotIncreaseSize = doNotIncreaseSize;
}

void ResetOutputTables(Project& project) {
    FillRows(project.PipeResultRecord, PipeResultRecord{}, 0);
    FillRows(project.CalcPipeRecord, CalcPipeRecord{}, 0);
    FillRows(project.NodeRecord, NodeRecord{}, 0);
    project.MaxNodePressureImbalanceResult = 0;
    project.AvgNodePressureImbalanceResult = 0;
    project.MaxNodeFlowImbalanceResult = 0;
    project.AvgNodeFlowImbalanceResult = 0;
}

void ResetProjectScalars(Project& project) {
    project.NumberOfActivePipes = 0;
    project.InflowNode = 0;
    project.UnitSystem = 0;
    project.AlarmDeviceName = DefaultAlarmDeviceName;
    project.AlarmDeviceShortName = DefaultAlarmDeviceShortName;
    project.AlarmDeviceCode = DefaultAlarmDeviceCode;
    project.InputChanged = 0;
    project.SelectedPipe = 1;
}

} // namespace

void ResetProject(Project& project) {
    if (!project.LoadingTemplate) {
        ResetGeneralRecords(project);
    }
    ResetPipeRows(project);
    project.SizingNotes.clear();
    project.NumberOfPipes = 0;
    project.NumberOfNodes = 0;
    project.NumberOfPipeRows = 0;
    if (project.LoadingTemplate) {
        return;
    }
    ResetCalculationData(project.CalculationData);
    ResetOutputTables(project);
    ResetProjectScalars(project);
}

void ClearNetworkOnly(Project& project) {
    const bool loadingTemplate = project.LoadingTemplate;
    project.LoadingTemplate = true;
    ResetProject(project);
    project.LoadingTemplate = loadingTemplate;
}

bool IsBlankRow(const PipeRecord& row) {
    return TrimmedView(row.BegNode).empty() && TrimmedView(row.EndNode).empty();
}

bool HasBothNodes(const PipeRecord& row) {
    return !TrimmedView(row.BegNode).empty() && !TrimmedView(row.EndNode).empty();
}

int TypedNodeNumber(const Project& project, int number) {
    return number == InflowNodeCode ? project.InflowNode : number;
}

double TypedNodeNumber(const Project& project, double number) {
    return number == InflowNodeCode ? project.InflowNode : number;
}

std::string TypedNodeText(const Project& project, std::string_view text) {
    std::string trimmed = Trim(text);
    return ToNumber(trimmed) == InflowNodeCode ? std::to_string(project.InflowNode) : trimmed;
}

} // namespace quench
