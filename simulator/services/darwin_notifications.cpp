#include "simulator/services/darwin_notifications.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "simulator/files/Descriptor.hpp"
#include "simulator/files/processes.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/services/notification_center.hpp"

/// Each SpringBoard listens on a socket of its own, named by its process number, in the phone's "/var/run/notifications".
/// A poster connects to each, sends the name and waits until the other side hangs up, which it does when every observer
/// has been called, or when it is replaced by a new process image meanwhile. No wait is without end: a process may be stopped.

namespace simulator {

namespace {

constexpr const char* socketFolder = "var/run/notifications";

Descriptor& listener()
{
    static auto& descriptor = *new Descriptor;
    return descriptor;
}

/// The address of a socket in a folder that may lie deeper than an address is long: it goes through the open folder.
sockaddr_un addressIn(const Descriptor& folder, const std::string& name)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(folder.number()) + "/" + name;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

Descriptor openFolder(const std::filesystem::path& folder)
{
    return Descriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

Descriptor newSocket(int flags)
{
    return Descriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
}

void removeSocketsOfGoneProcesses(const std::filesystem::path& folder)
{
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (processIsGone(entry.path().filename().native()))
            std::filesystem::remove(entry.path());
    }
}

/// What a killed process leaves, the next one removes.
void removeOwnSocket()
{
    std::error_code ignored;
    std::filesystem::remove(phoneRoot() / socketFolder / std::to_string(::getpid()), ignored);
}

using Clock = std::chrono::steady_clock;

/// Given up while there is no descriptor left for the notification that has arrived.
Descriptor& spareDescriptor()
{
    static auto& spare = *new Descriptor;
    return spare;
}

Descriptor openSpare()
{
    return Descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
}

/// A poster's connection to one process.
struct Delivery {
    std::string process;
    Descriptor connection;
};

/// One notification on its way to every process. As many are told at a time as there are descriptors.
class Post {
public:
    Post(const Descriptor& folder, const std::string& name, std::chrono::milliseconds patience)
        : folder_(folder), name_(name), patience_(patience)
    {
    }

    void tell(const std::string& process)
    {
        const auto deadline = Clock::now() + patience_;
        int failure = sendTo(process);
        while (failure != 0 && canPass(failure) && Clock::now() < deadline) {
            if (under_.empty())
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            else
                finish();
            failure = sendTo(process);
        }
        const bool isGone = failure == ECONNREFUSED || failure == ENOENT;
        if (failure != 0 && !isGone)
            posting_.failures.push_back("process " + process + ": " + std::generic_category().message(failure));
    }

    /// Waits until those that have been told so far have taken it.
    void finish()
    {
        const auto deadline = Clock::now() + patience_;
        for (const Delivery& delivery : under_) {
            if (waitForHangUp(delivery.connection, deadline))
                ++posting_.reached;
            else
                posting_.failures.push_back("process " + delivery.process + ": it did not answer within " +
                                            std::to_string(std::chrono::ceil<std::chrono::seconds>(patience_).count()) +
                                            " seconds");
        }
        under_.clear();
    }

    Posting result() { return std::move(posting_); }

private:
    /// Too many posters wait for the process already, or those that have been told hold the last descriptors.
    bool canPass(int failure) const { return failure == EAGAIN || ((failure == EMFILE || failure == ENFILE) && !under_.empty()); }

