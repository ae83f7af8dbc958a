#include "core/linked_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quench {

bool MakeLinkedCopy(const std::filesystem::path& file, const std::filesystem::path& copy,
                    std::uintmax_t size) {
    if (::linkat(AT_FDCWD, file.c_str(), AT_FDCWD, copy.c_str(), AT_SYMLINK_FOLLOW) != 0) {
        return false;
    }
    // A file replaced since it was read would give the copy other bytes than those read.
    struct stat linked {};
    if (::stat(copy.c_str(), &linked) != 0 || !S_ISREG(linked.st_mode) ||
        static_cast<std::uintmax_t>(linked.st_size) != size) {
        ::unlink(copy.c_str());
        return false;
    }
    return true;
}

} // namespace quench
