#include "entry/grid_builder.h"

#include "core/formats.h"
#include "entry/builder_check.h"
#include "entry/builder_input_text.h"
#include "entry/builder_rows.h"
#include "entry/builder_words.h"

#include <cmath>

namespace quench {

namespace words = builder_words;

namespace {

BuilderCheck CheckInputs(const GridInputs& inputs) {
    BuilderCheck check;
    for (int index = 0; index < GridInputCount; ++index) {
        const std::string& text = inputs.Network[static_cast<std::size_t>(index)];
        if (text.empty() || inputs.ValueOf(text) == 0) {
            return check.Miss(BuilderControl::NetworkInput, index);
        }
    }
    CheckBuilderMaterials(inputs.PerimeterMaterial, inputs.BranchMaterial, inputs.DecimalCharacter,
                          check);
    return check;
}

BuilderTexts Texts(const GridInputs& inputs) {
    return {inputs.System, inputs.DecimalCharacter};
}

// Writes the rows of a grid in their order, each placed in the drawing: the feed and the top
// side, the sides down to the first line, then each branch line with the side pipes down to the
// next line placed directly after its first and last pipes.
class GridPlanner {
public:
    GridPlanner(const GridInputs& inputs, const Project& project, GridLayout& layout)
        : inputs_(inputs), project_(project), layout_(layout),
          perimeter_(BuilderPipeDataOf(inputs.PerimeterMaterial, inputs.PerimeterTypeGroup,
                                       inputs.PerimeterDiameter, Texts(inputs))),
          branch_(BuilderPipeDataOf(inputs.BranchMaterial, inputs.BranchTypeGroup,
                                    inputs.BranchDiameter, Texts(inputs))),
          nodes_(BuilderNodeDataOf(inputs.KFactor, inputs.SprinklerArea, inputs.Elevation,
                                   inputs.AreaGroup, Texts(inputs), project)),
          source_(CLng(inputs.Value(GridSourceNode))),
          increment_(CLng(inputs.Value(GridIncrement))) {}

    void Plan() {
        PlanTop();
        node_ = source_ + 4 * increment_;
        for (long long line = 1; line <= layout_.BranchLines; ++line) {
            PlanLine(line);
        }
    }

private:
    double X(int index) const { return inputs_.Value(index); }

    Single Stored(double length) const {
        return static_cast<Single>(StoredValue(UnitKind::Length, length, inputs_.System));
    }

    PlacedPipe& Perimeter(long long begin, long long end, Single length, int fitting,
                          LayoutPoint from, LayoutPoint to, long long line) {
        PlacedPipe& pipe =
            AddPerimeterPipe(layout_.Pipes, project_, begin, end, perimeter_, nodes_, length);
        pipe.Kind = BuilderPipeKind::Perimeter;
        SetOneFitting(pipe.Row, fitting);
        pipe.Begin = from;
        pipe.End = to;
        pipe.Line = static_cast<int>(line);
        return pipe;
    }

    PlacedPipe& Branch(double length, LayoutPoint from, LayoutPoint to, long long line) {
        PlacedPipe& pipe = AddGridBranchPipe(layout_.Pipes, project_, node_, increment_, branch_,
                                             nodes_, Stored(length));
        pipe.Begin = from;
        pipe.End = to;
        pipe.Line = static_cast<int>(line);
        return pipe;
    }

    void PlanTop() {
        const long long s = source_;
        const long long inc = increment_;
        const long long heads = layout_.HeadsPerLine;
        const double entry = X(GridSourceEntryPoint);
        const double width = layout_.Width;
        const double down = X(GridFirstBranch);
        const double feed = ShownValue(UnitKind::Length, FeedLength, inputs_.System);
        PlacedPipe& pipe =
            Perimeter(s, s + inc, FeedLength, TeeFitting, {entry, -feed}, {entry, 0}, 0);
        pipe.Kind = BuilderPipeKind::Feed;
        pipe.Row.AreaGroupB.clear();
        Perimeter(s + inc, s + 2 * inc, Stored(entry), ElbowFitting, {entry, 0}, {0, 0}, 0);
        Perimeter(s + inc, s + 3 * inc, Stored(std::fabs(width - entry)), ElbowFitting, {entry, 0},
                  {width, 0}, 0);
        Perimeter(s + 2 * inc, s + 4 * inc, Stored(down), TeeFitting, {0, 0}, {0, down}, 0);
        Perimeter(s + 3 * inc, s + 4 * inc + (heads + 1) * inc, Stored(down), TeeFitting,
                  {width, 0}, {width, down}, 0);
    }