    /// Gives 0, or what has failed.
    int sendTo(const std::string& process)
    {
        Descriptor connection = newSocket(SOCK_NONBLOCK);
        const sockaddr_un address = addressIn(folder_, process);
        if (!connection || ::connect(connection.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            ::send(connection.number(), name_.data(), name_.size(), MSG_NOSIGNAL) < 0)
            return errno == EPIPE || errno == ECONNRESET ? ECONNREFUSED : errno;
        under_.push_back({process, std::move(connection)});
        return 0;
    }

    /// False when the process has not taken it in time.
    static bool waitForHangUp(const Descriptor& connection, Clock::time_point deadline)
    {
        for (;;) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
            std::array<pollfd, 2> waited{pollfd{connection.number(), POLLIN, 0}, pollfd{listener().number(), POLLIN, 0}};
            const auto timeout = static_cast<int>(std::max<std::int64_t>(left.count(), 0));
            const int ready = ::poll(waited.data(), waited.size(), timeout);
            if (ready < 0 && errno != EINTR)
                return false;
            if (ready > 0 && waited[1].revents != 0)
                deliverDarwinNotifications();
            if (ready > 0 && waited[0].revents != 0)
                return true;
            if (left.count() <= 0)
                return false;
        }
    }

    const Descriptor& folder_;
    const std::string& name_;
    std::chrono::milliseconds patience_;
    std::vector<Delivery> under_;
    Posting posting_;
};

/// Everything that listens, or did once.
std::vector<std::string> socketsIn(const std::filesystem::path& folder)
{
    std::vector<std::string> names;
    std::error_code unreadable;
    for (std::filesystem::directory_iterator entry(folder, unreadable), end; !unreadable && entry != end;
         entry.increment(unreadable))
        names.push_back(entry->path().filename());
    if (unreadable)
        throw std::system_error(unreadable, "cannot tell who listens in " + folder.native());
    return names;
}

} // namespace

void openDarwinNotifications()
{
    const auto folder = phoneRoot() / socketFolder;
    std::filesystem::create_directories(folder);
    removeSocketsOfGoneProcesses(folder);
    // A relaunched process keeps its number.
    removeOwnSocket();
    const Descriptor opened = openFolder(folder);
    Descriptor socket = newSocket(SOCK_NONBLOCK);
    const sockaddr_un address = addressIn(opened, std::to_string(::getpid()));
    constexpr int mostWaiting = 64;
    if (!socket || ::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(socket.number(), mostWaiting) != 0)
        throw std::system_error(errno, std::generic_category(), "cannot listen for notifications in " + folder.native());
    listener() = std::move(socket);
    spareDescriptor() = openSpare();
    std::atexit(removeOwnSocket);
}

int darwinNotificationDescriptor()
{
    return listener().number();
}

void deliverDarwinNotifications()
{
    for (;;) {
        Descriptor connection(::accept4(listener().number(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!connection && (errno == EMFILE || errno == ENFILE)) {
            spareDescriptor() = Descriptor();
            connection = Descriptor(::accept4(listener().number(), nullptr, nullptr, SOCK_CLOEXEC));
        }
        if (!connection)
            return;
        // A poster sends at once; one that does not must not hold SpringBoard up.
        const timeval patience{1, 0};
        ::setsockopt(connection.number(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        std::array<char, longestDarwinNotificationName> name{};
        const ssize_t length = ::recv(connection.number(), name.data(), name.size(), 0);
        // Names are C's strings; what has a zero within would be taken for its beginning.
        if (length > 0 && std::memchr(name.data(), 0, static_cast<std::size_t>(length)) == nullptr)
            tellObservers(std::string(name.data(), static_cast<std::size_t>(length)));
        connection = Descriptor();
        if (!spareDescriptor())
            spareDescriptor() = openSpare();
    }
}

Posting postDarwinNotification(const std::filesystem::path& root, const std::string& name, std::chrono::milliseconds patience)
{
    const auto folder = root / socketFolder;
    if (!std::filesystem::exists(folder))
        return {};
    const std::vector<std::string> processes = socketsIn(folder);
    const Descriptor opened = openFolder(folder);
    if (!opened)
        throw std::system_error(errno, std::generic_category(), "cannot tell who listens in " + folder.native());
    Post post(opened, name, patience);
    for (const std::string& process : processes)
        post.tell(process);
    post.finish();
    return post.result();
}

} // namespace simulator
