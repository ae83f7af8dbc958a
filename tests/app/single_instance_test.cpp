#include "app/single_instance.h"
#include "tests/support/scratch_directory.h"

#include <csignal>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::ScratchDirectory;

TEST(SingleInstance, ASecondCopyFindsTheLockHeld) {
    ScratchDirectory scratch;
    const auto lock = scratch / "run" / "quench.lock";
    SingleInstance first;
    EXPECT_EQ(first.Acquire(lock), SingleInstance::Outcome::Acquired);
    EXPECT_TRUE(first.Held());
    EXPECT_EQ(first.Acquire(lock), SingleInstance::Outcome::Acquired); // already ours

    SingleInstance second;
    EXPECT_EQ(second.Acquire(lock), SingleInstance::Outcome::AlreadyRunning);
    EXPECT_FALSE(second.Held());

    first.Release();
    EXPECT_EQ(second.Acquire(lock), SingleInstance::Outcome::Acquired);
    EXPECT_EQ(AlreadyRunningText, "QUENCH is already running.");
}

TEST(SingleInstance, ACrashedCopyDoesNotBlockTheNextStart) {
    ScratchDirectory scratch;
    const auto lock = scratch / "quench.lock";
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        SingleInstance holder;
        const char held = holder.Acquire(lock) == SingleInstance::Outcome::Acquired ? 'y' : 'n';
        [[maybe_unused]] const auto written = ::write(ready[1], &held, 1);
        ::pause(); // until killed, without releasing anything
        ::_exit(0);
    }
    char held = 0;
    ASSERT_EQ(::read(ready[0], &held, 1), 1);
    ASSERT_EQ(held, 'y');

    SingleInstance next;
    EXPECT_EQ(next.Acquire(lock), SingleInstance::Outcome::AlreadyRunning);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(next.Acquire(lock), SingleInstance::Outcome::Acquired);
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(SingleInstance, WhereTheLockLives) {
    ScratchDirectory scratch;
    DirectoryEnvironment environment;
    environment.ConfigHome = scratch / "config";
    EXPECT_EQ(InstanceLockFile(environment), scratch / "config" / "quench" / "quench.lock");
    std::filesystem::create_directories(scratch / "runtime");
    environment.RuntimeDirectory = scratch / "runtime";
    EXPECT_EQ(InstanceLockFile(environment), scratch / "runtime" / "quench.lock");

    // A lock that cannot be made does not stop the program.
    std::ofstream(scratch / "file") << "x";
    SingleInstance instance;
    EXPECT_EQ(instance.Acquire(scratch / "file" / "quench.lock"),
              SingleInstance::Outcome::Unavailable);
    EXPECT_FALSE(instance.Held());
}

} // namespace
} // namespace quench
