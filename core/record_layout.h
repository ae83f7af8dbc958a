#pragma once

// The fields of each record of the project file, in the order and with the widths they have on
// disk. One description serves the reader, the writer and the JSON output: each function hands
// every field, with its name, to a visitor that has these members:
//
//   Number(name, value)          an Integer, Long, Single or Double
//   Numbers(name, array)         a fixed array of numbers
//   Bytes(name, array)           raw bytes kept as they are
//   Text(name, text, width)      Text[width]: blank padded on disk, held without the padding
//   String(name, text)           a 2-byte little-endian length and that many characters
//
// The record is taken as Data& so that the reader visits a mutable record and the writer a
// const one with the same description.

#include "core/project.h"

#include <concepts>
#include <type_traits>

namespace quench {

template <class Data, class Record>
concept RecordOf = std::same_as<std::remove_const_t<Data>, Record>;

template <RecordOf<ProjectData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Number("ProgramVersion", data.ProgramVersion);
    fields.Text("Title", data.Title, 40);
    fields.Text("DesignedBy", data.DesignedBy, 40);
    fields.Text("Date", data.Date, 40);
    fields.Text("CodeReference", data.CodeReference, 40);
    fields.Text("ApprovingAgency", data.ApprovingAgency, 40);
    fields.Text("Comment", data.Comment, 200);
    fields.Number("PrintComment", data.PrintComment);
    fields.Number("GPDProjectFormat", data.GPDProjectFormat);
}

template <RecordOf<ClientData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Text("Name", data.Name, 40);
    fields.Text("Address", data.Address, 40);
    fields.Text("CityStateZip", data.CityStateZip, 40);
    fields.Text("Phone", data.Phone, 40);
    fields.Text("Fax", data.Fax, 40);
    fields.Text("Comment", data.Comment, 200);
    fields.Number("PrintComment", data.PrintComment);
}

template <RecordOf<CompanyData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Text("Name", data.Name, 40);
    fields.Text("Representative", data.Representative, 40);
    fields.Text("Address", data.Address, 40);
    fields.Text("CityStateZip", data.CityStateZip, 40);
    fields.Text("Phone", data.Phone, 40);
    fields.Text("Fax", data.Fax, 40);
    fields.Text("Comment", data.Comment, 200);
    fields.Number("PrintComment", data.PrintComment);
}

template <RecordOf<BuildingData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Text("Name", data.Name, 40);
    fields.Text("Owner", data.Owner, 40);
    fields.Text("Contact", data.Contact, 40);
    fields.Text("Address", data.Address, 40);
    fields.Text("CityStateZip", data.CityStateZip, 40);
    fields.Text("Phone", data.Phone, 40);
    fields.Text("Fax", data.Fax, 40);
    fields.Text("Comment", data.Comment, 200);
    fields.Number("PrintComment", data.PrintComment);
}

template <RecordOf<SystemData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Number("InRackSprinklerAllowance", data.InRackSprinklerAllowance);
    fields.Number("InsideHoseStreamAllowance", data.InsideHoseStreamAllowance);
    fields.Number("OutsideHoseStreamAllowance", data.OutsideHoseStreamAllowance);
    fields.Number("DefaultPipeMaterial", data.DefaultPipeMaterial);
    fields.Number("DefaultKFactor", data.DefaultKFactor);
    fields.Text("SprinklerMake", data.SprinklerMake, 40);
    fields.Number("TemperatureRating", data.TemperatureRating);
    fields.Text("SprinklerModel", data.SprinklerModel, 40);
    fields.Text("SprinklerSize", data.SprinklerSize, 40);
    fields.Number("LaborRate", data.LaborRate);
    fields.Number("OtherLaborHours", data.OtherLaborHours);
    fields.Number("OtherMaterialCosts", data.OtherMaterialCosts);
    fields.Text("SystemComment", data.SystemComment, 200);
    fields.Number("SystemPrintComment", data.SystemPrintComment);
    fields.Text("HazardDescription", data.HazardDescription, 40);
    fields.Number("AreaOfSprinklerOperation", data.AreaOfSprinklerOperation);
    fields.Text("SprinklerSystemType", data.SprinklerSystemType, 10);
    fields.Number("MinimumDesiredDensity", data.MinimumDesiredDensity);
    fields.Number("MaximumAreaPerSprinkler", data.MaximumAreaPerSprinkler);
    fields.Text("HydrantTestDate", data.HydrantTestDate, 40);
    fields.Text("SourceOfInformation", data.SourceOfInformation, 40);
    fields.Text("TestHydrantID", data.TestHydrantID, 40);
    fields.Number("HydrantElevation", data.HydrantElevation);
    fields.Number("TestStaticPressure", data.TestStaticPressure);
    fields.Number("TestResidualPressure", data.TestResidualPressure);
    fields.Number("TestFlowRate", data.TestFlowRate);
    fields.Number("CalculatedResidualPressure", data.CalculatedResidualPressure);
    fields.Number("CalculatedFlowRate", data.CalculatedFlowRate);
    fields.Number("SecondTestStaticPressure", data.SecondTestStaticPressure);
    fields.Number("SecondTestResidualPressure", data.SecondTestResidualPressure);
    fields.Number("SecondTestFlowRate", data.SecondTestFlowRate);
    fields.Number("ExteriorHoseFlow", data.ExteriorHoseFlow);
    fields.Text("PrimaryDischargeName", data.PrimaryDischargeName, 9);
}

