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

// A run that ended as the command line promises: a known status, and a reason on stderr
// whenever a file or usage error stopped it.
inline void ExpectOrderlyEnd(const CommandOutcome& outcome, const std::string& what) {
    EXPECT_TRUE(outcome.Status == cli::ExitSuccess || outcome.Status == cli::ExitStopped ||
                outcome.Status == cli::ExitUsage)
        << what << " ended with " << outcome.Status;
    if (outcome.Status == cli::ExitUsage) {
        EXPECT_NE(outcome.Err, "") << what << " stopped without a word";
    }
}

} // namespace quench::testing
