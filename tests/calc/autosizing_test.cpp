// Autosizing in Demand mode: each pipe open to sizing ends within the velocity and friction limits
// at the flow it carries, a type group shares one size, fixed diameters stay, a maximum stops the
// growth, and sizes never grow downstream when that is asked for.

#include "core/formats.h"
#include "library/material_tables.h"
#include "solver/autosizing.h"
#include "tests/support/network_checks.h"
#include "tests/support/network_shapes.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

// The default library offers sizes from 1/2" up. At 3 psi per 100 ft a 2" pipe carries about
// 55 gpm: the first pipes of each branch line need more.
constexpr double MaximumVelocity = 20; // ft/s
constexpr double MaximumFriction = 3;  // psi per 100 ft

void OpenToSizing(PipeRecord& row) {
    row.Diameter = 0;
    row.DiameterFixed = False;
}

// A cross main of 4" feeding four branch lines of five sprinklers; every branch pipe is open.
void BuildSizedTree(Project& project) {
    NetworkBuilder network(project);
    BuildTreeOpenToSizing(network, 4, 5);
    network.DemandMode(7, 0.15f);
    project.CalculationData.MaxWaterVelocity = MaximumVelocity;
    project.CalculationData.MaxFrictionalLoss = MaximumFriction;
}

bool RunSized(Project& project, CalculationRun& run) {
    run.Dialogs.Script(Answer::Yes);
    return run.Calculate(project);
}

// Every pipe open to sizing meets both limits at the flow it carries.
void ExpectWithinLimits(const Project& project) {
    int sized = 0;
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        if (!IsSizable(record)) {
            continue;
        }
        ++sized;
        const double flow = std::fabs(record.Flow);
        EXPECT_LE(SizingVelocity(flow, record.InsideDiameter), MaximumVelocity)
            << record.BegNode << "-" << record.EndNode;
        EXPECT_LE(SizingFriction(flow, record.InsideDiameter, record.CFactor), MaximumFriction)
            << record.BegNode << "-" << record.EndNode;
    }
    EXPECT_GT(sized, 0);
}

TEST(Autosizing, SizesMeetTheLimitsAndHoldWhenCalculatedAgain) {
    Project project;
    BuildSizedTree(project);
    CalculationRun first;
    ASSERT_TRUE(RunSized(project, first)) << first.Dialogs.LastText();
    ExpectWithinLimits(project);

    // The sizes are written into the rows that were open, with their equivalent lengths; the
    // rows stay open (shown in red).
    std::vector<Single> sizes;
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        sizes.push_back(pipe.Diameter);
        ASSERT_GT(pipe.Diameter, 0);
        if (!IsTrue(pipe.DiameterFixed)) {
            EXPECT_GE(pipe.TotalEquivLength, pipe.Length);
        }
    }
    const double inflow = project.CalculationData.InflowResidualPressure;
    const double balance =
        std::fabs(MeasurePostedBalance(project, DefaultCValue).WorstNodeImbalance);
    EXPECT_LE(balance, 0.01);

    // Calculated again, the sizes are found afresh and come out the same.
    CalculationRun second;
    ASSERT_TRUE(RunSized(project, second)) << second.Dialogs.LastText();
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        EXPECT_EQ(project.PipeRecord[static_cast<std::size_t>(row)].Diameter,
                  sizes[static_cast<std::size_t>(row - 1)]);
    }
    EXPECT_NEAR(project.CalculationData.InflowResidualPressure, inflow, 0.01);
}

TEST(Autosizing, FixedDiametersStayAndGroupsShareOneSize) {
    Project project;
    BuildSizedTree(project);
    // The first pipe of each branch line is given by the user; the others form group 3.
    std::vector<int> given;
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (IsTrue(pipe.DiameterFixed)) {
            continue;
        }
        if (static_cast<int>(ToNumber(pipe.BegNode)) % 6 == 4) {
            pipe.Diameter = 2.5;
            pipe.DiameterFixed = True;
            given.push_back(row);
        } else {
            pipe.TypeGroup = 3;
        }
    }
    ASSERT_EQ(given.size(), 4u);
    CalculationRun run;
    ASSERT_TRUE(RunSized(project, run)) << run.Dialogs.LastText();
    for (int row : given) {
        EXPECT_EQ(project.PipeRecord[static_cast<std::size_t>(row)].Diameter, 2.5f);
    }
    double groupSize = 0;
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (pipe.TypeGroup == 3) {
            groupSize = groupSize == 0 ? pipe.Diameter : groupSize;
            EXPECT_EQ(pipe.Diameter, groupSize);
        }
    }
    EXPECT_GT(groupSize, 0);
    ExpectWithinLimits(project);
}

