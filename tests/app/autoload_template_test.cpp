#include "app/autoload_template.h"
#include "core/atomic_write.h"
#include "core/project_file.h"
#include "tests/support/scratch_directory.h"

#include <fstream>
#include <memory>

#include <gtest/gtest.h>

namespace quench {
namespace {

TEST(AutoloadTemplate, MadeOnceWithTheDefaults) {
    testing::ScratchDirectory scratch;
    const auto file = scratch / "AUTOLOAD.QNW";
    ASSERT_TRUE(CreateAutoloadTemplate(scratch.Path()));
    auto project = std::make_unique<Project>();
    project->CalculationData.DemandMode = 0;
    ASSERT_TRUE(ReadProject(*project, file));
    EXPECT_EQ(project->CalculationData.DemandMode, 1);
    EXPECT_EQ(project->SystemData.DefaultPipeMaterial, DefaultMaterial);
    EXPECT_EQ(project->NumberOfPipeRows, 0);

    // A template the user keeps is never replaced.
    std::ofstream(file, std::ios::trunc) << "the user's own";
    ASSERT_TRUE(CreateAutoloadTemplate(scratch.Path()));
    std::string bytes;
    ASSERT_TRUE(ReadWholeFile(file, bytes));
    EXPECT_EQ(bytes, "the user's own");

    std::string error;
    EXPECT_FALSE(CreateAutoloadTemplate(scratch / "AUTOLOAD.QNW" / "inside", &error));
    EXPECT_FALSE(error.empty());
}

} // namespace
} // namespace quench