template <RecordOf<PipeRecord> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.String("BegNode", data.BegNode);
    fields.String("EndNode", data.EndNode);
    fields.Text("KFactorB", data.KFactorB, 6);
    fields.Text("KFactorE", data.KFactorE, 6);
    fields.Number("ElevationB", data.ElevationB);
    fields.Number("ElevationE", data.ElevationE);
    fields.Number("PressEstimateB", data.PressEstimateB);
    fields.Number("PressEstimateE", data.PressEstimateE);
    fields.Number("SprinklerAreaB", data.SprinklerAreaB);
    fields.Number("SprinklerAreaE", data.SprinklerAreaE);
    fields.Text("AreaGroupB", data.AreaGroupB, 6);
    fields.Text("AreaGroupE", data.AreaGroupE, 6);
    fields.Number("NonSprinklerFlowB", data.NonSprinklerFlowB);
    fields.Number("NonSprinklerFlowE", data.NonSprinklerFlowE);
    fields.Number("Active", data.Active);
    fields.Number("Material", data.Material);
    fields.Number("DeviceLoss", data.DeviceLoss);
    fields.Number("Diameter", data.Diameter);
    fields.Number("DiameterFixed", data.DiameterFixed);
    fields.Number("Length", data.Length);
    fields.Number("OldFittingLength", data.OldFittingLength);
    fields.Numbers("FittingCounts", data.FittingCounts);
    fields.String("FittingText", data.FittingText);
    fields.Number("TotalEquivLength", data.TotalEquivLength);
    fields.Number("TypeGroup", data.TypeGroup);
    fields.Number("BegIsInflow", data.BegIsInflow);
    fields.Number("EndIsInflow", data.EndIsInflow);
    fields.Number("NonStandardFitLength", data.NonStandardFitLength);
    fields.Text("CadHandle", data.CadHandle, 6);
}

template <RecordOf<TreeBuilderData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Number("CrossDiameter", data.CrossDiameter);
    fields.Number("CrossMaterial", data.CrossMaterial);
    fields.Number("CrossTypeGroup", data.CrossTypeGroup);
    fields.Number("BranchDiameter", data.BranchDiameter);
    fields.Number("BranchMaterial", data.BranchMaterial);
    fields.Number("BranchTypeGroup", data.BranchTypeGroup);
    fields.Number("Elevation", data.Elevation);
    fields.Number("KFactor", data.KFactor);
    fields.Text("AreaGroup", data.AreaGroup, 6);
    fields.Number("SourceNode", data.SourceNode);
    fields.Number("MaxSpaceBetweenBranches", data.MaxSpaceBetweenBranches);
    fields.Number("MaxSpaceBetweenSprinklers", data.MaxSpaceBetweenSprinklers);
    fields.Number("ExitNode", data.ExitNode);
    fields.Number("NodalNumberingIncrement", data.NodalNumberingIncrement);
    fields.Number("LengthOfCrossMain", data.LengthOfCrossMain);
    fields.Number("DistanceBetweenBranchLines", data.DistanceBetweenBranchLines);
    fields.Number("LengthOfLeftBranchLine", data.LengthOfLeftBranchLine);
    fields.Number("LengthOfRightBranchLine", data.LengthOfRightBranchLine);
    fields.Number("LeftDistanceToFirstSprinkler", data.LeftDistanceToFirstSprinkler);
    fields.Number("RightDistanceToFirstSprinkler", data.RightDistanceToFirstSprinkler);
    fields.Number("LeftDistanceBetweenSprinklers", data.LeftDistanceBetweenSprinklers);
    fields.Number("RightDistanceBetweenSprinklers", data.RightDistanceBetweenSprinklers);
    fields.Number("Reserved", data.Reserved);
    fields.Number("SprinklerArea", data.SprinklerArea);
}

