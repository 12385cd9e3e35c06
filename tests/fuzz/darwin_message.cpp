#include <array>
#include <cerrno>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "simulator/files/Descriptor.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/services/darwin_notifications.hpp"
#include "tests/fuzz/target.hpp"
#include "tests/support/MorningPhone.hpp"

/// What other processes write to the socket on which SpringBoard listens, a message for each line: one of our own name is
/// delivered as often as it was posted, and nobody who posts is left waiting.

namespace {

constexpr const char* ownName = "org.solvane.counted";

int& deliveries()
{
    static int count = 0;
    return count;
}

void countDelivery(CFNotificationCenterRef, void*, NSString*, const void*, NSDictionary*)
{
    ++deliveries();
}

const LockedPhone& phone()
{
    static const auto& only = *new LockedPhone;
    return only;
}

simulator::Descriptor connected()
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = phone().tree().root() / "var/run/notifications" / std::to_string(::getpid());
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    simulator::Descriptor connection(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    if (::connect(connection.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        fail("SpringBoard does not listen any more");
    return connection;
}

bool isHungUp(const simulator::Descriptor& connection)
{
    std::array<char, 1> byte{};
    const ssize_t count = ::recv(connection.number(), byte.data(), byte.size(), MSG_DONTWAIT);
    return count == 0 || (count < 0 && errno == ECONNRESET);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    phone();
    CFNotificationCenterAddObserver(CFNotificationCenterGetDarwinNotifyCenter(), nullptr, &countDelivery,
                                    simulator::toNSString(ownName), nullptr, CFNotificationSuspensionBehaviorNone);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const AutoreleasePool pool;
    constexpr std::size_t mostAtATime = 32;
    std::vector<simulator::Descriptor> posters;
    int expected = 0;
    std::istringstream lines{std::string(textIn(bytes, size))};
    for (std::string line; posters.size() < mostAtATime && std::getline(lines, line);) {
        posters.push_back(connected());
        // Who says nothing hangs up, since SpringBoard waits for a second for those who do not.
        if (line.empty() || ::send(posters.back().number(), line.data(), line.size(), MSG_NOSIGNAL) < 0)
            ::shutdown(posters.back().number(), SHUT_WR);
        expected += line == ownName ? 1 : 0;
    }
    deliveries() = 0;
    simulator::deliverDarwinNotifications();
    simulator::takeSystemLog();
    if (deliveries() != expected)
        fail("a notification was not delivered as often as it was posted");
    for (const simulator::Descriptor& poster : posters) {
        if (!isHungUp(poster))
            fail("a poster still waits");
    }
    return 0;
}
