#include "entry/builder_pipes.h"

#include "entry/pipe_row_text.h"
#include "library/fitting_text.h"

namespace quench {

namespace {

PlacedPipe& NewRow(std::vector<PlacedPipe>& pipes, const Project& project, long long begin,
                   long long end, const BuilderPipeData& pipe, const BuilderNodeData& nodes,
                   Single length) {
    PlacedPipe& placed = pipes.emplace_back();
    PipeRecord& row = placed.Row;
    row = EmptyPipeRow(project);
    row.BegNode = std::to_string(begin);
    row.EndNode = std::to_string(end);
    row.Material = pipe.Material;
    row.Diameter = pipe.Diameter;
    row.TypeGroup = pipe.TypeGroup;
    row.DiameterFixed = pipe.Diameter == 0 ? False : True;
    row.ElevationB = nodes.Elevation;
    row.ElevationE = nodes.Elevation;
    row.AreaGroupB = nodes.AreaGroup;
    row.AreaGroupE = nodes.AreaGroup;
    row.Active = True;
    row.Length = length;
    return placed;
}

} // namespace

PlacedPipe& AddBranchPipe(std::vector<PlacedPipe>& pipes, const Project& project, long long& node,
                          long long increment, const BuilderPipeData& pipe,
                          const BuilderNodeData& nodes, Single length) {
    const long long begin = node;
    node += increment;
    PlacedPipe& placed = NewRow(pipes, project, begin, node, pipe, nodes, length);
    placed.Kind = BuilderPipeKind::Branch;
    placed.Row.KFactorB = nodes.KFactor;
    placed.Row.KFactorE = nodes.KFactor;
    placed.Row.SprinklerAreaB = nodes.SprinklerArea;
    placed.Row.SprinklerAreaE = nodes.SprinklerArea;
    return placed;
}

PlacedPipe& AddCrossPipe(std::vector<PlacedPipe>& pipes, const Project& project, long long begin,
                         long long end, const BuilderPipeData& pipe, const BuilderNodeData& nodes,
                         Single length) {
    PlacedPipe& placed = NewRow(pipes, project, begin, end, pipe, nodes, length);
    placed.Kind = BuilderPipeKind::CrossMain;
    placed.Row.KFactorB = "0";
    placed.Row.KFactorE = "0";
    return placed;
}

void SetOneFitting(PipeRecord& row, int kind) {
    row.FittingCounts = {};
    row.FittingCounts[static_cast<std::size_t>(kind)] = 1;
    row.FittingText = BuildFittingText(row.FittingCounts);
}

} // namespace quench
