// A calculation of a network not prepared before prepares it for the network check and again for
// the run; the second preparation is left out when it would only repeat the first. These tests
// hold the promise that decision rests on: a repeat changes nothing, and the one thing a repeat
// can change (a further row at the inflow marked as the first inflow) is seen beforehand.

#include "calc/build_working_rows.h"
#include "calc/prepare_network.h"
#include "core/project_file.h"
#include "tests/support/network_builder.h"
#include "tests/support/network_shapes.h"

#include <gtest/gtest.h>

namespace quench {
namespace {

using namespace quench::testing;

std::vector<std::uint8_t> Image(const Project& project) {
    std::vector<std::uint8_t> image;
    std::string problem;
    EXPECT_TRUE(LayProjectImage(project, image, &problem)) << problem;
    return image;
}

// Prepared once as the check prepares it, then the promise and a second preparation.
void ExpectRepeatIsForeseen(Project& project, bool repeats) {
    BuildWorkingRows(project);
    const PrepareResult first = PrepareNetwork(project, DefaultLibrary());
    const std::vector<std::uint8_t> once = Image(project);
    EXPECT_EQ(PreparingAgainRepeats(project), repeats);
    const PrepareResult second = PrepareNetwork(project, DefaultLibrary());
    EXPECT_EQ(Image(project) == once, repeats);
    EXPECT_TRUE(second == first);
    EXPECT_TRUE(PreparingAgainRepeats(project)); // the third would repeat the second
}

TEST(NetworkPreparation, ARepeatIsForeseen) {
    Project grid;
    NetworkBuilder gridNetwork(grid);
    BuildGrid(gridNetwork, 6, 8, Meshed());
    gridNetwork.DemandMode(7, 0.15f);
    ExpectRepeatIsForeseen(grid, true);

    Project tree;
    NetworkBuilder treeNetwork(tree);
    BuildTree(treeNetwork, 4, 5);
    treeNetwork.SupplyMode(60);
    ExpectRepeatIsForeseen(tree, true);

    // A supply typed with the number 10000 is marked with the text it already has.
    Project numbered;
    NetworkBuilder numberedNetwork(numbered);
    numberedNetwork.Pipe(10000, 2, 20, 2);
    numberedNetwork.Pipe(2, 3, 10, 1);
    numberedNetwork.Pipe(3, 4, 10, 1);
    numberedNetwork.Sprinkler(4, 5.6).Inflow(10000).SupplyMode(50);
    ExpectRepeatIsForeseen(numbered, true);
}

TEST(NetworkPreparation, ASecondRowAtTheInflowIsMarkedByARepeat) {
    Project project;
    NetworkBuilder network(project);
    network.Pipe(1, 2, 20, 2);
    network.Pipe(2, 3, 10, 1);
    network.Pipe(3, 1, 10, 1);
    network.Pipe(3, 4, 10, 1);
    network.Sprinkler(4, 5.6).Inflow(1).SupplyMode(50);
    ExpectRepeatIsForeseen(project, false);
}

} // namespace
} // namespace quench
