#include "core/record_file.h"

#include "core/atomic_write.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace quench {

namespace {

namespace fs = std::filesystem;

// Closes the descriptor when it goes out of scope.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            Close();
            descriptor_ = other.descriptor_;
            other.descriptor_ = -1;
        }
        return *this;
    }

    int Get() const { return descriptor_; }
    bool IsOpen() const { return descriptor_ >= 0; }
    void Close() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
            descriptor_ = -1;
        }
    }

private:
    int descriptor_;
};

std::string SystemReason() {
    return std::strerror(errno);
}

// A directory, a device or a pipe is no project file.
std::string KindProblem(const struct stat& info) {
    if (S_ISDIR(info.st_mode)) {
        return "it is a directory";
    }
    if (!S_ISREG(info.st_mode)) {
        return "it is not a regular file";
    }
    return {};
}

// Reads until size bytes or the end of the file; returns the count read, or -1.
ssize_t ReadFully(int descriptor, std::uint8_t* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(descriptor, bytes + done, size - done);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return -1;
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(done);
}

// The file a save really replaces: the target of a symbolic link, else the name itself.
fs::path ResolveTarget(const fs::path& file) {
    std::error_code error;
    if (fs::is_symlink(file, error)) {
        const fs::path resolved = fs::canonical(file, error);
        if (!error) {
            return resolved;
        }
    }
    return file;
}

} // namespace

namespace {

// Opens a file to read and tells its size; anything but a regular file is refused. Not blocking,
// so that a named pipe given by mistake cannot hang the open.
bool OpenToRead(const fs::path& file, FileDescriptor& descriptor, std::size_t& size,
                std::string& error) {
    descriptor = FileDescriptor(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!descriptor.IsOpen()) {
        error = SystemReason();
        return false;
    }
    struct stat info {};
    if (::fstat(descriptor.Get(), &info) != 0) {
        error = SystemReason();
        return false;
    }
    if (const auto problem = KindProblem(info); !problem.empty()) {
        error = problem;
        return false;
    }
    size = static_cast<std::size_t>(std::max<off_t>(info.st_size, 0));
    return true;
}

// Reads up to count bytes from where the descriptor stands; bytes keeps what was read.
bool ReadInto(const FileDescriptor& descriptor, std::size_t count, std::vector<std::uint8_t>& bytes,
              std::string& error) {
    bytes.resize(count);
    const ssize_t read = ReadFully(descriptor.Get(), bytes.data(), bytes.size());
    if (read < 0) {
        error = SystemReason();
        bytes.clear();
        return false;
    }
    bytes.resize(static_cast<std::size_t>(read));
    return true;
}

} // namespace

bool ReadFileHead(const fs::path& file, std::size_t limit, std::vector<std::uint8_t>& bytes,
                  std::string& error) {
    bytes.clear();
    FileDescriptor descriptor;
    std::size_t size = 0;
    return OpenToRead(file, descriptor, size, error) &&
           ReadInto(descriptor, std::min(limit, size), bytes, error);
}

bool ReadFileTail(const fs::path& file, std::size_t offset, std::vector<std::uint8_t>& bytes,
                  std::string& error) {
    bytes.clear();
    FileDescriptor descriptor;
    std::size_t size = 0;
    if (!OpenToRead(file, descriptor, size, error)) {
        return false;
    }
    if (size <= offset) {
        return true;
    }
    if (::lseek(descriptor.Get(), static_cast<off_t>(offset), SEEK_SET) < 0) {
        error = SystemReason();
        return false;
    }
    return ReadInto(descriptor, size - offset, bytes, error);
}

namespace {

// A save writes only a regular file, in a folder that exists.
bool CheckTarget(const fs::path& target, fs::file_status kind, std::string& error) {
    std::error_code ignored;
    const fs::path directory = target.has_parent_path() ? target.parent_path() : fs::path(".");
    if (fs::is_directory(kind)) {
        error = "it is a directory";
        return false;
    }
    if (fs::exists(kind) && !fs::is_regular_file(kind)) {
        error = "it is not a regular file";
        return false;
    }
    // The atomic writer would make a missing directory; a save never does.
    if (!fs::is_directory(directory, ignored)) {
        error = std::strerror(fs::exists(directory, ignored) ? ENOTDIR : ENOENT);
        return false;
    }
    return true;
}

// The checked target of a save and whatever of its file lies beyond the first `head` bytes (none
// for a file not there yet).
bool TailBeyond(const fs::path& file, std::size_t head, fs::path& target,
                std::vector<std::uint8_t>& tail, std::string& error) {
    target = ResolveTarget(file);
    std::error_code ignored;
    const fs::file_status kind = fs::status(target, ignored);
    tail.clear();
    return CheckTarget(target, kind, error) &&
           (!fs::exists(kind) || ReadFileTail(target, head, tail, error));
}

} // namespace

bool LayFileOverHead(const fs::path& file, std::span<const std::uint8_t> head, std::string& bytes,
                     std::string& error) {
    fs::path target;
    std::vector<std::uint8_t> tail;
    if (!TailBeyond(file, head.size(), target, tail, error)) {
        return false;
    }
    bytes.assign(head.begin(), head.end());
    bytes.append(tail.begin(), tail.end());
    return true;
}

bool AppendFileTail(const fs::path& file, std::vector<std::uint8_t>& image, std::string& error) {
    fs::path target;
    std::vector<std::uint8_t> tail;
    if (!TailBeyond(file, image.size(), target, tail, error)) {
        return false;
    }
    image.insert(image.end(), tail.begin(), tail.end());
    return true;
}

bool ReplaceFile(const fs::path& file, std::string_view bytes, std::string& error,
                 Durability durability) {
    const fs::path target = ResolveTarget(file);
    std::error_code ignored;
    if (!CheckTarget(target, fs::status(target, ignored), error)) {
        return false;
    }
    return WriteFileAtomically(target, bytes, &error, durability);
}

bool ReplaceFileHeadInPieces(const fs::path& file, std::size_t head, const PieceProducer& pieces,
                             std::string& error, Durability durability) {
    fs::path target;
    std::vector<std::uint8_t> tail;
    if (!TailBeyond(file, head, target, tail, error)) {
        return false;
    }
    const PieceProducer withTail = [&pieces, &tail](const WritePiece& write) {
        return pieces(write) && write({reinterpret_cast<const char*>(tail.data()), tail.size()});
    };
    return WriteFileAtomically(target, withTail, &error, durability);
}

bool ReplaceFileHead(const fs::path& file, std::span<const std::uint8_t> head, std::string& error,
                     Durability durability) {
    std::string bytes;
    return LayFileOverHead(file, head, bytes, error) &&
           WriteFileAtomically(ResolveTarget(file), bytes, &error, durability);
}

} // namespace quench
