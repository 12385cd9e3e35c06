#include <algorithm>
#include <cstdlib>
#include <string>

#include <unicode/locid.h>

#include "platform/Foundation/NSLocale.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// The user's locale: language and region are the environment's, the calendar is the region's own until the user chooses
/// another.

namespace simulator {

namespace {

/// What the environment calls a locale, as ICU does: "de_DE.UTF-8" is "de_DE", and keywords stay, as in
/// "th_TH@calendar=gregorian".
std::string identifierFor(const std::string& name)
{
    const std::string region = name.substr(0, name.find_first_of(".@"));
    const std::size_t modifier = std::min(name.find('@'), name.size());
    const std::string keywords = name.find('=', modifier) == std::string::npos ? "" : name.substr(modifier);
    return (region == "C" || region == "POSIX" ? "en_US_POSIX" : region) + keywords;
}

/// A variable that is empty counts as one that is not there.
icu::Locale environmentsLocale()
{
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return icu::Locale::createFromName(identifierFor(value).c_str());
    }
    return icu::Locale::createFromName(identifierFor("C").c_str());
}

NSLocale* currentLocale(Class, SEL)
{
    icu::Locale locale = environmentsLocale();
    UErrorCode failure = U_ZERO_ERROR;
    if (const auto& chosen = surroundings().customs.calendar)
        locale.setKeywordValue("calendar", chosen->c_str(), failure);
    NSLocale* const allocated = send<"alloc", NSLocale*>(classNamed<"NSLocale">());
    return adopt(send<"initWithLocaleIdentifier:", NSLocale*>(allocated, toNSString(locale.getName()))).autorelease();
}

/// GNUstep's own takes the hyphen of "islamic-civil" for that between a language and a region.
NSString* canonicalLocaleIdentifierFromString(Class, SEL, NSString* identifier)
{
    return toNSString(icu::Locale::createFromName(toUTF8(identifier).c_str()).getName());
}

} // namespace

void replaceLocale()
{
    replaceMethod<"canonicalLocaleIdentifierFromString:">(metaclassOf(classNamed<"NSLocale">()),
                                                          &canonicalLocaleIdentifierFromString);
    replaceMethod<"currentLocale">(metaclassOf(classNamed<"NSLocale">()), &currentLocale);
}

} // namespace simulator
