#include "tests/support/full_disk.hpp"

#include <atomic>
#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<bool> isFull = false;

bool isRegularFile(int descriptor)
{
    struct stat status{};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

FullDisk::FullDisk()
{
    isFull = true;
}

FullDisk::~FullDisk()
{
    isFull = false;
}

/// In front of the C library's.
extern "C" [[gnu::visibility("default")]] ssize_t write(int descriptor, const void* bytes, size_t count)
{
    if (isFull && isRegularFile(descriptor)) {
        errno = ENOSPC;
        return -1;
    }
    return ::syscall(SYS_write, descriptor, bytes, count);
}
