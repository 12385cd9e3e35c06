#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// Darwin notifications: names that travel between the processes of one phone, over a socket in its file tree.
namespace simulator {

/// In bytes.
inline constexpr std::size_t longestDarwinNotificationName = 1024;

/// Starts to receive the notifications that are posted on the phone. Throws std::system_error when the socket cannot be made.
void openDarwinNotifications();

/// Becomes readable when a notification has arrived; -1 before openDarwinNotifications.
int darwinNotificationDescriptor();

/// Calls the observers of every notification that has arrived. A poster waits until its own has been through here.
void deliverDarwinNotifications();

/// What became of a notification.
struct Posting {
    /// How many processes it was delivered in.
    std::size_t reached = 0;
    /// For each process that listens and was not reached: its number, and the reason.
    std::vector<std::string> failures;
};

/// How long a process is given to take a notification.
inline constexpr std::chrono::seconds longestDelivery{20};

/// Posts a notification to every process on the phone whose root folder is `root`, and waits until it has been delivered
/// everywhere (delivering in this process as well, if it listens), or has not been for that long. Throws std::system_error when
/// it cannot be found out who listens.
Posting postDarwinNotification(const std::filesystem::path& root, const std::string& name,
                               std::chrono::milliseconds patience = longestDelivery);

/// Called with what became of each notification that this process posts as a phone's does, which tells the poster nothing.
void setPostingObserver(std::function<void(const std::string& name, const Posting& posting)> observer);

} // namespace simulator
