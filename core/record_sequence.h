#pragma once

// The order of the records in a project file. Like the field layout, one description serves the
// reader, the writer and the JSON output; the visitor has these members:
//
//   Record(name, data)              one record holding a whole record type
//   Count(name, value)              one record holding the Integer that sizes a table
//   Table(name, rows, count, kind)  one record for each of rows 1 to count
//   Value(name, value)              one record holding a single number or String
//
// The count of a table is taken as the file gives it, so it may be negative or above capacity;
// only UsedRows of it ever address the table.

#include "core/project.h"

#include <algorithm>
#include <cstddef>

namespace quench {

// The output tables are rebuilt by every calculation; a template load skips them.
enum class TableKind { Input, Output };

// The rows of a table that a count addresses: 1 to the count, within the table's capacity.
template <class Rows>
int UsedRows(const Rows& rows, Integer count) {
    const int capacity = static_cast<int>(rows.size()) - 1;
    return std::clamp(static_cast<int>(count), 0, capacity);
}

// Records 1 to 5: the general data. P is Project or const Project.
template <class P, class Sequence>
void VisitHeaderRecords(P& project, Sequence& sequence) {
    sequence.Record("ProjectData", project.ProjectData);
    sequence.Record("ClientData", project.ClientData);
    sequence.Record("CompanyData", project.CompanyData);
    sequence.Record("BuildingData", project.BuildingData);
    sequence.Record("SystemData", project.SystemData);
}

// Every record from the first up to UnitSystem.
template <class P, class Sequence>
void VisitProjectRecords(P& project, Sequence& sequence) {
    VisitHeaderRecords(project, sequence);
    sequence.Count("NumberOfPipeRows", project.NumberOfPipeRows);
    sequence.Table("PipeRecord", project.PipeRecord, project.NumberOfPipeRows, TableKind::Input);
    sequence.Record("TreeBuilderData", project.TreeBuilderData);
    sequence.Record("GridBuilderData", project.GridBuilderData);
    sequence.Record("CalculationData", project.CalculationData);
    sequence.Table("PipeResultRecord", project.PipeResultRecord,
                   project.CalculationData.NumberOfUniquePipeSections, TableKind::Output);
    sequence.Count("NumberOfNodes", project.NumberOfNodes);
    sequence.Count("NumberOfPipes", project.NumberOfPipes);
    sequence.Table("NodeRecord", project.NodeRecord, project.NumberOfNodes, TableKind::Output);
    sequence.Table("CalcPipeRecord", project.CalcPipeRecord, project.NumberOfPipes,
                   TableKind::Output);
    sequence.Value("MaxNodePressureImbalanceResult", project.MaxNodePressureImbalanceResult);
    sequence.Value("AvgNodePressureImbalanceResult", project.AvgNodePressureImbalanceResult);
    sequence.Value("MaxNodeFlowImbalanceResult", project.MaxNodeFlowImbalanceResult);
    sequence.Value("AvgNodeFlowImbalanceResult", project.AvgNodeFlowImbalanceResult);
    sequence.Value("InflowNode", project.InflowNode);
    sequence.Value("UnitSystem", project.UnitSystem);
}

// The records that later formats added at the end. Which of them a file holds depends on its
// format number; the writer always writes both groups.
struct ExtensionRecords {
    bool DeviceNames = true;  // format above 60111
    bool InputChanged = true; // format above 60117
};

template <class P, class Sequence>
void VisitExtensionRecords(P& project, Sequence& sequence, ExtensionRecords present = {}) {
    if (present.DeviceNames) {
        sequence.Value("AlarmDeviceName", project.AlarmDeviceName);
        sequence.Value("AlarmDeviceShortName", project.AlarmDeviceShortName);
        sequence.Value("AlarmDeviceCode", project.AlarmDeviceCode);
    }
    if (present.InputChanged) {
        sequence.Value("InputChanged", project.InputChanged);
    }
}

} // namespace quench
