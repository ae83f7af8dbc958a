#pragma once

// Running the quench command in-process from a test, and the check of a usage or file error.
// Header only: test_support does not link the commands; the cli suite does.

#include "cli/command.h"

#include <algorithm>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace quench::testing {

struct CommandOutcome {
    int Status = 0;
    std::string Out;
    std::string Err;
};

inline CommandOutcome RunQuench(const cli::Arguments& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    CommandOutcome outcome;
    outcome.Status = cli::RunCommandLine(arguments, out, err);
    outcome.Out = out.str();
    outcome.Err = err.str();
    return outcome;
}

// A usage or file error: status 2, nothing on stdout and one line on stderr that holds part.
inline void ExpectOneLineError(const CommandOutcome& outcome, const std::string& part) {
    EXPECT_EQ(outcome.Status, cli::ExitUsage);
    EXPECT_EQ(std::count(outcome.Err.begin(), outcome.Err.end(), '\n'), 1) << outcome.Err;
    EXPECT_NE(outcome.Err.find(part), std::string::npos) << outcome.Err;
    EXPECT_EQ(outcome.Out, "");
}

} // namespace quench::testing
