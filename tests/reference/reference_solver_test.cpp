// The reference solver is checked against closed-form hand results before it checks the engine.

#include "tests/support/reference_solver.h"

#include <cmath>

#include <gtest/gtest.h>

namespace quench::testing {
namespace {

// c = C^1.85 · d^4.87 / 4.52 / L, and the drop that carries a flow: h = Q^(1/0.5405) / c.
double Conductance(double c, double d, double length) {
    return std::pow(c, 1.85) * std::pow(d, 4.87) / 4.52 / length;
}
double Drop(double flow, double conductance) {
    return std::pow(flow / std::pow(conductance, 0.5405), 1 / 0.5405);
}

ReferenceLink Pipe(int from, int to, double length, double diameter = 1.049, double c = 120) {
    return ReferenceLink{from, to, false, diameter, length, c, 0};
}

TEST(ReferenceSolver, OneSprinklerInDemandMatchesTheHandMethod) {
    // Sprinkler K 5.6 at 7 psi flows 5.6·√7 = 14.816 gpm; the pipe's drop follows from that flow.
    ReferenceNetwork network;
    network.Inflow = 1;
    network.Nodes = {{1, 0, 0, 0, 0}, {2, 0, 5.6, 0, 0}};
    network.Links = {Pipe(1, 2, 20)};
    const DemandSolution demand = SolveDemand(network, {7, 0});
    ASSERT_TRUE(demand.Converged);
    const double flow = 5.6 * std::sqrt(7.0);
    EXPECT_NEAR(demand.InflowResidual, 7 + Drop(flow, Conductance(120, 1.049, 20)), 1e-7);
    EXPECT_NEAR(demand.Solution.InflowFlow, flow, 1e-7);
    EXPECT_NEAR(demand.Solution.Discharge.at(2), flow, 1e-7);
}

TEST(ReferenceSolver, DensityElevationAndDeviceAddToTheDemand) {
    // Density 0.2 over 100 ft² asks 20 gpm of a K 5.6: (20 / 5.6)² = 12.755 psi, above the
    // minimum of 7. The sprinkler stands 10 ft up (4.33 psi) behind a meter losing 5 psi.
    ReferenceNetwork network;
    network.Inflow = 1;
    network.Nodes = {{1, 0, 0, 0, 0}, {2, 0, 0, 0, 0}, {3, 10, 5.6, 0, 100}};
    ReferenceLink meter{1, 2, true, 0, 0, 0, 5};
    network.Links = {meter, Pipe(2, 3, 30)};
    const DemandSolution demand = SolveDemand(network, {7, 0.2});
    ASSERT_TRUE(demand.Converged);
    const double needed = std::pow(20 / 5.6, 2);
    EXPECT_NEAR(demand.Solution.Residual.at(3), needed, 1e-7);
    EXPECT_NEAR(demand.InflowResidual, needed + 4.33 + 5 + Drop(20, Conductance(120, 1.049, 30)),
                1e-7);
    EXPECT_NEAR(demand.Solution.LinkFlow[0], 20, 1e-7);
}

TEST(ReferenceSolver, SupplyBalancesALoopWithFixedFlows) {
    // Two equal paths from 1 to 4 around a loop share the flow evenly; a fixed flow of 100 gpm
    // leaves node 4 and 10 gpm node 2.
    ReferenceNetwork network;
    network.Inflow = 1;
    network.Nodes = {{1, 0, 0, 0, 0}, {2, 0, 0, 10, 0}, {3, 0, 0, 10, 0}, {4, 0, 0, 100, 0}};
    network.Links = {Pipe(1, 2, 50, 2.067), Pipe(1, 3, 50, 2.067), Pipe(2, 4, 50, 2.067),
                     Pipe(3, 4, 50, 2.067)};
    const ReferenceSolution solution = SolveSupply(network, 60);
    ASSERT_TRUE(solution.Converged);
    EXPECT_NEAR(solution.LinkFlow[0], 60, 1e-7);
    EXPECT_NEAR(solution.LinkFlow[2], 50, 1e-7);
    EXPECT_NEAR(solution.InflowFlow, 120, 1e-7);
    const double c = Conductance(120, 2.067, 50);
    EXPECT_NEAR(solution.Residual.at(4), 60 - Drop(60, c) - Drop(50, c), 1e-7);
}

TEST(ReferenceSolver, SprinklerAtNegativePressureDoesNotFlow) {
    // The second sprinkler stands 100 ft up: 43.3 psi of elevation against a 20 psi supply.
    ReferenceNetwork network;
    network.Inflow = 1;
    network.Nodes = {{1, 0, 0, 0, 0}, {2, 0, 5.6, 0, 0}, {3, 100, 5.6, 0, 0}};
    network.Links = {Pipe(1, 2, 10), Pipe(2, 3, 10)};
    const ReferenceSolution solution = SolveSupply(network, 20);
    ASSERT_TRUE(solution.Converged);
    EXPECT_EQ(solution.Discharge.at(3), 0);
    EXPECT_NEAR(solution.LinkFlow[1], 0, 1e-9);
    EXPECT_NEAR(solution.Discharge.at(2), 5.6 * std::sqrt(solution.Residual.at(2)), 1e-9);
    EXPECT_NEAR(solution.InflowFlow, solution.Discharge.at(2), 1e-7);
}

TEST(ReferenceSolver, DeadEndBranchesCarryNothingAndStandLevel) {
    // Node 3 and the branch 4-5 beyond it take no water: their pipes carry nothing and their
    // heads equal node 2's; node 5 stands 10 ft up, so its pressure is 4.33 psi lower.
    ReferenceNetwork network;
    network.Inflow = 1;
    network.Nodes = {
        {1, 0, 0, 0, 0}, {2, 0, 5.6, 0, 0}, {3, 0, 0, 0, 0}, {4, 0, 0, 0, 0}, {5, 10, 0, 0, 0}};
    network.Links = {Pipe(1, 2, 10), Pipe(2, 3, 10), Pipe(3, 4, 10), Pipe(4, 5, 10)};
    const DemandSolution demand = SolveDemand(network, {7, 0});
    ASSERT_TRUE(demand.Converged);
    const double flow = 5.6 * std::sqrt(7.0);
    EXPECT_NEAR(demand.InflowResidual, 7 + Drop(flow, Conductance(120, 1.049, 10)), 1e-7);
    EXPECT_EQ(demand.Solution.LinkFlow[3], 0);
    EXPECT_NEAR(demand.Solution.Residual.at(4), 7, 1e-9);
    EXPECT_NEAR(demand.Solution.Residual.at(5), 7 - 4.33, 1e-9);
}

TEST(ReferenceSolver, LargeGridBalancesEveryNode) {
    // A 30 × 30 grid of sprinklers fed at one corner: every node's flows must sum to zero.
    ReferenceNetwork network;
    network.Inflow = 1;
    network.Nodes.push_back({1, 0, 0, 0, 0});
    const int side = 30;
    auto number = [&](int row, int column) { return 10 + row * side + column; };
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            network.Nodes.push_back({number(row, column), 0, 5.6, 0, 0});
            if (column > 0) {
                network.Links.push_back(
                    Pipe(number(row, column - 1), number(row, column), 10, 1.38));
            }
            if (row > 0) {
                network.Links.push_back(
                    Pipe(number(row - 1, column), number(row, column), 10, 1.38));
            }
        }
    }
    network.Links.push_back(Pipe(1, number(0, 0), 20, 6.065));
    const ReferenceSolution solution = SolveSupply(network, 80);
    ASSERT_TRUE(solution.Converged);
    std::map<int, double> balance;
    for (const auto& [node, discharge] : solution.Discharge) {
        balance[node] += discharge;
    }
    for (std::size_t l = 0; l < network.Links.size(); ++l) {
        balance[network.Links[l].From] += solution.LinkFlow[l];
        balance[network.Links[l].To] -= solution.LinkFlow[l];
    }
    for (const auto& [node, sum] : balance) {
        if (node != 1) {
            ASSERT_NEAR(sum, 0, 1e-6) << "node " << node;
        }
    }
    EXPECT_NEAR(balance[1], solution.InflowFlow, 1e-6);
}

} // namespace
} // namespace quench::testing
