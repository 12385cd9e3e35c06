#include "simulator/foundation/time_zones.hpp"

#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "platform/Foundation/NSDate.hpp"
#include "simulator/foundation/c_library_zone.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/icu_texts.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// TZ names the user's time zone, in every form that the C library or ICU knows. GNUstep knows names alone, and asks the
/// machine's settings first; so Foundation is given a zone that counts as the C library does.

namespace simulator {

namespace {

bool isKnownToICU(const std::string& timeZone)
{
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(timeZone)));
    return *zone != icu::TimeZone::getUnknown();
}

std::string machinesName()
{
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    icu::UnicodeString identifier;
    std::string name;
    return zone->getID(identifier).toUTF8String(name);
}

/// What the user's zone is called: TZ says so, or the machine. Foundation would tell, too, at the price of all its defaults.
std::string chosenName(const std::optional<std::string>& timeZone)
{
    if (!timeZone)
        return machinesName();
    const std::string name = timeZone->substr(timeZone->starts_with(':') ? 1 : 0);
    return name.empty() ? "UTC" : name;
}

std::unique_ptr<icu::TimeZone> chosenZone(const std::optional<std::string>& timeZone)
{
    const std::string name = chosenName(timeZone);
    if (!timeZone || isKnownToCLibrary(*timeZone))
        return cLibraryZone(name);
    if (isKnownToICU(name))
        return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    throw std::runtime_error("TZ: \"" + *timeZone + "\" is no time zone that is known here");
}

const icu::TimeZone& userZone()
{
    static const icu::TimeZone& zone = *chosenZone(surroundings().timeZone).release();
    return zone;
}

struct UserTimeZoneState {};

/// NSTimeZone's own wants a name and rules.
NSObject* init(NSObject* self, SEL)
{
    return self;
}

NSString* name(NSObject*, SEL)
{
    icu::UnicodeString identifier;
    return fromICU(userZone().getID(identifier));
}

NSInteger secondsFromGMTForDate(NSObject*, SEL, NSDate* date)
{
    return static_cast<NSInteger>(userOffsetAt(static_cast<std::int64_t>(std::floor(date->timeIntervalSince1970()))));
}

BOOL isDaylightSavingTimeForDate(NSObject*, SEL, NSDate* date)
{
    UErrorCode failure = U_ZERO_ERROR;
    return BOOL{userZone().inDaylightTime(date->timeIntervalSince1970() * U_MILLIS_PER_SECOND, failure) != 0};
}

NSString* abbreviationForDate(NSObject* self, SEL, NSDate* date)
{
    icu::UnicodeString abbreviation;
    const bool isSummerTime = isDaylightSavingTimeForDate(self, nullptr, date) != NO;
    return fromICU(userZone().getDisplayName(static_cast<UBool>(isSummerTime ? 1 : 0), icu::TimeZone::SHORT, abbreviation));
}

} // namespace

void replaceTimeZone()
{
    if (const auto& zone = surroundings().timeZone)
        ::setenv("TZ", zone->c_str(), 1);
    userZone();
    SimulatedClass<UserTimeZoneState>("__NSTimeZone", "NSTimeZone")
        .method<"init">(init)
        .method<"name">(name)
        .method<"secondsFromGMTForDate:">(secondsFromGMTForDate)
        .method<"isDaylightSavingTimeForDate:">(isDaylightSavingTimeForDate)
        .method<"abbreviationForDate:">(abbreviationForDate)
        .registerClass();
    send<"setDefaultTimeZone:">(classNamed<"NSTimeZone">(), send<"new", id>(classNamed<"__NSTimeZone">()));
}

std::int64_t offsetOf(const icu::TimeZone& zone, std::int64_t moment)
{
    std::int32_t raw = 0;
    std::int32_t summer = 0;
    UErrorCode failure = U_ZERO_ERROR;
    zone.getOffset(static_cast<double>(moment) * U_MILLIS_PER_SECOND, UBool{false}, raw, summer, failure);
    return (raw + summer) / U_MILLIS_PER_SECOND;
}

std::int64_t userOffsetAt(std::int64_t moment)
{
    return offsetOf(userZone(), moment);
}

std::unique_ptr<icu::TimeZone> zoneBehind(NSObject* timeZone)
{
    if (timeZone == nullptr || timeZone->isKindOfClass(classNamed<"__NSTimeZone">()))
        return std::unique_ptr<icu::TimeZone>(userZone().clone());
    return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(toICU(send<"name", NSString*>(timeZone))));
}

} // namespace simulator