TEST(Autosizing, AMaximumStopsTheGrowth) {
    Project project;
    BuildSizedTree(project);
    project.CalculationData.TypeGroupMaxDiameter[0] = 2; // the first pipes would need more
    CalculationRun run;
    ASSERT_TRUE(RunSized(project, run)) << run.Dialogs.LastText();
    int atMaximum = 0;
    for (int row = 1; row <= project.NumberOfPipeRows; ++row) {
        const PipeRecord& pipe = project.PipeRecord[static_cast<std::size_t>(row)];
        if (!IsTrue(pipe.DiameterFixed)) {
            EXPECT_LE(pipe.Diameter, 2.0f);
            atMaximum += pipe.Diameter == 2.0f ? 1 : 0;
        }
    }
    EXPECT_GE(atMaximum, 4); // at least the first pipe of each branch line
}

TEST(Autosizing, SizesDoNotGrowDownstreamWhenAsked) {
    Project project;
    BuildSizedTree(project);
    // The last pipe of the first branch line is given a large size by the user.
    PipeRecord& last = project.PipeRecord[6];
    ASSERT_EQ(last.EndNode, "15");
    last.Diameter = 4;
    last.DiameterFixed = True;
    project.CalculationData.DoNotIncreaseSize = True;
    CalculationRun run;
    ASSERT_TRUE(RunSized(project, run)) << run.Dialogs.LastText();
    // Every open pipe on the way to it is at least as wide.
    for (int row = 2; row <= 5; ++row) {
        EXPECT_EQ(project.PipeRecord[static_cast<std::size_t>(row)].Diameter, 4.0f) << row;
    }
}

TEST(Autosizing, BothLimitsOffGiveTheSmallestSizes) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(10, 20, 10, 2);
    OpenToSizing(network.Pipe(20, 30, 10, 0));
    OpenToSizing(network.Pipe(30, 40, 10, 0));
    network.Sprinkler(30, 5.6).Sprinkler(40, 5.6).Inflow(10).DemandMode(7);
    project.CalculationData.TypeGroupMinDiameter[0] = 2.5;
    project.CalculationData.MaxFrictionalLoss = 0;
    project.CalculationData.MaxWaterVelocity = 0;
    CalculationRun run;
    run.Dialogs.Script(Answer::Yes);
    // With neither limit the sizing question needs one of them.
    EXPECT_FALSE(run.Calculate(project));
    project.CalculationData.MaxWaterVelocity = 1000;
    CalculationRun sized;
    ASSERT_TRUE(RunSized(project, sized)) << sized.Dialogs.LastText();
    EXPECT_EQ(project.PipeRecord[2].Diameter, 2.5f);
    EXPECT_EQ(project.PipeRecord[3].Diameter, 2.5f);
}

// A light-hazard tree as a CAD import leaves it: six branch lines of six heads on a 4" cross main,
// every branch pipe open to sizing under a 20 ft/s limit and no friction limit.
void BuildLightHazardTree(Project& project, Integer initialDamping, Integer minimumDamping) {
    NetworkBuilder network(project);
    ShapeOptions options;
    options.Area = 130;
    BuildTreeOpenToSizing(network, 6, 6, options);
    network.DemandMode(7, 0.1f);
    CalculationData& data = project.CalculationData;
    data.MaxWaterVelocity = MaximumVelocity;
    data.MaxFrictionalLoss = 0;
    data.MaximumNodePressureImbalance = 0.001;
    data.InitialDampingFactor = initialDamping;
    data.MinimumDampingFactor = minimumDamping;
}

// A pipe open to sizing meets the limits at its flow, or no size that the library and its
// group's maximum allow is larger, and it carries the note of the limit it misses.
void ExpectWithinLimitsOrNoted(const Project& project, double velocity, double friction) {
    const PipeLibrary& library = DefaultLibrary();
    for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
        const CalcPipeRecord& record = project.CalcPipeRecord[static_cast<std::size_t>(pipe)];
        if (!IsSizable(record)) {
            continue;
        }
        SCOPED_TRACE(record.BegNode + "-" + record.EndNode);
        const double flow = std::fabs(record.Flow);
        const bool fast = velocity != 0 && SizingVelocity(flow, record.InsideDiameter) > velocity;
        const bool steep =
            friction != 0 && SizingFriction(flow, record.InsideDiameter, record.CFactor) > friction;
        const auto row = static_cast<std::size_t>(pipe);
        const SizingNote note =
            row < project.SizingNotes.size() ? project.SizingNotes[row] : SizingNote::None;
        if (!fast && !steep) {
            EXPECT_EQ(note, SizingNote::None);
            continue;
        }
        EXPECT_EQ(note, fast ? SizingNote::Velocity : SizingNote::Friction);
        const double maximum =
            project.CalculationData
                .TypeGroupMaxDiameter[static_cast<std::size_t>(record.TypeGroup)];
        for (const PipeDiameterRecord& size : library.Material(record.Material).Diameters) {
            if (size.Nominal > record.NominalDiameter && IsUsableDiameter(size)) {
                EXPECT_TRUE(maximum != 0 && size.Nominal > maximum)
                    << "a larger allowed size " << size.Nominal;
            }
        }
    }
}

