#include "calc/collect_devices.h"

#include "core/formats.h"
#include "core/text.h"
#include "solver/hydraulics.h"

namespace quench {

namespace {

// The value a node text of CalcPipeRecord stands for in the input rows.
double InputValue(const Project& project, const std::string& text) {
    return ToNumber(TypedNodeText(project, text));
}

// No active input row joins the two nodes.
bool IsBlankPipe(const Project& project, const CalcPipeRecord& pipe) {
    const double begin = InputValue(project, pipe.BegNode);
    const double end = InputValue(project, pipe.EndNode);
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& input = project.PipeRecord[row];
        if (!IsTrue(input.Active) || !HasBothNodes(input)) {
            continue;
        }
        const double inputBegin = ToNumber(input.BegNode);
        const double inputEnd = ToNumber(input.EndNode);
        if ((inputBegin == begin && inputEnd == end) || (inputBegin == end && inputEnd == begin)) {
            return false;
        }
    }
    return true;
}

} // namespace

void CollectDevices(RunContext& context, SolverState& state) {
    Project& project = context.Project;
    state.Devices.Clear();
    const int last = project.NumberOfPipes == 0 ? MaxPipes : project.NumberOfPipes;
    for (int row = 1; row <= last; ++row) {
        const CalcPipeRecord& pipe = project.CalcPipeRecord[row];
        if (IsDeviceCode(pipe.Material)) {
            DeviceConstraint device;
            device.FromNode = NodeNumberOf(pipe.BegNode);
            device.ToNode = NodeNumberOf(pipe.EndNode);
            // A loss not given holds nothing: the device is carried as a near short.
            const bool noLoss = pipe.Material == MaterialFirePump || pipe.DeviceLoss == NotGiven;
            device.Loss = noLoss ? 0.0 : pipe.DeviceLoss;
            device.Material = pipe.Material;
            state.Devices.Add(device);
        } else if (pipe.NominalLength == 0 && pipe.Material == 0 && IsBlankPipe(project, pipe)) {
            project.NumberOfPipes = static_cast<Integer>(row - 1);
            break;
        }
    }
}

} // namespace quench
