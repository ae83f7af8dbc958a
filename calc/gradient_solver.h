#pragma once

// A second solver of the sprinkler network, written apart from the engine's damped iteration: the
// global gradient method on link flows and node heads together. Each step linearises every pipe
// and sprinkler about its flow and solves one symmetric positive definite system for the heads
// (skyline Cholesky), then takes the flows from the heads.
//
// The laws are exact: a pipe carries Q = (c·|h|)^0.5405 with c = C^1.85 · d^4.87 / 4.52 / L and h
// the drop of total head; a sprinkler discharges K·√P at a positive residual pressure P and
// nothing at a negative one; total head is residual pressure plus 0.433 psi per foot of elevation;
// a device holds its stated loss in the direction of flow (a pump its boost); a fixed flow leaves
// its node; a node with a given pressure supplies what the network draws.

#include <vector>

namespace quench {

struct GradientNode {
    int Number = 0;
    double Elevation = 0;      // ft
    double KFactor = 0;        // 0: no sprinkler
    double FixedFlow = 0;      // gpm leaving the node
    bool HeldPressure = false; // a supply: its residual pressure is given
    double GivenResidual = 0;  // psi, when held
};

struct GradientLink {
    int From = 0; // index into the nodes
    int To = 0;
    bool IsDevice = false;
    double InsideDiameter = 0; // inch
    double Length = 0;         // equivalent length, ft
    double CFactor = 0;
    double Loss = 0; // psi across a device in the direction of flow; negative is a boost
};

struct GradientNetwork {
    std::vector<GradientNode> Nodes;
    std::vector<GradientLink> Links;
};

struct GradientSolution {
    bool Converged = false;
    int Iterations = 0;
    std::vector<double> Residual;  // psi per node
    std::vector<double> Discharge; // gpm per node through its sprinkler
    std::vector<double> LinkFlow;  // gpm per link, positive from From to To
};

// Solves the network; a network with no held node, or one the method cannot settle, comes back
// with Converged false.
GradientSolution SolveGradient(const GradientNetwork& network);

} // namespace quench
