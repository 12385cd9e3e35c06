#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

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

/// Posts a notification to every process on the phone whose root folder is `root`, and waits until it has been delivered
/// everywhere (delivering in this process as well, if it listens). Gives the number of processes that were reached.
int postDarwinNotification(const std::filesystem::path& root, const std::string& name);

} // namespace simulator
