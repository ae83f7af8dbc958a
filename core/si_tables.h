#pragma once

// The SI copies of the output tables and of the numeric settings, rebuilt from the US tables for
// the screens and reports that show SI: pressures in kPa, flows in Lpm, lengths in m, diameters in
// mm, velocities in m/s, K-factors in Km, friction loss per length in kPa/m, areas in m², densities
// in Lpm/m², temperatures in C. Texts and counts are copied as they stand, and so are the marks
// that mean "not given" (a device loss of -4, an unused pump curve point of -10000).

#include "core/project.h"

namespace quench {

// A pump curve point of this value is not in use.
constexpr Single UnusedPumpPoint = -10000.0f;

// Rebuilds SystemDataSI, CalculationDataSI, NodeRecordSI, CalcPipeRecordSI and
// PipeResultRecordSI from their US tables, every row at full capacity.
void BuildSITables(Project& project);

SystemData SystemDataToSI(const SystemData& us);
CalculationData CalculationDataToSI(const CalculationData& us);
NodeRecord NodeRecordToSI(const NodeRecord& us);
CalcPipeRecord CalcPipeRecordToSI(const CalcPipeRecord& us);
PipeResultRecord PipeResultRecordToSI(const PipeResultRecord& us);

} // namespace quench
