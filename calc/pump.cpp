#include "calc/pump.h"

#include "calc/check_calculation_screen.h"
#include "calc/messages.h"
#include "calc/screen_words.h"
#include "core/formats.h"
#include "core/text.h"
#include "solver/build_half_edges.h"
#include "solver/calculation_options.h"

#include <cmath>
#include <set>

namespace quench {

namespace {

std::size_t At(int row) {
    return static_cast<std::size_t>(row);
}

int FindPump(const Project& project) {
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        if (project.CalcPipeRecord[At(pipe)].Material == MaterialFirePump) {
            return pipe;
        }
    }
    return 0;
}

double NodeKFactor(const Project& project, int number) {
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (project.NodeRecord[At(position)].Number == number) {
            return project.NodeRecord[At(position)].KFactor;
        }
    }
    return 0;
}

bool StopAtPump(RunContext& context, const char* text) {
    context.Dialogs.ShowMessage(MessageStyle::Plain, "", text);
    context.Screens.Send(screens::PipeData, screens::Show);
    context.AbortFlag = 1;
    return false;
}

} // namespace

void CheckPumpInlet(RunContext& context, InflowPipePath& path) {
    const Project& project = context.Project;
    path.clear();
    const int pump = FindPump(project);
    if (pump == 0) {
        return;
    }
    std::set<int> passed{InflowNodeCode};
    std::vector<int> front{InflowNodeCode};
    std::vector<bool> crossed(At(project.NumberOfPipes) + 1, false);
    while (!front.empty()) {
        std::vector<int> next;
        for (int node : front) {
            if (NodeKFactor(project, node) > 0) {
                StopAtPump(context, messages::SprinklerUpstreamOfPump);
                return;
            }
            for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
                const CalcPipeRecord& record = project.CalcPipeRecord[At(pipe)];
                const int begin = NodeNumberOf(record.BegNode);
                const int end = NodeNumberOf(record.EndNode);
                if (crossed[At(pipe)] || (begin != node && end != node)) {
                    continue;
                }
                crossed[At(pipe)] = true;
                path.push_back(pipe);
                if (pipe == pump) {
                    continue; // the walk stops at the pump
                }
                const int other = begin == node ? end : begin;
                if (passed.insert(other).second) {
                    next.push_back(other);
                }
            }
        }
        front.swap(next);
    }
}

void EvaluatePumpBoost(RunContext& context, const InflowPipePath& /*path*/) {
    Project& project = context.Project;
    const int pump = FindPump(project);
    if (pump == 0) {
        return;
    }
    if (project.CalcPipeRecord[At(pump)].DeviceLoss == 0) {
        StopAtPump(context, messages::PumpBoostZero);
    }
}

void ReadPumpBoost(RunContext& context) {
    Project& project = context.Project;
    context.SupplyPumpBoost = 0;
    for (int row = 1; row <= MaxPipes; ++row) {
        const WorkPipeRecord& work = project.WorkPipeRecord[At(row)];
        if (!HasBothNodes(work) || work.Material != MaterialFirePump) {
            continue;
        }
        const double boost = context.PumpRerunPending ? 0.0 : work.DeviceLoss;
        if (work.DeviceLoss == NotGiven) {
            context.PumpRerunPending = true;
        }
        if (boost != NotGiven && !context.PumpRerunPending &&
            IsSupplyMode(project.CalculationData)) {
            // The pump lifts the supply's pressure by its boost.
            context.SupplyPumpBoost = boost;
        }
        context.RunPumpBoost = boost;
    }
}

} // namespace quench
