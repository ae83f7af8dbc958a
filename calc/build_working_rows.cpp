#include "calc/build_working_rows.h"

#include "core/formats.h"
#include "core/text.h"

namespace quench {

Single KFactorValue(const std::string& text, Single defaultKFactor) {
    const std::string word = Trim(text);
    if (word == "Dflt") {
        return defaultKFactor;
    }
    if (word == "Inact" || word == "None") {
        return 0;
    }
    return static_cast<Single>(ToNumber(word));
}

namespace {

void CopyRow(const PipeRecord& row, Single defaultKFactor, WorkPipeRecord& work) {
    work.BegNode = row.BegNode;
    work.EndNode = row.EndNode;
    work.KFactorB = KFactorValue(row.KFactorB, defaultKFactor);
    work.KFactorE = KFactorValue(row.KFactorE, defaultKFactor);
    work.ElevationB = row.ElevationB;
    work.ElevationE = row.ElevationE;
    work.PressEstimateB = row.PressEstimateB;
    work.PressEstimateE = row.PressEstimateE;
    work.SprinklerAreaB = row.SprinklerAreaB;
    work.SprinklerAreaE = row.SprinklerAreaE;
    work.AreaGroupB = row.AreaGroupB;
    work.AreaGroupE = row.AreaGroupE;
    work.NonSprinklerFlowB = row.NonSprinklerFlowB;
    work.NonSprinklerFlowE = row.NonSprinklerFlowE;
    work.Active = row.Active;
    work.Material = row.Material;
    work.DeviceLoss = row.DeviceLoss;
    work.Diameter = row.Diameter;
    work.DiameterFixed = row.DiameterFixed;
    work.Length = row.Length;
    work.OldFittingLength = row.OldFittingLength;
    work.FittingCounts = row.FittingCounts;
    work.FittingText = row.FittingText;
    work.TotalEquivLength = row.TotalEquivLength;
    work.TypeGroup = row.TypeGroup;
    work.BegIsInflow = row.BegIsInflow;
    work.EndIsInflow = row.EndIsInflow;
    work.NonStandardFitLength = row.NonStandardFitLength;
    work.CadHandle = row.CadHandle;
}

} // namespace

void BuildWorkingRows(Project& project) {
    const Single defaultKFactor = project.SystemData.DefaultKFactor;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& input = project.PipeRecord[row];
        WorkPipeRecord& work = project.WorkPipeRecord[row];
        if (!IsTrue(input.Active)) {
            work.BegNode.clear();
            work.EndNode.clear();
            work.Active = 0;
            continue;
        }
        CopyRow(input, defaultKFactor, work);
    }
}

} // namespace quench
