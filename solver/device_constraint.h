#pragma once

// A row of the network that is a device, not a pipe: meter, backflow preventer, the alarm device
// (each a constant loss) or the fire pump. The solver carries each as a virtual pipe whose length
// it alters until the drop across it matches the stated loss.

#include <vector>

namespace quench {

struct DeviceConstraint {
    int FromNode = 0;
    int ToNode = 0;
    double Loss = 0;  // psi; 0 for a pump, whose boost is not a loss held here
    int Material = 0; // 51 to 54, for the messages
};

struct DeviceList {
    std::vector<DeviceConstraint> Devices;
    std::vector<double> RelativeFlow; // beside each device: its share of all the pipes' flow

    int Count() const { return static_cast<int>(Devices.size()); }
    void Clear() {
        Devices.clear();
        RelativeFlow.clear();
    }
    void Add(const DeviceConstraint& device) {
        Devices.push_back(device);
        RelativeFlow.push_back(1.0);
    }
};

} // namespace quench
