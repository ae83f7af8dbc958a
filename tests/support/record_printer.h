#pragma once

// Shows a record of the model as JSON when an expectation on it fails, instead of its raw bytes.
// Include it in a test that compares records with EXPECT_EQ.

#include "core/project.h"

#include <ostream>

namespace quench {

void PrintTo(const ProjectData& record, std::ostream* out);
void PrintTo(const ClientData& record, std::ostream* out);
void PrintTo(const CompanyData& record, std::ostream* out);
void PrintTo(const BuildingData& record, std::ostream* out);
void PrintTo(const SystemData& record, std::ostream* out);
void PrintTo(const PipeRecord& record, std::ostream* out);
void PrintTo(const TreeBuilderData& record, std::ostream* out);
void PrintTo(const GridBuilderData& record, std::ostream* out);
void PrintTo(const CalculationData& record, std::ostream* out);
void PrintTo(const PipeResultRecord& record, std::ostream* out);
void PrintTo(const NodeRecord& record, std::ostream* out);
void PrintTo(const CalcPipeRecord& record, std::ostream* out);

} // namespace quench
