#include "calc/check_device_elevations.h"

#include "calc/messages.h"
#include "calc/screen_words.h"

namespace quench {

namespace {

const NodeRecord* NodeByNumber(const Project& project, int number) {
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (project.NodeRecord[position].Number == number) {
            return &project.NodeRecord[position];
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
    return std::to_string(TypedNodeNumber(project, number));
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
        const std::string text = messages::DifferentElevation(DeviceName(project, device.Material),
                                                              Shown(project, device.FromNode),
                                                              Shown(project, device.ToNode));
        context.Stop(Diagnostic(MessageStyle::Plain, "", text)
                         .OnNode(TypedNodeNumber(project, device.FromNode))
                         .Bring(screens::PipeData, screens::Show));
        return;
    }
}

} // namespace quench
