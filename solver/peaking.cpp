#include "solver/peaking.h"

#include "core/text.h"
#include "solver/hmd.h"

#include <cctype>

namespace quench {

namespace {

bool IsLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

bool HoldsLetter(const std::string& text) {
    for (char c : text) {
        if (IsLetter(c)) {
            return true;
        }
    }
    return false;
}

} // namespace

bool HasAreaGroups(const Project& project) {
    int first = 0;
    for (int position = 1; position <= project.NumberOfNodes && first == 0; ++position) {
        if (HoldsLetter(project.NodeRecord[static_cast<std::size_t>(position)].AreaGroup)) {
            first = position;
        }
    }
    if (first == 0) {
        return false;
    }
    const std::string group = Trim(project.NodeRecord[static_cast<std::size_t>(first)].AreaGroup);
    for (int position = 1; position <= project.NumberOfNodes; ++position) {
        if (Trim(project.NodeRecord[static_cast<std::size_t>(position)].AreaGroup) != group) {
            return true;
        }
    }
    return false;
}

char TakeGroup(std::string& text) {
    while (!text.empty()) {
        const char c = text.front();
        text.erase(text.begin());
        if (IsLetter(c)) {
            return c;
        }
    }
    return 0;
}

bool HasGroupLeft(const std::string& text) {
    std::string copy = text;
    return TakeGroup(copy) != 0;
}

void ApplyHmdGroups(const Project& project, SolverState& state) {
    const int hmd = state.Edges.PositionOf(state.HmdNode);
    state.PendingGroups =
        hmd == 0 ? std::string() : project.NodeRecord[static_cast<std::size_t>(hmd)].AreaGroup;
    std::string groups = state.PendingGroups;
    HalfEdgeTable& edges = state.Edges;
    for (char letter = TakeGroup(groups); letter != 0; letter = TakeGroup(groups)) {
        for (int position = 1; position <= project.NumberOfNodes; ++position) {
            double& kFactor = state.NodeKFactor[static_cast<std::size_t>(position)];
            const std::string group =
                Trim(project.NodeRecord[static_cast<std::size_t>(position)].AreaGroup);
            // The whole group text against one letter: a sprinkler of two groups matches neither.
            if (kFactor == 0 || group.empty() || group == std::string(1, letter)) {
                continue;
            }
            kFactor = 0;
            const int first = edges.FirstRow[static_cast<std::size_t>(position)];
            for (int row = first;
                 row != 0 && row <= edges.LastRow[static_cast<std::size_t>(position)]; ++row) {
                edges[row].KFactor = 0;
            }
        }
    }
}

void PeakingRound(RunContext& context, SolverState& state) {
    if (!state.Options.DemandMode) {
        FindHmd(context.Project, state);
    }
    ApplyHmdGroups(context.Project, state);
    if (!state.Peaked) {
        state.NotConverged = 1; // the group's own solution is still to come
    }
    state.Peaked = true;
    if (!state.Options.DemandMode) {
        state.HmdNode = 0;
    }
    state.LastPeakNode = state.HmdNode;
}

} // namespace quench
