#include "simulator/loader/injection_filter.hpp"

#include <cstdio>
#include <limits>

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"

namespace simulator {

namespace {

struct Broken {
    const char* reason;
};

constexpr const char* noVersions = "CoreFoundationVersion is not one number or two";

struct Number : NSObject {
    double doubleValue() const { return send<"doubleValue", double>(this); }
};

/// Nil for a condition that is left out.
template <class T>
T* condition(NSDictionary* rules, NSString* key, Class cls, const char* reason)
{
    NSObject* const value = rules->objectForKey(key);
    if (value != nullptr && !value->isKindOfClass(cls))
        throw Broken{reason};
    return static_cast<T*>(value);
}

bool isWithin(NSArray* versions)
{
    constexpr NSUInteger most = 2;
    if (versions->count() == 0 || versions->count() > most)
        throw Broken{noVersions};
    double bounds[most] = {0, std::numeric_limits<double>::infinity()};
    for (NSUInteger i = 0; i < versions->count(); ++i) {
        const auto* const bound = versions->objectAtIndex<Number>(i);
        if (!bound->isKindOfClass(classNamed<"NSNumber">()))
            throw Broken{noVersions};
        bounds[i] = bound->doubleValue();
    }
    const double version = coreFoundationVersionOf(phoneSystem());
    return bounds[0] <= version && version < bounds[1];
}

bool admitsSpringBoard(NSDictionary* rules, NSString* library)
{
    const Class list = classNamed<"NSArray">();
    auto* const versions = condition<NSArray>(rules, constantString<"CoreFoundationVersion">(), list, noVersions);
    auto* const bundles = condition<NSArray>(rules, constantString<"Bundles">(), list, "Bundles is no list");
    if (versions != nullptr && !isWithin(versions)) {
        NSLog(constantString<"%@ is not injected: its filter leaves out CoreFoundation %.2f">(), library,
              coreFoundationVersionOf(phoneSystem()));
        return false;
    }
    return bundles == nullptr || bundles->containsObject(constantString<"com.apple.springboard">());
}

} // namespace

bool isForSpringBoard(const std::filesystem::path& library)
{
    NSString* const name = toNSString(library.filename().native());
    const auto filter = std::filesystem::path(library).replace_extension(".plist");
    if (!std::filesystem::exists(filter)) {
        NSLog(constantString<"%@ is injected into every process: it has no filter">(), name);
        return true;
    }
    try {
        NSDictionary* const root = readPropertyList(filter);
        if (root == nullptr)
            throw Broken{"it is no property list of a dictionary"};
        auto* const rules =
            condition<NSDictionary>(root, constantString<"Filter">(), classNamed<"NSDictionary">(), "Filter is no dictionary");
        return admitsSpringBoard(rules, name);
    } catch (const Broken& filterIs) {
        NSLog(constantString<"%@ is not injected: its filter is broken, %s">(), name, filterIs.reason);
        std::fprintf(stderr, "springboard: %s was not injected: its filter is broken, %s\n", library.filename().c_str(),
                     filterIs.reason);
        return false;
    }
}

} // namespace simulator