template <RecordOf<GridBuilderData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Number("PerimeterDiameter", data.PerimeterDiameter);
    fields.Number("PerimeterMaterial", data.PerimeterMaterial);
    fields.Number("PerimeterTypeGroup", data.PerimeterTypeGroup);
    fields.Number("BranchDiameter", data.BranchDiameter);
    fields.Number("BranchMaterial", data.BranchMaterial);
    fields.Number("BranchTypeGroup", data.BranchTypeGroup);
    fields.Number("Elevation", data.Elevation);
    fields.Number("KFactor", data.KFactor);
    fields.Text("AreaGroup", data.AreaGroup, 6);
    fields.Number("SourceNode", data.SourceNode);
    fields.Number("NodalNumberingIncrement", data.NodalNumberingIncrement);
    fields.Number("SourceEntryPoint", data.SourceEntryPoint);
    fields.Number("DistanceToFirstBranch", data.DistanceToFirstBranch);
    fields.Number("DistanceBetweenBranchLines", data.DistanceBetweenBranchLines);
    fields.Number("NumberOfBranchLines", data.NumberOfBranchLines);
    fields.Number("LeftDistanceToFirstSprinkler", data.LeftDistanceToFirstSprinkler);
    fields.Number("DistanceBetweenSprinklers", data.DistanceBetweenSprinklers);
    fields.Number("SprinklersPerBranchLine", data.SprinklersPerBranchLine);
    fields.Number("RightDistanceToPerimeter", data.RightDistanceToPerimeter);
    fields.Number("SprinklerArea", data.SprinklerArea);
}

template <RecordOf<CalculationData> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Text("CalculationComment", data.CalculationComment, 100);
    fields.Number("MinPressureAtHMDNode", data.MinPressureAtHMDNode);
    fields.Number("DesignDensity", data.DesignDensity);
    fields.Number("SystemInflowNode", data.SystemInflowNode);
    fields.Number("SecondInflowNode", data.SecondInflowNode);
    fields.Number("ThirdInflowNode", data.ThirdInflowNode);
    fields.Number("InflowResidualPressure1", data.InflowResidualPressure1);
    fields.Number("InflowResidualPressure2", data.InflowResidualPressure2);
    fields.Number("InflowResidualPressure3", data.InflowResidualPressure3);
    fields.Number("MaximumNodePressureImbalance", data.MaximumNodePressureImbalance);
    fields.Number("UseMaximumImbalance", data.UseMaximumImbalance);
    fields.Number("AverageNodePressureImbalance", data.AverageNodePressureImbalance);
    fields.Number("UseAverageImbalance", data.UseAverageImbalance);
    fields.Number("InitialDampingFactor", data.InitialDampingFactor);
    fields.Number("MinimumDampingFactor", data.MinimumDampingFactor);
    fields.Number("DemandMode", data.DemandMode);
    fields.Number("SupplyMode", data.SupplyMode);
    fields.Number("UseAutomaticPeaking", data.UseAutomaticPeaking);
    fields.Number("UseResidualPressureEstimate", data.UseResidualPressureEstimate);
    fields.Number("MaxWaterVelocity", data.MaxWaterVelocity);
    fields.Number("MaxFrictionalLoss", data.MaxFrictionalLoss);
    fields.Numbers("TypeGroupMinDiameter", data.TypeGroupMinDiameter);
    fields.Numbers("TypeGroupMaxDiameter", data.TypeGroupMaxDiameter);
    fields.Bytes("SolverScratch", data.SolverScratch);
    fields.Number("NumberOfUniquePipeSections", data.NumberOfUniquePipeSections);
    fields.Number("NumberOfFlowingSprinklers", data.NumberOfFlowingSprinklers);
    fields.Number("MaximumFlowVelocity", data.MaximumFlowVelocity);
    fields.Number("MaximumVelocityPipe", data.MaximumVelocityPipe);
    fields.Number("SprinklerFlow", data.SprinklerFlow);
    fields.Number("NonSprinklerFlow", data.NonSprinklerFlow);
    fields.Number("ResultFlag", data.ResultFlag);
    fields.Number("HMDNodeNumber", data.HMDNodeNumber);
    fields.Number("HMDActualResidualPressure", data.HMDActualResidualPressure);
    fields.Number("HMDActualFlow", data.HMDActualFlow);
    fields.Number("InflowResidualPressure", data.InflowResidualPressure);
    fields.Number("InflowFlow", data.InflowFlow);
    fields.Numbers("PumpCurveFlow", data.PumpCurveFlow);
    fields.Numbers("PumpCurvePressure", data.PumpCurvePressure);
    fields.Numbers("PumpCoefficients", data.PumpCoefficients);
    fields.Number("Reserved", data.Reserved);
    fields.Number("PumpDefined", data.PumpDefined);
    fields.Number("PumpSource", data.PumpSource);
    fields.Number("UseFlowImbalance", data.UseFlowImbalance);
    fields.Number("UseFrictionLimit", data.UseFrictionLimit);
    fields.Number("DoNotIncreaseSize", data.DoNotIncreaseSize);
}

