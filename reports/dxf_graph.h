#pragma once

// The supply and demand graph as an AutoCAD ASCII DXF drawing: a header, the three tables the
// drawing uses, and LINE and TEXT entities on the layer "P-HYDR", one group code or value a line.
// The drawing is made in US units only; a metric project gets a message instead.

#include "core/dialogs.h"
#include "core/project.h"

#include <filesystem>
#include <optional>
#include <string>

namespace quench {

inline constexpr const char* DxfGraphLayer = "P-HYDR";
inline constexpr const char* DxfMetricMessage =
    "This feature currently not available with metric units selected.  Switch to English (US) "
    "units to generate a DXF graph.";
inline constexpr const char* DxfImpossibleTestMessage =
    "The hydrant test cannot be drawn: its residual pressure or its flow is above its static "
    "pressure.  No DXF graph was written.";

// What the graph is drawn from, in US units: the hydrant tests, the exterior hose flow and the
// demand point. A second-test value below 0.000001 is taken as 0.
struct GraphData {
    Single StaticPressure = 0;   // S
    Single ResidualPressure = 0; // R
    Single TestFlow = 0;         // Qt
    Single SecondStaticPressure = 0;
    Single SecondResidualPressure = 0;
    Single SecondTestFlow = 0;
    Integer ExteriorHoseFlow = 0;
    Single DemandPressure = 0; // Pc, CalculatedResidualPressure
    Single DemandFlow = 0;     // Qc, CalculatedFlowRate
};

GraphData GraphDataOf(const SystemData& system);

// True when the second test is complete (all three values not zero), so that its curve is drawn.
bool HasSecondTest(const GraphData& data);

// The drawing's lines, or nothing when the test cannot be drawn: a residual pressure above the
// static one, or, when the five values of the first test and the demand point all round to 0,
// a test flow above the static pressure.
std::optional<std::string> DxfGraphText(const GraphData& data);

enum class DxfGraphOutcome { Written, Metric, ImpossibleTest, WriteFailed };

// WriteDxfGraph: the graph of the project to `file`, written whole or not at all. A metric
// project shows DxfMetricMessage and writes nothing; `error` says why a write failed.
DxfGraphOutcome WriteDxfGraph(const Project& project, const std::filesystem::path& file,
                              Dialogs& dialogs, std::string* error = nullptr);

} // namespace quench
