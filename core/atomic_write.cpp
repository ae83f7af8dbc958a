#include "core/atomic_write.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quench {

namespace {

bool Fail(std::string* error, const std::string& text) {
    if (error != nullptr) {
        *error = text;
    }
    return false;
}

std::string SystemError(const std::string& what, const std::filesystem::path& file) {
    return what + " " + file.string() + ": " + std::strerror(errno);
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// The folder's entry of a renamed file reaches the disk with the folder.
void SyncFolder(const std::filesystem::path& file) {
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

bool WriteFileAtomically(const std::filesystem::path& file, std::string_view bytes,
                         std::string* error, Durability durability) {
    std::error_code ignored;
    if (file.has_parent_path()) {
        std::filesystem::create_directories(file.parent_path(), ignored);
    }
    std::string temporary = file.string() + ".XXXXXX";
    const int descriptor = ::mkstemp(temporary.data());
    if (descriptor < 0) {
        return Fail(error, SystemError("cannot create a temporary file beside", file));
    }
    struct stat existing {};
    if (::stat(file.c_str(), &existing) == 0) {
        ::fchmod(descriptor, existing.st_mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(descriptor, 0666 & ~mask);
    }
    const bool synced = durability == Durability::Synced;
    const bool written = WriteAll(descriptor, bytes) && (!synced || ::fsync(descriptor) == 0);
    const std::string writeError = written ? "" : SystemError("cannot write", temporary);
    const bool closed = ::close(descriptor) == 0;
    if (!written || !closed) {
        ::unlink(temporary.c_str());
        return Fail(error, written ? SystemError("cannot write", temporary) : writeError);
    }
    if (::rename(temporary.c_str(), file.c_str()) != 0) {
        const std::string renameError = SystemError("cannot replace", file);
        ::unlink(temporary.c_str());
        return Fail(error, renameError);
    }
    if (synced) {
        SyncFolder(file);
    }
    return true;
}

// A regular file in one read of its size; anything else (a pipe, a device) a block at a time, so
// that it is read as far as it goes.
bool ReadWholeFile(const std::filesystem::path& file, std::string& bytes) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    struct stat info {};
    if (::fstat(descriptor, &info) != 0 || S_ISDIR(info.st_mode)) {
        ::close(descriptor);
        return false;
    }
    constexpr std::size_t Block = 65536;
    const std::size_t expected =
        S_ISREG(info.st_mode) ? static_cast<std::size_t>(std::max<off_t>(info.st_size, 0)) : 0;
    bytes.resize(expected + 1); // one more, to see the end of a file that grew
    std::size_t filled = 0;
    bool failed = false;
    for (;;) {
        if (filled == bytes.size()) {
            bytes.resize(bytes.size() + Block);
        }
        const ssize_t count = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            failed = count < 0;
            break;
        }
        filled += static_cast<std::size_t>(count);
    }
    ::close(descriptor);
    bytes.resize(filled);
    return !failed;
}

} // namespace quench
