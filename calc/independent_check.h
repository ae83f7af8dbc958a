#pragma once

// The independent check of a posted result: the network solved again by the gradient method with
// the posted supply pressures held, every node pressure and pipe flow compared with the posted
// ones, and in Demand mode every flowing sprinkler measured against its minimum pressure and
// density.

#include "core/project.h"

#include <string>

namespace quench {

// Limits of the verdict.
constexpr double CheckPressureAllowance = 0.05; // psi at every node
constexpr double CheckFlowAllowance = 0.1;      // gpm, or CheckFlowShare of the flow if larger
constexpr double CheckFlowShare = 0.001;
constexpr double CheckSprinklerAllowance = 0.02; // psi below a sprinkler's required pressure

struct CheckVerdict {
    bool ResultsFinite = true;        // no stored result is infinite or NaN
    bool Solved = false;              // the gradient method settled the network
    double MaxPressureDifference = 0; // psi
    int WorstNode = 0;                // its number as typed
    double MaxFlowDifference = 0;     // gpm
    int WorstPipeBegin = 0;           // the worst pipe by its two node numbers
    int WorstPipeEnd = 0;
    double MaxFlowImbalance = 0; // gpm, of the posted solution over every node but the supplies
    int ImbalanceNode = 0;
    double WorstSprinklerShortfall = 0; // psi below the required pressure (Demand mode)
    int ShortSprinkler = 0;
    bool Passed = false;
};

// The verdict on the stored node pressures and calculated pipe flows of a project.
CheckVerdict CheckPostedResults(const Project& project);

// One line for the Results tab and the command line.
std::string CheckVerdictText(const CheckVerdict& verdict);

} // namespace quench
