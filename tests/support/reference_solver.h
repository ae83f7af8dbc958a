#pragma once

// An independent solver of the sprinkler network equations, for checking the engine's posted
// results. It shares no code with the engine and uses another method: the global gradient
// iteration on pipe flows and node heads (flows linearised per link, heads from a symmetric
// positive definite system solved by a skyline Cholesky factorisation in reverse Cuthill-McKee
// order), and Demand mode as a root search on the inflow pressure.
//
// The equations are the program's: a pipe carries Q = (c·|h|)^0.5405 with
// c = C^1.85 · d^4.87 / 4.52 / L and h the drop of total head; a sprinkler discharges K·√P at a
// positive residual pressure P and nothing at a negative one; total head is residual pressure
// plus 0.433 psi per foot of elevation; a device holds its stated loss in the direction of flow
// (a pump a boost); a fixed flow leaves its node.

#include "core/project.h"

#include <functional>
#include <map>
#include <vector>

namespace quench::testing {

struct ReferenceNode {
    int Number = 0;
    double Elevation = 0; // ft
    double KFactor = 0;   // 0: not a flowing sprinkler
    double FixedFlow = 0; // gpm leaving the node
    double Area = 0;      // ft² covered, for the density requirement
};

struct ReferenceLink {
    int From = 0;
    int To = 0;
    bool IsDevice = false;
    double InsideDiameter = 0; // inch, pipes
    double Length = 0;         // equivalent length, ft, pipes
    double CFactor = 0;        // pipes
    double Loss = 0;           // psi across a device in the direction of flow; negative is a boost
};

struct ReferenceNetwork {
    std::vector<ReferenceNode> Nodes;
    std::vector<ReferenceLink> Links;
    int Inflow = 0; // the node held at the given pressure
};

struct ReferenceSolution {
    bool Converged = false;
    int Iterations = 0;
    std::map<int, double> Residual;  // psi at each node
    std::map<int, double> Head;      // psi, total head
    std::map<int, double> Discharge; // gpm of each sprinkler
    std::vector<double> LinkFlow;    // gpm per link, positive from From to To
    double InflowFlow = 0;           // gpm delivered by the inflow node
};

// The network at a given residual pressure of the inflow node.
ReferenceSolution SolveSupply(const ReferenceNetwork& network, double inflowResidual);

struct DemandRequirement {
    double MinimumPressure = 0; // psi at every flowing sprinkler
    double Density = 0;         // gpm/ft² over each sprinkler's area
};

struct DemandSolution {
    bool Converged = false;
    double InflowResidual = 0; // the least inflow pressure that meets every requirement
    ReferenceSolution Solution;
};

// The least inflow pressure at which every sprinkler (K above 0) holds the larger of the minimum
// pressure and the pressure its density asks for, (density · area / K)².
DemandSolution SolveDemand(const ReferenceNetwork& network, const DemandRequirement& requirement);

// The network as the calculation prepared it: the node table and the calculated pipe table of a
// project after a run (node 10000 is the first inflow). cValue gives the C factor of a material
// for pipes whose calculated row holds none.
ReferenceNetwork NetworkFromProject(const Project& project,
                                    const std::function<double(int material)>& cValue);

// How well the posted results of a project obey the equations.
struct BalanceReport {
    double WorstPipeLawError = 0;     // psi, |drop of head − drop the friction law gives|
    double WorstPipeLawAllowance = 0; // the allowance at that pipe: max(0.005, 0.1 % of drop)
    bool PipesObeyLaw = true;         // every pipe within its allowance
    double WorstNodeImbalance = 0;    // gpm, over all nodes but the first inflow
    int WorstNode = 0;
};

BalanceReport MeasurePostedBalance(const Project& project,
                                   const std::function<double(int material)>& cValue);

} // namespace quench::testing
