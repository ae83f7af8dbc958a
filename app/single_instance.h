#pragma once

// One running copy per user: the first start takes an exclusive lock on a file, a second start
// finds it held. The lock belongs to the open file, so the system drops it when the holder ends
// in any way, and a crashed copy never blocks the next start.

#include "app/directories.h"

#include <filesystem>
#include <string_view>

namespace quench {

inline constexpr std::string_view AlreadyRunningText = "QUENCH is already running.";
inline constexpr std::string_view LockFileName = "quench.lock";

// The lock file: in the user's runtime directory, or else the user's configuration directory.
std::filesystem::path InstanceLockFile(const DirectoryEnvironment& environment);

class SingleInstance {
public:
    SingleInstance() = default;
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    enum class Outcome {
        Acquired,       // this is the only copy
        AlreadyRunning, // another copy holds the lock
        Unavailable,    // the lock file cannot be made: the start goes on without the test
    };

    // Takes the lock; a second call on a held lock keeps it.
    Outcome Acquire(const std::filesystem::path& lockFile);
    void Release();
    bool Held() const { return descriptor_ >= 0; }

private:
    int descriptor_ = -1;
};

} // namespace quench
