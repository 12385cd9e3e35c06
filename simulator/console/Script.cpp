#include "simulator/console/Script.hpp"

#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "simulator/console/waiting.hpp"

namespace simulator {

namespace {

bool isRegularFile(int descriptor)
{
    struct stat status{};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

Script::Script(Position position)
    : descriptor_(position.descriptor), linesRead_(position.linesRead), lineNumber_(position.linesRead),
      isSeekable_(isRegularFile(position.descriptor)), unread_(std::move(position.unread))
{
}

std::optional<std::string> Script::nextLine()
{
    lineNumber_ = linesRead_ + 1;
    std::size_t end = unread_.find('\n', taken_);
    while (end == std::string::npos) {
        const std::size_t searched = unread_.size() - taken_;
        if (!readMore()) {
            if (unread_.empty())
                return std::nullopt;
            break;
        }
        end = unread_.find('\n', searched);
    }

    std::string line = unread_.substr(taken_, end - taken_);
    taken_ = end == std::string::npos ? unread_.size() : end + 1;
    linesRead_ = lineNumber_;
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

Script::Position Script::giveBack()
{
    unread_.erase(0, taken_);
    taken_ = 0;
    if (isSeekable_) {
        if (::lseek(descriptor_, -static_cast<off_t>(unread_.size()), SEEK_CUR) < 0)
            throw std::system_error(errno, std::generic_category(), "cannot go back in the script");
        unread_.clear();
    }
    return {descriptor_, linesRead_, unread_};
}

/// False at the end.
bool Script::readMore()
{
    std::array<char, 4096> block;
    ssize_t count;
    do {
        waitForInput(descriptor_);
        count = ::read(descriptor_, block.data(), block.size());
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    if (count < 0)
        throw std::system_error(errno, std::generic_category(), "cannot read the script");
    unread_.erase(0, taken_);
    taken_ = 0;
    unread_.append(block.data(), static_cast<std::size_t>(count));
    return count > 0;
}

} // namespace simulator
