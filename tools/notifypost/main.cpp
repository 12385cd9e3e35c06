#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

#include "simulator/runtime/faults.hpp"
#include "simulator/services/darwin_notifications.hpp"

/// `notifypost --root DIR NAME` posts a Darwin notification to every springboard that runs on that root, and returns when
/// all have answered it, or have had the time to.

namespace {

constexpr const char* usage = "usage: notifypost --root DIR NAME\n"
                              "Posts a Darwin notification to every springboard that runs on that root folder,\n"
                              "and waits until each has delivered it, 20 seconds at the most. Says on standard error\n"
                              "who was not reached, and ends with status 1 then.\n";

int fail(const char* what, const char* about)
{
    std::fprintf(stderr, "notifypost: %s%s\n%s", what, about, usage);
    return 2;
}

int post(const char* root, const char* name)
{
    const simulator::Posting posting = simulator::postDarwinNotification(root, name);
    for (const std::string& failure : posting.failures)
        std::fprintf(stderr, "notifypost: not reached: %s\n", failure.c_str());
    if (posting.reached == 0 && posting.failures.empty())
        std::fprintf(stderr, "notifypost: nobody listens on %s\n", root);
    return posting.failures.empty() ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    simulator::reportFaults();
    if (count == 2 && std::string_view(words[1]) == "--help") {
        std::fputs(usage, stdout);
        return 0;
    }
    if (count != 4 || std::string_view(words[1]) != "--root")
        return fail("a root folder and one name are needed", "");
    std::error_code failure;
    if (!std::filesystem::is_directory(words[2], failure))
        return fail("no such folder: ", words[2]);
    const std::string_view name = words[3];
    if (name.empty() || name.size() > simulator::longestDarwinNotificationName)
        return fail("a name has from 1 to 1024 bytes", "");
    try {
        return post(words[2], words[3]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "notifypost: %s\n", error.what());
        return 1;
    }
}
