#include "entry/tree_builder.h"

#include "core/formats.h"
#include "entry/builder_check.h"
#include "entry/builder_input_text.h"
#include "entry/builder_rows.h"
#include "entry/builder_words.h"

#include <array>

namespace quench {

namespace words = builder_words;

namespace {

bool Missing(const TreeInputs& inputs, const std::string& text) {
    return text.empty() || inputs.ValueOf(text) == 0;
}

BuilderCheck CheckInputs(const TreeInputs& inputs) {
    BuilderCheck check;
    constexpr std::array required{TreeIncrement,  TreeSourceNode,  TreeBranchSpacing,
                                  TreeLeftLength, TreeRightLength, TreeLeftFirst,
                                  TreeRightFirst};
    for (const int index : required) {
        if (Missing(inputs, inputs.Network[static_cast<std::size_t>(index)])) {
            return check.Miss(BuilderControl::NetworkInput, index);
        }
    }
    if (Missing(inputs, inputs.Network[TreeLeftSpacing]) &&
        Missing(inputs, inputs.Network[TreeRightSpacing])) {
        return check.Miss(BuilderControl::NetworkInput, TreeRightSpacing);
    }
    CheckBuilderMaterials(inputs.CrossMaterial, inputs.BranchMaterial, inputs.DecimalCharacter,
                          check);
    return check;
}

BuilderTexts Texts(const TreeInputs& inputs) {
    return {inputs.System, inputs.DecimalCharacter};
}

// Writes the rows of a tree in their order, each placed in the drawing.
class TreePlanner {
public:
    TreePlanner(const TreeInputs& inputs, const Project& project, TreeLayout& layout)
        : inputs_(inputs), project_(project), layout_(layout), spacing_(layout.Spacing),
          cross_(BuilderPipeDataOf(inputs.CrossMaterial, inputs.CrossTypeGroup,
                                   inputs.CrossDiameter, Texts(inputs))),
          branch_(BuilderPipeDataOf(inputs.BranchMaterial, inputs.BranchTypeGroup,
                                    inputs.BranchDiameter, Texts(inputs))),
          nodes_(BuilderNodeDataOf(inputs.KFactor, inputs.SprinklerArea, inputs.Elevation,
                                   inputs.AreaGroup, Texts(inputs), project)),
          source_(CLng(inputs.Value(TreeSourceNode))),
          increment_(CLng(inputs.Value(TreeIncrement))) {}

    void Plan() {
        PlanLeadIn();
        for (long long row = 1; row <= spacing_.Rows; ++row) {
            PlanRow(row);
        }
    }

private:
    Single Stored(double length) const {
        return static_cast<Single>(StoredValue(UnitKind::Length, length, inputs_.System));
    }

    PlacedPipe& Branch(double length, long long line, LayoutPoint begin, LayoutPoint end) {
        PlacedPipe& pipe = AddBranchPipe(layout_.Pipes, project_, node_, increment_, branch_,
                                         nodes_, Stored(length));
        pipe.Line = static_cast<int>(line);
        pipe.Begin = begin;
        pipe.End = end;
        return pipe;
    }

    void PlanLeadIn() {
        PlacedPipe& pipe = AddCrossPipe(layout_.Pipes, project_, source_, source_ + increment_,
                                        cross_, nodes_, FeedLength);
        pipe.Kind = BuilderPipeKind::Feed;
        pipe.Row.AreaGroupB.clear();
        SetOneFitting(pipe.Row, TeeFitting);
        pipe.Begin = {0, -ShownValue(UnitKind::Length, FeedLength, inputs_.System)};
        pipe.End = {0, 0};
        node_ = source_ + 2 * increment_;
    }

    // The row's nodes are numbered in one run from the left end through the cross main to the
    // right end. Row 1's cross main node is the end of the lead-in.
    void PlanRow(long long row) {
        const double y = static_cast<double>(row - 1) * spacing_.BranchSpacing;
        double x =
            -(spacing_.LeftFirst + static_cast<double>(spacing_.LeftSpaces) * spacing_.LeftSpacing);
        for (long long space = 0; space < spacing_.LeftSpaces; ++space) {
            Branch(spacing_.LeftSpacing, row, {x, y}, {x + spacing_.LeftSpacing, y});
            x += spacing_.LeftSpacing;
        }
        PlacedPipe& intoMain = Branch(spacing_.LeftFirst, row, {x, y}, {0, y});
        if (row == 1) {
            intoMain.Row.EndNode = std::to_string(source_ + increment_);
            node_ -= increment_;
        }
        intoMain.Row.KFactorE = "0";
        const long long crossNode = row == 1 ? source_ + increment_ : node_;
        const long long sprinklers =
            (row == 1 ? 2 * spacing_.LeftCount : spacing_.LeftCount) + spacing_.RightCount + 1;
        const long long nextCrossNode = crossNode + sprinklers * increment_;

        PlacedPipe& outOfMain = Branch(spacing_.RightFirst, row, {0, y}, {spacing_.RightFirst, y});
        if (row == 1) {
            outOfMain.Row.BegNode = std::to_string(source_ + increment_);
        }
        outOfMain.Row.KFactorB = "0";
        x = spacing_.RightFirst;
        for (long long space = 0; space < spacing_.RightSpaces; ++space) {
            Branch(spacing_.RightSpacing, row, {x, y}, {x + spacing_.RightSpacing, y});
            x += spacing_.RightSpacing;
        }
        if (row <= spacing_.Pieces) {
            PlacedPipe& main = AddCrossPipe(layout_.Pipes, project_, crossNode, nextCrossNode,
                                            cross_, nodes_, Stored(spacing_.BranchSpacing));
            SetOneFitting(main.Row, TeeFitting);
            main.Line = static_cast<int>(row);
            main.Begin = {0, y};
            main.End = {0, y + spacing_.BranchSpacing};
        }
        if (row == spacing_.Pieces) {
            layout_.ExitNode = nextCrossNode;
        }
        node_ += increment_;
    }