    // The left side node, the heads in steps of the increment, the right side node.
    void PlanLine(long long line) {
        const long long inc = increment_;
        const long long heads = layout_.HeadsPerLine;
        const bool sidesGoOn = line < layout_.BranchLines;
        const double between = X(GridBranchSpacing);
        const double y = X(GridFirstBranch) + static_cast<double>(line - 1) * between;
        const double left = X(GridLeftFirst);
        const double spacing = X(GridHeadSpacing);
        const double width = layout_.Width;
        for (long long head = 1; head <= heads; ++head) {
            const double x = left + static_cast<double>(head - 1) * spacing;
            if (head == 1) {
                PlacedPipe& first = Branch(left, {0, y}, {left, y}, line);
                first.Row.KFactorB = "0";
                first.Row.SprinklerAreaB = 0;
                if (sidesGoOn) {
                    Perimeter(node_ - inc, node_ + (heads + 1) * inc, Stored(between), TeeFitting,
                              {0, y}, {0, y + between}, line);
                }
            }
            if (head == heads) {
                PlacedPipe& last = Branch(X(GridRightToPerimeter), {x, y}, {width, y}, line);
                last.Row.KFactorE = "0";
                last.Row.SprinklerAreaE = 0;
                if (sidesGoOn) {
                    Perimeter(node_, node_ + (heads + 2) * inc, Stored(between), TeeFitting,
                              {width, y}, {width, y + between}, line);
                }
                node_ += inc;
            } else {
                Branch(spacing, {x, y}, {x + spacing, y}, line);
            }
        }
    }

    const GridInputs& inputs_;
    const Project& project_;
    GridLayout& layout_;
    BuilderPipeData perimeter_;
    BuilderPipeData branch_;
    BuilderNodeData nodes_;
    long long source_;
    long long increment_;
    long long node_ = 0;
};

} // namespace

bool CheckGridInputs(const GridInputs& inputs, BuilderFocus* focus) {
    return ReportBuilderCheck(CheckInputs(inputs), nullptr, words::GridMaterial, focus);
}

bool CheckGridInputs(const GridInputs& inputs, Dialogs& dialogs, BuilderFocus* focus) {
    return ReportBuilderCheck(CheckInputs(inputs), &dialogs, words::GridMaterial, focus);
}

GridLayout LayOutGrid(const GridInputs& inputs, const Project& project) {
    GridLayout layout;
    layout.BranchLines = CLng(inputs.Value(GridBranchLines));
    layout.HeadsPerLine = CLng(inputs.Value(GridHeadsPerLine));
    layout.Width = inputs.Value(GridLeftFirst) + inputs.Value(GridRightToPerimeter) +
                   (inputs.Value(GridHeadsPerLine) - 1) * inputs.Value(GridHeadSpacing);
    layout.PipesRequired =
        layout.BranchLines * (layout.HeadsPerLine + 1) + 5 + (layout.BranchLines - 1) * 2;
    if (layout.BranchLines >= 1 && layout.HeadsPerLine >= 1 &&
        layout.PipesRequired <= BuilderPlanLimit) {
        GridPlanner(inputs, project, layout).Plan();
    }
    return layout;
}

BuildResult BuildGrid(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                      const GridInputs& inputs) {
    const GridLayout layout = LayOutGrid(inputs, project);
    return WritePlannedRows(project, library, dialogs, layout.Pipes, layout.PipesRequired,
                            CLng(inputs.Value(GridSourceNode)), CLng(inputs.Value(GridIncrement)),
                            words::GridNoRoom);
}

BuildResult CreateGrid(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                       const GridInputs& inputs) {
    BuildResult result;
    if (!CheckGridInputs(inputs, dialogs, &result.Focus)) {
        result.Stop = BuildStop::MissingInput;
        return result;
    }
    const Integer rowsBefore = project.NumberOfPipeRows;
    if (!ConfirmPipeAdd(project, dialogs, words::ConfirmGridPipeAdd)) {
        result.Stop = BuildStop::Cancelled;
        return result;
    }
    project.InputChanged = True;
    result = BuildGrid(project, library, dialogs, inputs);
    if (!result.Built()) {
        project.NumberOfPipeRows = rowsBefore;
    }
    return result;
}

} // namespace quench