template <RecordOf<PipeResultRecord> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Number("BegNode", data.BegNode);
    fields.Number("EndNode", data.EndNode);
    fields.Number("KFactorB", data.KFactorB);
    fields.Number("KFactorE", data.KFactorE);
    fields.Number("ElevationB", data.ElevationB);
    fields.Number("ElevationE", data.ElevationE);
    fields.Number("DischargeB", data.DischargeB);
    fields.Number("DischargeE", data.DischargeE);
    fields.Number("ResidualB", data.ResidualB);
    fields.Number("ResidualE", data.ResidualE);
    fields.Number("NominalDiameter", data.NominalDiameter);
    fields.Number("InsideDiameter", data.InsideDiameter);
    fields.Number("CFactor", data.CFactor);
    fields.Number("Flow", data.Flow);
    fields.Number("Velocity", data.Velocity);
    fields.Number("FrictionLossPerFoot", data.FrictionLossPerFoot);
    fields.String("FittingText", data.FittingText);
    fields.Number("TypeGroup", data.TypeGroup);
    fields.Number("PipeLength", data.PipeLength);
    fields.Number("FittingLength", data.FittingLength);
    fields.Number("TotalLength", data.TotalLength);
    fields.Number("FrictionPressure", data.FrictionPressure);
    fields.Number("ElevationPressure", data.ElevationPressure);
    fields.Number("VelocityPressure", data.VelocityPressure);
    fields.Number("Spare", data.Spare);
    fields.Number("DeviceFlag", data.DeviceFlag);
    fields.Number("FixedFlowB", data.FixedFlowB);
    fields.Number("FixedFlowE", data.FixedFlowE);
}

template <RecordOf<NodeRecord> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Number("WorkPressure", data.WorkPressure);
    fields.Number("Number", data.Number);
    fields.Number("Elevation", data.Elevation);
    fields.Number("KFactor", data.KFactor);
    fields.Number("NodeMark", data.NodeMark);
    fields.Number("SprinklerArea", data.SprinklerArea);
    fields.Number("FixedFlow", data.FixedFlow);
    fields.Number("ResidualPressure", data.ResidualPressure);
    fields.Number("Discharge", data.Discharge);
    fields.Text("AreaGroup", data.AreaGroup, 6);
    fields.Number("WorkFlow", data.WorkFlow);
    fields.Number("FlowImbalance", data.FlowImbalance);
    fields.Text("CadHandle", data.CadHandle, 6);
}

template <RecordOf<CalcPipeRecord> Data, class Fields>
void VisitRecordFields(Data& data, Fields& fields) {
    fields.Text("BegNode", data.BegNode, 6);
    fields.Text("EndNode", data.EndNode, 6);
    fields.Number("NominalLength", data.NominalLength);
    fields.Number("TotalLength", data.TotalLength);
    fields.Number("TypeGroup", data.TypeGroup);
    fields.Number("Material", data.Material);
    fields.String("ResultFittingText", data.ResultFittingText);
    fields.Number("DeviceLoss", data.DeviceLoss);
    fields.Number("NominalDiameter", data.NominalDiameter);
    fields.Number("InsideDiameter", data.InsideDiameter);
    fields.Number("Flow", data.Flow);
    fields.Number("Velocity", data.Velocity);
    fields.Number("Autosized", data.Autosized);
    fields.Number("CFactor", data.CFactor);
    fields.Number("NonStandardFitLength", data.NonStandardFitLength);
    fields.Numbers("FittingCounts", data.FittingCounts);
    fields.Number("FrictionLoss", data.FrictionLoss);
    fields.String("FittingText", data.FittingText);
    fields.Number("FittingLength", data.FittingLength);
    fields.Number("ElevationPressure", data.ElevationPressure);
    fields.Number("VelocityPressure", data.VelocityPressure);
}

} // namespace quench
