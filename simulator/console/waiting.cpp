#include "simulator/console/waiting.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <system_error>

#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/services/darwin_notifications.hpp"

namespace simulator {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int noDescriptor = -1;

timespec toTimespec(Clock::duration time)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    return {static_cast<time_t>(seconds.count()), static_cast<long>(std::chrono::nanoseconds(time - seconds).count())};
}

/// Delivers what arrives until the descriptor is readable or the longest time is over; gives whether it is readable.
bool deliverUntilReadable(int descriptor, Clock::duration longest)
{
    std::array<pollfd, 2> waited{pollfd{darwinNotificationDescriptor(), POLLIN, 0}, pollfd{descriptor, POLLIN, 0}};
    const timespec timeout = toTimespec(longest);
    if (::ppoll(waited.data(), waited.size(), &timeout, nullptr) < 0) {
        if (errno == EINTR)
            return false;
        throw std::system_error(errno, std::generic_category(), "cannot wait");
    }
    if (waited[0].revents != 0) {
        const AutoreleasePool pool;
        deliverDarwinNotifications();
    }
    return waited[1].revents != 0;
}

} // namespace

void waitForInput(int descriptor)
{
    while (!deliverUntilReadable(descriptor, std::chrono::hours(1))) {
    }
}

void waitFor(std::chrono::duration<double> time)
{
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
    do {
        deliverUntilReadable(noDescriptor, std::max(end - Clock::now(), Clock::duration::zero()));
    } while (Clock::now() < end);
}

} // namespace simulator
