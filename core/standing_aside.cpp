#include "core/standing_aside.hpp"

#include "platform/Foundation/NSLog.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/AutoreleasePool.hpp"

namespace {

/// What the library is to make. A class that somebody has allocated and not registered yet is seen by nobody: ours takes the
/// name, and the runtime refuses the other when its turn comes.
constexpr const char* ownClasses[] = {"APLCalendar", "SVWidget", "SVAppsView"};
constexpr const char* ownProtocol = "APLCalendarDelegate";

NSString* origin(Class cls)
{
    const char* const image = class_getImageName(cls);
    return image == nullptr ? constantString<"made at run time">() : NSString::stringWithUTF8String(image);
}

} // namespace

bool mustStandAside()
{
    if (objc_getClass("SpringBoard") == nullptr) {
        const AutoreleasePool pool;
        NSLog(constantString<"Solvane stands aside: this is not SpringBoard">());
        return true;
    }
    for (const char* name : ownClasses) {
        if (const Class taken = objc_getClass(name)) {
            const AutoreleasePool pool;
            NSLog(constantString<"Solvane stands aside: there is a class %s already (%@)">(), name, origin(taken));
            return true;
        }
    }
    // Nothing tells where a protocol comes from.
    if (objc_getProtocol(ownProtocol) != nullptr) {
        const AutoreleasePool pool;
        NSLog(constantString<"Solvane stands aside: there is a protocol %s already">(), ownProtocol);
        return true;
    }
    return false;
}
