#include "simulator/services/darwin_notifications.hpp"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "simulator/files/Descriptor.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/files/processes.hpp"
#include "simulator/foundation/strings.hpp"

/// Each SpringBoard listens on a socket of its own, named by its process number, in the phone's "/var/run/notifications".
/// A poster connects to each, sends the name and waits until the other side hangs up, which it does when every observer
/// has been called, or when it is replaced by a new process image meanwhile.

namespace simulator {

namespace {

constexpr const char* socketFolder = "var/run/notifications";

struct Observer {
    CFNotificationCallback callback;
    Owned<NSString> name;
    void* observer;
};

std::vector<Observer>& observers()
{
    static auto& all = *new std::vector<Observer>;
    return all;
}

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

void tellObservers(const std::string& name)
{
    NSString* const posted = toNSString(name);
    // A copy, since a callback may add an observer.
    for (const Observer& observer : std::vector<Observer>(observers())) {
        if (observer.name->isEqualToString(posted))
            observer.callback(CFNotificationCenterGetDarwinNotifyCenter(), observer.observer, posted, nullptr, nullptr);
    }
}

/// A connection to one process on which the name has been sent; none when nobody listens there any more.
Descriptor sendName(const Descriptor& folder, const std::string& socketName, const std::string& name)
{
    Descriptor connection = newSocket(0);
    const sockaddr_un address = addressIn(folder, socketName);
    if (::connect(connection.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::send(connection.number(), name.data(), name.size(), MSG_NOSIGNAL) < 0)
        return Descriptor();
    return connection;
}

void waitForHangUp(const Descriptor& connection)
{
    for (;;) {
        std::array<pollfd, 2> waited{pollfd{connection.number(), POLLIN, 0}, pollfd{listener().number(), POLLIN, 0}};
        if (::poll(waited.data(), waited.size(), -1) < 0 && errno != EINTR)
            return;
        if (waited[1].revents != 0)
            deliverDarwinNotifications();
        if (waited[0].revents != 0)
            return;
    }
}

} // namespace

void openDarwinNotifications()
{
    const auto folder = onThisMachine(std::filesystem::path("/") / socketFolder);
    std::filesystem::create_directories(folder);
    removeSocketsOfGoneProcesses(folder);

    const std::string name = std::to_string(::getpid());
    // A relaunched process keeps its number.
    std::filesystem::remove(folder / name);
    const Descriptor opened = openFolder(folder);
    Descriptor socket = newSocket(SOCK_NONBLOCK);
    const sockaddr_un address = addressIn(opened, name);
    constexpr int mostWaiting = 64;
    if (!socket || ::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(socket.number(), mostWaiting) != 0)
        throw std::system_error(errno, std::generic_category(), "cannot listen for notifications in " + folder.native());
    listener() = std::move(socket);
}

int darwinNotificationDescriptor()
{
    return listener().number();
}

void deliverDarwinNotifications()
{
    for (;;) {
        const Descriptor connection(::accept4(listener().number(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!connection)
            return;
        // A poster sends at once; one that does not must not hold SpringBoard up.
        const timeval patience{1, 0};
        ::setsockopt(connection.number(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        std::array<char, longestDarwinNotificationName> name{};
        const ssize_t length = ::recv(connection.number(), name.data(), name.size(), 0);
        if (length > 0)
            tellObservers(std::string(name.data(), static_cast<std::size_t>(length)));
    }
}

int postDarwinNotification(const std::filesystem::path& root, const std::string& name)
{
    const auto folder = root / socketFolder;
    const Descriptor opened = openFolder(folder);
    if (!opened)
        return 0;
    std::vector<Descriptor> connections;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (Descriptor connection = sendName(opened, entry.path().filename(), name))
            connections.push_back(std::move(connection));
    }
    for (const Descriptor& connection : connections)
        waitForHangUp(connection);
    return static_cast<int>(connections.size());
}

} // namespace simulator

extern "C" {

CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter(void)
{
    // The centre is a name for this process's observers; nothing is stored in it.
    static char center;
    return reinterpret_cast<CFNotificationCenterRef>(&center);
}

void CFNotificationCenterAddObserver(CFNotificationCenterRef, const void* observer, CFNotificationCallback callback,
                                     NSString* name, const void*, CFNotificationSuspensionBehavior)
{
    simulator::observers().push_back({callback, name, const_cast<void*>(observer)});
}
}
