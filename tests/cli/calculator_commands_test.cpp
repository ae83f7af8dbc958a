#include "core/formats.h"
#include "library/pipe_library_file.h"
#include "tests/support/command_line.h"
#include "tests/support/scratch_directory.h"

#include <cmath>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace quench::testing {
namespace {

// The result line alone, status 0.
void ExpectResult(const cli::Arguments& arguments, const std::string& result) {
    const CommandOutcome outcome = RunQuench(arguments);
    EXPECT_EQ(outcome.Status, cli::ExitSuccess) << outcome.Err;
    EXPECT_EQ(outcome.Out, result + "\n");
    EXPECT_EQ(outcome.Err, "");
}

// Nothing printed and status 1: where the screen empties its result.
void ExpectEmptied(const cli::Arguments& arguments) {
    const CommandOutcome outcome = RunQuench(arguments);
    EXPECT_EQ(outcome.Status, cli::ExitStopped);
    EXPECT_EQ(outcome.Out, "");
}

TEST(KFactorCommand, SolvesForTheValueThatIsNotGiven) {
    ExpectResult({"kfactor", "--flow", "100", "--pressure", "25"}, "20.0");
    ExpectResult({"kfactor", "--k", "5.6", "--pressure", "16"}, "22.4");
    ExpectResult({"kfactor", "--pressure", "16", "--k", "5.6"}, "22.4");
    ExpectResult({"kfactor", "--k", "5.6", "--flow", "28"}, "25.0");
    ExpectResult({"kfactor", "--k", "8", "--flow", "33.3"}, "17.33");
    // SI: L/min, kPa and Km.
    ExpectResult({"kfactor", "--si", "--k", "80.64", "--pressure", "110.316"}, "84.79");
    ExpectEmptied({"kfactor", "--flow", "0", "--pressure", "25"});
    ExpectEmptied({"kfactor", "--k", "5.6", "--flow", "0"});
}

TEST(KFactorCommand, RefusesWhatIsNotExactlyTwoNumbers) {
    ExpectOneLineError(RunQuench({"kfactor", "--flow", "100"}), "usage: quench kfactor");
    ExpectOneLineError(RunQuench({"kfactor", "--flow", "1", "--k", "2", "--pressure", "3"}),
                       "usage: quench kfactor");
    ExpectOneLineError(RunQuench({"kfactor", "--flow", "ten", "--pressure", "3"}), "--flow");
    ExpectOneLineError(RunQuench({"kfactor", "--flow", "-1", "--pressure", "3"}), "not below 0");
    ExpectOneLineError(RunQuench({"kfactor", "--flow", "1", "--flow", "3"}), "twice");
    ExpectOneLineError(RunQuench({"kfactor", "--flow", "1", "--pressure"}), "needs a value");
    ExpectOneLineError(RunQuench({"kfactor", "--gpm", "1", "--pressure", "2"}), "unknown");
}

// A library of one material: Sch 40 at 1 in. (inner 1.049, elbow 2 ft), C 120.
std::filesystem::path WriteLibrary(const ScratchDirectory& scratch) {
    PipeLibrary library;
    auto& material = library.Material(1);
    material.Description = "Sch 40";
    material.CValue = 120;
    material.Diameters[0].Nominal = 1;
    material.Diameters[0].Inner = 1.049f;
    material.Diameters[0].FitEqLen = {1, 2, 2, 5, 6, 1, 5};
    const auto file = scratch.Path() / "PIPE.DAT";
    EXPECT_TRUE(SavePipeLibrary(library, file).Saved);
    return file;
}

double ExpectedK(double k, double length) {
    double sum = 0;
    for (double p : {7.0, 10.0, 15.0, 20.0}) {
        const double q = k * std::sqrt(p);
        const double friction =
            4.52 * std::pow(q, 1.85) / (std::pow(120.0, 1.85) * std::pow(1.049f, 4.87));
        sum += q / std::sqrt(p + friction * length);
    }
    return sum / 4;
}

TEST(BranchLineCommand, PrintsTheEquivalentKOrNothingAsTheScreenDoes) {
    ScratchDirectory scratch;
    const std::string library = WriteLibrary(scratch).string();
    const cli::Arguments base{"branchline", "--material", "1",         "--diameter", "1",
                              "--k",        "5.6",        "--library", library};
    auto with = [&](std::initializer_list<std::string> more) {
        cli::Arguments arguments = base;
        arguments.insert(arguments.end(), more);
        return arguments;
    };
    ExpectResult(with({"--length", "12"}), Format(ExpectedK(5.6, 12), "0.0#"));
    // Two elbows add 4 ft, the non-standard fittings 3.5 ft.
    ExpectResult(with({"--length", "12", "--fittings", "2e", "--nonstandard", "3.5"}),
                 Format(ExpectedK(5.6, 19.5), "0.0#"));
    ExpectResult(with({"--length", "0", "--nonstandard", "30"}),
                 Format(ExpectedK(5.6, 30), "0.0#"));
    ExpectEmptied(with({"--length", "0"}));

    ExpectEmptied({"branchline", "--material", "1", "--diameter", "1.5", "--length", "10", "--k",
                   "5.6", "--library", library});
    ExpectEmptied({"branchline", "--material", "2", "--diameter", "1", "--length", "10", "--k",
                   "5.6", "--library", library});
    ExpectEmptied({"branchline", "--material", "60", "--diameter", "1", "--length", "10", "--k",
                   "5.6", "--library", library});
    // SI: mm, m and Km give the same K in Km.
    ExpectResult({"branchline", "--si", "--material", "1", "--diameter", "25.4", "--length",
                  "3.6576", "--k", "80.64", "--library", library},
                 Format(ExpectedK(5.6, 12) * 14.4, "0.0#"));
}

TEST(BranchLineCommand, RefusesMissingOptionsBadFittingsAndAMissingLibrary) {
    ScratchDirectory scratch;
    const std::string library = WriteLibrary(scratch).string();
    ExpectOneLineError(RunQuench({"branchline", "--material", "1", "--diameter", "1", "--k", "5.6",
                                  "--library", library}),
                       "usage: quench branchline");
    ExpectOneLineError(RunQuench({"branchline", "--material", "1", "--diameter", "1", "--length",
                                  "1", "--k", "5.6", "--fittings", "2X", "--library", library}),
                       "--fittings");
    ExpectOneLineError(
        RunQuench({"branchline", "--material", "1", "--diameter", "1", "--length", "1", "--k",
                   "5.6", "--library", (scratch.Path() / "none.dat").string()}),
        "cannot read");
}

TEST(AddFitCommand, TheLengthOfEachFrictionModel) {
    ExpectResult(
        {"addfit", "--head-loss", "1", "--flow", "100", "--diameter", "2", "--c-value", "130"},
        "10.51");
    ExpectResult(
        {"addfit", "--head-loss", "2", "--flow", "100", "--diameter", "2", "--c-value", "130"},
        "21.02");
    // The roughness model at its defaults, and old pipe being rougher.
    const CommandOutcome fresh =
        RunQuench({"addfit", "--head-loss", "1", "--flow", "100", "--diameter", "2"});
    const CommandOutcome old = RunQuench(
        {"addfit", "--head-loss", "1", "--flow", "100", "--diameter", "2", "--roughness", "0.004"});
    ASSERT_EQ(fresh.Status, cli::ExitSuccess);
    ASSERT_EQ(old.Status, cli::ExitSuccess);
    const std::string freshLength = fresh.Out.substr(0, fresh.Out.find('\n'));
    EXPECT_GT(ToNumber(freshLength), ToNumber(old.Out.substr(0, old.Out.find('\n'))));
    EXPECT_NEAR(ToNumber(freshLength), 10.5, 1.5);
    // The defaults are the screen's: naming them changes nothing.
    ExpectResult({"addfit", "--head-loss", "1", "--flow", "100", "--diameter", "2", "--density",
                  "62.37", "--viscosity", "1.12444", "--roughness", "0.002"},
                 freshLength);
    // SI in kPa, L/min and mm, the length in metres.
    ExpectResult({"addfit", "--si", "--head-loss", "6.894757", "--flow", "378.5411784",
                  "--diameter", "50.8", "--c-value", "130"},
                 "3.2");
}

TEST(AddFitCommand, MessagesGoToStderrAndUsageErrorsExitTwo) {
    const CommandOutcome zero =
        RunQuench({"addfit", "--head-loss", "0", "--flow", "100", "--diameter", "2"});
    EXPECT_EQ(zero.Status, cli::ExitStopped);
    EXPECT_EQ(zero.Out, "");
    EXPECT_EQ(zero.Err, "Values must be greater than zero: All values must be greater than zero.  "
                        "Please try again.\n");
    const CommandOutcome rough = RunQuench(
        {"addfit", "--head-loss", "1", "--flow", "100", "--diameter", "2", "--roughness", "0"});
    EXPECT_EQ(rough.Status, cli::ExitStopped);
    EXPECT_EQ(rough.Err, "You need to enter a value for roughness.\n");
    ExpectOneLineError(RunQuench({"addfit", "--head-loss", "1", "--flow", "100", "--diameter", "2",
                                  "--roughness", "0.002", "--c-value", "130"}),
                       "not both");
    ExpectOneLineError(RunQuench({"addfit", "--head-loss", "1", "--flow", "100"}),
                       "usage: quench addfit");
}

} // namespace
} // namespace quench::testing
