#include "calc/check_device_elevations.h"

#include "calc/messages.h"
#include "calc/screen_words.h"

namespace quench {

namespace {

const NodeRecord* NodeByNumber(const Project& project, int number) {
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (project.NodeRecord[static_cast<std::size_t>(position)].Number == number) {
            return &project.NodeRecord[static_cast<std::size_t>(position)];
        }
    }
    return nullptr;
}

std::string DeviceName(const Project& project, int material) {
    switch (material) {
    case MaterialMeter:
        return "Meter ";
    case MaterialBackflowPreventer:
        return "Back flow preventer ";
    case MaterialAlarmDevice:
        return project.AlarmDeviceName + " ";
    default:
        return "Fire pump ";
    }
}

std::string Shown(const Project& project, int number) {
    return std::to_string(number == InflowNodeCode ? project.InflowNode : number);
}

} // namespace

void CheckDeviceElevations(RunContext& context, const SolverState& state) {
    const Project& project = context.Project;
    for (const DeviceConstraint& device : state.Devices.Devices) {
        const NodeRecord* from = NodeByNumber(project, device.FromNode);
        const NodeRecord* to = NodeByNumber(project, device.ToNode);
        if (from == nullptr || to == nullptr || from->Elevation == to->Elevation) {
            continue;
        }
        context.Dialogs.ShowMessage(
            MessageStyle::Plain, "",
            messages::DifferentElevation(DeviceName(project, device.Material),
                                         Shown(project, device.FromNode),
                                         Shown(project, device.ToNode)));
        context.Screens.Send(screens::PipeData, screens::Show);
        context.AbortFlag = 1;
        return;
    }
}

} // namespace quench