// The place of a nominal size among the sizes that sizing may choose for a material.
int SizeIndex(int material, double nominal) {
    int index = 0;
    for (const PipeDiameterRecord& size : DefaultLibrary().Material(material).Diameters) {
        if (IsUsableDiameter(size)) {
            if (size.Nominal == static_cast<Single>(nominal)) {
                return index;
            }
            ++index;
        }
    }
    return -1;
}

// Sizes are judged on converged flows: however heavily the iteration is damped, and although the
// branch lines start at 1/2" where the iteration cannot settle, the sizing ends within the budget
// within the limits, and the solution is the least supply for its sizes. A size and the flow it
// brings settle together: a pipe whose flow sits at a size's velocity limit can settle one size
// apart at another damping, never more.
TEST(Autosizing, SizingFinishesAtEveryDampingTheProgramSets) {
    std::vector<int> firstSizes;
    for (const auto& [initial, minimum] : {std::pair{40, 30}, {65, 60}, {4, 1}}) {
        SCOPED_TRACE("damping " + std::to_string(initial) + "/" + std::to_string(minimum));
        Project project;
        BuildLightHazardTree(project, static_cast<Integer>(initial), static_cast<Integer>(minimum));
        CalculationRun run;
        ASSERT_TRUE(RunSized(project, run)) << run.Dialogs.LastText();
        ExpectWithinLimitsOrNoted(project, MaximumVelocity, 0);
        std::vector<int> sizes;
        for (int pipe = 1; pipe <= project.NumberOfPipes; ++pipe) {
            const CalcPipeRecord& record = project.CalcPipeRecord[static_cast<std::size_t>(pipe)];
            if (IsSizable(record)) {
                sizes.push_back(SizeIndex(record.Material, record.NominalDiameter));
                EXPECT_GE(sizes.back(), 0) << record.NominalDiameter;
            }
        }
        ASSERT_EQ(sizes.size(), 36u);
        if (firstSizes.empty()) {
            firstSizes = sizes;
        }
        for (std::size_t pipe = 0; pipe < sizes.size(); ++pipe) {
            EXPECT_LE(std::abs(sizes[pipe] - firstSizes[pipe]), 1) << "pipe " << pipe + 1;
        }
        const DemandSolution reference =
            SolveDemand(NetworkFromProject(project, DefaultCValue), {7, 0.1});
        ASSERT_TRUE(reference.Converged);
        EXPECT_NEAR(project.CalculationData.InflowResidualPressure, reference.InflowResidual, 0.1);
        EXPECT_LE(CompareWithReference(project, reference.Solution).WorstPressure, 0.1);
        EXPECT_TRUE(MeasurePostedBalance(project, DefaultCValue).PipesObeyLaw);
    }
}

// A pipe that its group's maximum keeps over a limit keeps that size and the note why; the other
// pipes are sized on, and a pipe within the limits carries no note.
TEST(Autosizing, APipeNoAllowedSizeHelpsCarriesItsNote) {
    Project project;
    BuildSizedTree(project);
    project.CalculationData.TypeGroupMaxDiameter[0] = 2; // the first pipes would need more
    CalculationRun run;
    ASSERT_TRUE(RunSized(project, run)) << run.Dialogs.LastText();
    ExpectWithinLimitsOrNoted(project, MaximumVelocity, MaximumFriction);
    int noted = 0;
    for (const SizingNote note : project.SizingNotes) {
        noted += note == SizingNote::None ? 0 : 1;
    }
    EXPECT_GT(noted, 0);
    EXPECT_EQ(SizingNoteText(SizingNote::Friction),
              "Over the friction limit at the largest allowed size");

    // Without the maximum every pipe finds a size within the limits and no note stays.
    project.CalculationData.TypeGroupMaxDiameter[0] = 0;
    CalculationRun again;
    ASSERT_TRUE(RunSized(project, again)) << again.Dialogs.LastText();
    ExpectWithinLimits(project);
    EXPECT_TRUE(project.SizingNotes.empty());
}

} // namespace
} // namespace quench
