#include "app/single_instance.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>

namespace quench {

std::filesystem::path InstanceLockFile(const DirectoryEnvironment& environment) {
    if (IsWritableDirectory(environment.RuntimeDirectory)) {
        return environment.RuntimeDirectory / LockFileName;
    }
    return UserConfigDirectory(environment) / LockFileName;
}

SingleInstance::~SingleInstance() {
    Release();
}

SingleInstance::Outcome SingleInstance::Acquire(const std::filesystem::path& lockFile) {
    if (Held()) {
        return Outcome::Acquired;
    }
    std::error_code ignored;
    std::filesystem::create_directories(lockFile.parent_path(), ignored);
    const int descriptor = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        return Outcome::Unavailable;
    }
    int result = 0;
    do {
        result = ::flock(descriptor, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        const bool held = errno == EWOULDBLOCK;
        ::close(descriptor);
        return held ? Outcome::AlreadyRunning : Outcome::Unavailable;
    }
    descriptor_ = descriptor;
    // The holder's process number, for a person who looks at the file.
    const std::string pid = std::to_string(::getpid()) + "\n";
    if (::ftruncate(descriptor_, 0) == 0) {
        [[maybe_unused]] const auto written = ::write(descriptor_, pid.data(), pid.size());
    }
    return Outcome::Acquired;
}

void SingleInstance::Release() {
    if (Held()) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
}

} // namespace quench
