#include "simulator/files/whole_file.hpp"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "simulator/files/processes.hpp"

namespace simulator {

namespace {

namespace fs = std::filesystem;

/// Takes the file away unless it has been given its name.
class Temporary {
public:
    explicit Temporary(fs::path path) : path_(std::move(path)) {}
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary()
    {
        if (!path_.empty())
            ::unlink(path_.c_str());
    }

    const fs::path& path() const { return path_; }
    bool rename(const fs::path& file)
    {
        if (::rename(path_.c_str(), file.c_str()) != 0)
            return false;
        path_.clear();
        return true;
    }

private:
    fs::path path_;
};

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

} // namespace

Descriptor openRegularFile(const fs::path& file)
{
    // Who opens a pipe without waiting can ask what it is.
    Descriptor opened(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status{};
    if (!opened || ::fstat(opened.number(), &status) != 0)
        return Descriptor();
    if (!S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return Descriptor();
    }
    return opened;
}

std::optional<std::string> readWholeFile(const fs::path& file, std::size_t mostBytes)
{
    const Descriptor opened = openRegularFile(file);
    if (!opened)
        return std::nullopt;
    std::string bytes;
    constexpr std::size_t block = std::size_t{64} << 10;
    for (std::size_t count = 0;;) {
        bytes.resize(count + block);
        const ssize_t read = ::read(opened.number(), bytes.data() + count, block);
        if (read < 0 && errno == EINTR)
            continue;
        if (read < 0)
            return std::nullopt;
        count += static_cast<std::size_t>(read);
        if (count > mostBytes) {
            errno = EFBIG;
            return std::nullopt;
        }
        if (read == 0) {
            bytes.resize(count);
            return bytes;
        }
    }
}

fs::path nameBeside(const fs::path& path)
{
    const std::string beginning = path.filename().native() + '.';
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(path.parent_path(), ignored)) {
        const std::string name = entry.path().filename();
        if (name.starts_with(beginning) && processIsGone(std::string_view(name).substr(beginning.size())))
            fs::remove_all(entry.path(), ignored);
    }
    return path.native() + '.' + std::to_string(::getpid());
}

void copyWholeFile(const fs::path& original, const fs::path& copy)
{
    Temporary temporary(nameBeside(copy));
    fs::copy_file(original, temporary.path(), fs::copy_options::overwrite_existing);
    if (!temporary.rename(copy))
        throw std::system_error(errno, std::generic_category(), "cannot write " + copy.native());
}

void writeWholeFile(const fs::path& path, std::string_view bytes)
{
    const fs::path file = fs::absolute(path);
    const auto fail = [&](const std::error_code& reason) {
        throw std::runtime_error("cannot write " + path.native() + ": " + reason.message());
    };
    std::error_code reason;
    if (fs::exists(file, reason) && !fs::is_regular_file(file, reason)) {
        const Descriptor opened(::open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        if (!opened || !writeAll(opened.number(), bytes))
            fail({errno, std::generic_category()});
        return;
    }
    Temporary temporary(nameBeside(file));
    const Descriptor opened(::open(temporary.path().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!opened || !writeAll(opened.number(), bytes) || !temporary.rename(file))
        fail({errno, std::generic_category()});
}

} // namespace simulator
