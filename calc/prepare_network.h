#pragma once

#include "core/project.h"
#include "library/pipe_library.h"

namespace quench {

struct PrepareOptions {
    bool PumpRerunPending = false;  // a pump pass keeps the diameters and pump boost of the last
    bool UseGeneralDensity = false; // take the general data's density, not the screen's
};

struct PrepareResult {
    bool Failed = false;        // a sprinkler has no area to take (SprinklerAreaMissing)
    int NodesAboveCapacity = 0; // the number of nodes when above the table's capacity
    bool PumpUsesCurve = false; // a pump row without a typed boost in Supply mode
    Single DryAreaFactor = 1.0f;

    bool operator==(const PrepareResult&) const = default;
};

// The solver's tables from the working rows: the first inflow becomes node 10000, the nodes are
// sorted, each pipe is filed under its larger node with begin below end, materials and diameters
// are resolved against the library, and each node gets its elevation, K-factor, area and fixed
// flow. Safe to call at any time; silent: its faults are in the result.
PrepareResult PrepareNetwork(Project& project, const PipeLibrary& library,
                             const PrepareOptions& options = {});

// True when preparing the network again, straight after a preparation, would give exactly what
// that preparation gave: no further row holds the inflow node to be marked as the first inflow.
bool PreparingAgainRepeats(const Project& project);

// True when a blank row (both nodes empty) stands before a row that has a node.
bool HasBlankRowBetween(const Project& project);

} // namespace quench