    const TreeInputs& inputs_;
    const Project& project_;
    TreeLayout& layout_;
    const TreeSpacing& spacing_;
    BuilderPipeData cross_;
    BuilderPipeData branch_;
    BuilderNodeData nodes_;
    long long source_;
    long long increment_;
    long long node_ = 0;
};

bool RowIsEmpty(const Project& project, int row) {
    if (row > MaxPipes) {
        return true;
    }
    const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
    return record.BegNode.empty() && record.EndNode.empty();
}

// The source node against the numbers of the rows in the table, up to the first two empty rows
// in a row. Rows that the new tree will write over do not count when it replaces the table.
bool SourceNodeAccepted(const Project& project, Dialogs& dialogs, long long source, long long pipes,
                        BuildResult& result) {
    for (int row = 1; row <= MaxPipes; ++row) {
        if (RowIsEmpty(project, row) && RowIsEmpty(project, row + 1)) {
            break;
        }
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        const long long begin = RowNodeNumber(record.BegNode);
        const long long end = RowNodeNumber(record.EndNode);
        if (source > begin && source > end) {
            continue;
        }
        const bool counts = row > pipes || project.NumberOfPipeRows != 0;
        if (!counts) {
            continue;
        }
        if (source == begin || source == end) {
            dialogs.ShowMessage(MessageStyle::Warning, words::ProgramTitle,
                                words::SourceNodeExists);
            result.Stop = BuildStop::SourceNode;
            return false;
        }
        if (source % 10 == begin % 10 || source % 10 == end % 10) {
            if (dialogs.Ask(Buttons::YesNo, Answer::Yes, MessageStyle::Question,
                            words::NodeConflictTitle, words::NodeConflict) == Answer::Yes) {
                return true;
            }
            result.Stop = BuildStop::NodeConflict;
            return false;
        }
    }
    return true;
}

} // namespace

bool CheckTreeInputs(const TreeInputs& inputs, BuilderFocus* focus) {
    return ReportBuilderCheck(CheckInputs(inputs), nullptr, words::TreeMaterial, focus);
}

bool CheckTreeInputs(const TreeInputs& inputs, Dialogs& dialogs, BuilderFocus* focus) {
    return ReportBuilderCheck(CheckInputs(inputs), &dialogs, words::TreeMaterial, focus);
}

TreeLayout LayOutTree(const TreeInputs& inputs, const Project& project) {
    TreeLayout layout;
    layout.Spacing = CalculateTreeSpacing(inputs);
    if (layout.Spacing.PipesRequired <= BuilderPlanLimit) {
        TreePlanner(inputs, project, layout).Plan();
    }
    return layout;
}

BuildResult BuildTree(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                      const TreeInputs& inputs) {
    const TreeLayout layout = LayOutTree(inputs, project);
    const long long source = CLng(inputs.Value(TreeSourceNode));
    const long long increment = CLng(inputs.Value(TreeIncrement));
    BuildResult result;
    if (!SourceNodeAccepted(project, dialogs, source, layout.Spacing.PipesRequired, result)) {
        return result;
    }
    result = WritePlannedRows(project, library, dialogs, layout.Pipes, layout.Spacing.PipesRequired,
                              source, increment, words::TreeNoRoom);
    if (result.Built()) {
        result.ExitNode = static_cast<int>(layout.ExitNode);
    }
    return result;
}

BuildResult CreateTree(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                       const TreeInputs& inputs) {
    BuildResult result;
    if (!CheckTreeInputs(inputs, dialogs, &result.Focus)) {
        result.Stop = BuildStop::MissingInput;
        return result;
    }
    const Integer rowsBefore = project.NumberOfPipeRows;
    if (!ConfirmPipeAdd(project, dialogs, words::ConfirmTreePipeAdd)) {
        result.Stop = BuildStop::Cancelled;
        return result;
    }
    project.InputChanged = True;
    result = BuildTree(project, library, dialogs, inputs);
    if (!result.Built()) {
        project.NumberOfPipeRows = rowsBefore;
    }
    return result;
}

} // namespace quench
