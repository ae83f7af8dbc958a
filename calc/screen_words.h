#pragma once

// The screens the calculation speaks to and the words it sends them.

namespace quench::screens {

constexpr const char* PipeData = "frmEEPipeData";
constexpr const char* Calculation = "frmCalculation";
constexpr const char* GeneralData = "frmGPD";

constexpr const char* Show = "Show";               // bring the screen forward
constexpr const char* ShowInputTab = "ShowTab0";   // the Calculation screen's first tab
constexpr const char* ShowSizingTab = "ShowTab1";  // its sizing tab
constexpr const char* ShowResultsTab = "ShowTab2"; // its results tab
constexpr const char* UpdatePressure = "UpdatePressure";
constexpr const char* UpdateAutoSizedDiameter = "UpdateAutoSizedDiameter";
constexpr const char* UpdateCalculatedSupply = "UpdateCalculatedSupply";

} // namespace quench::screens
