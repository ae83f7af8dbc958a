#include "core/atomic_write.h"

#include "core/record_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

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

// A device or a pipe (such as /dev/stdout) cannot be replaced: the bytes are written into it.
// Not blocking, so that a pipe nobody reads fails at once instead of hanging.
bool WriteIntoStream(const std::filesystem::path& file, std::string_view bytes,
                     std::string* error) {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return Fail(error, SystemError("cannot write", file));
    }
    const int flags = ::fcntl(descriptor, F_GETFL);
    ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK);
    const bool written = WriteAll(descriptor, bytes);
    const std::string writeError = written ? "" : SystemError("cannot write", file);
    ::close(descriptor);
    return written || Fail(error, writeError);
}

// The file a rename must replace: the target of a symbolic link (the link itself stays), else
// the name itself.
std::filesystem::path ReplacedFile(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_symlink(file, error)) {
        const std::filesystem::path target = std::filesystem::canonical(file, error);
        if (!error) {
            return target;
        }
    }
    return file;
}

bool WriteRegularFile(const std::filesystem::path& file, const PieceProducer& pieces,
                      std::string* error, Durability durability);

// A device or a pipe takes no rename: the pieces are gathered first, so that a producer that
// gives up has written nothing into it.
bool WritePiecesIntoStream(const std::filesystem::path& file, const PieceProducer& pieces,
                           std::string* error) {
    std::string bytes;
    const bool produced = pieces([&bytes](std::string_view piece) {
        bytes.append(piece);
        return true;
    });
    return produced ? WriteIntoStream(file, bytes, error) : Fail(error, "");
}

} // namespace

bool WriteFileAtomically(const std::filesystem::path& name, std::string_view bytes,
                         std::string* error, Durability durability) {
    return WriteFileAtomically(
        name, [bytes](const WritePiece& write) { return write(bytes); }, error, durability);
}

bool WriteFileAtomically(const std::filesystem::path& name, const PieceProducer& pieces,
                         std::string* error, Durability durability) {
    std::error_code ignored;
    const std::filesystem::file_status kind = std::filesystem::status(name, ignored);
    if (std::filesystem::exists(kind) && !std::filesystem::is_regular_file(kind) &&
        !std::filesystem::is_directory(kind)) {
        return WritePiecesIntoStream(name, pieces, error);
    }
    return WriteRegularFile(ReplacedFile(name), pieces, error, durability);
}

namespace {

// The permissions of the file replaced, or those a new file gets.
void TakePermissions(const std::filesystem::path& file, int descriptor) {
    struct stat existing {};
    if (::stat(file.c_str(), &existing) == 0) {
        ::fchmod(descriptor, existing.st_mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(descriptor, 0666 & ~mask);
    }
}

// The pieces into the temporary file; a synced file's pieces start for the disk as they come.
bool WritePieces(int descriptor, const PieceProducer& pieces, bool synced, bool& writeFailed) {
    off_t offset = 0;
    return pieces([&](std::string_view piece) {
        if (!WriteAll(descriptor, piece)) {
            writeFailed = true;
            return false;
        }
        if (synced && !piece.empty()) {
            ::sync_file_range(descriptor, offset, static_cast<off_t>(piece.size()),
                              SYNC_FILE_RANGE_WRITE);
        }
        offset += static_cast<off_t>(piece.size());
        return true;
    });
}

bool WriteRegularFile(const std::filesystem::path& file, const PieceProducer& pieces,
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
    TakePermissions(file, descriptor);
    const bool synced = durability == Durability::Synced;
    bool writeFailed = false;
    const bool produced = WritePieces(descriptor, pieces, synced, writeFailed);
    const bool written = produced && (!synced || ::fsync(descriptor) == 0);
    writeFailed = writeFailed || (produced && !written);
    const std::string writeError = writeFailed ? SystemError("cannot write", temporary) : "";
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

} // namespace

bool ReadWholeFile(const std::filesystem::path& file, std::string& bytes, std::string* error) {
    std::vector<std::uint8_t> read;
    std::string reason;
    bytes.clear();
    if (!ReadFileHead(file, std::numeric_limits<std::size_t>::max(), read, reason)) {
        return Fail(error, reason);
    }
    bytes.assign(read.begin(), read.end());
    return true;
}

} // namespace quench
