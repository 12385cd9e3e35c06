#include "simulator/services/notification_center.hpp"

#include <system_error>
#include <vector>

#include "platform/Foundation/CFNotificationCenter.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/services/darwin_notifications.hpp"

/// The Darwin notification centre ("CFNotificationCenter", Apple) of this process.

namespace simulator {

namespace {

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

std::function<void(const std::string&, const Posting&)>& postingObserver()
{
    static auto& observer = *new std::function<void(const std::string&, const Posting&)>;
    return observer;
}

} // namespace

void tellObservers(const std::string& name)
{
    NSString* const posted = toNSString(name);
    // A copy, since a callback may add an observer.
    for (const Observer& observer : std::vector<Observer>(observers())) {
        if (observer.name->isEqualToString(posted))
            observer.callback(CFNotificationCenterGetDarwinNotifyCenter(), observer.observer, posted, nullptr, nullptr);
    }
}

void setPostingObserver(std::function<void(const std::string& name, const Posting& posting)> observer)
{
    postingObserver() = std::move(observer);
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

void CFNotificationCenterPostNotification(CFNotificationCenterRef, NSString* name, const void*, NSDictionary*, unsigned char)
{
    const std::string text = simulator::toUTF8(name);
    simulator::Posting posting;
    try {
        posting = simulator::postDarwinNotification(simulator::phoneRoot(), text);
    } catch (const std::system_error& failure) {
        posting.failures.emplace_back(failure.what());
    }
    if (simulator::postingObserver())
        simulator::postingObserver()(text, posting);
}
}
