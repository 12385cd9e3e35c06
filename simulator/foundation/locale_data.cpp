#include "simulator/foundation/locale_data.hpp"

#include <string_view>

#include "simulator/foundation/phone_system.hpp"

namespace simulator {

namespace {

constexpr System first = System::v7_0;
constexpr System last = System::v8_4;

/// A language or region that is empty is any.
struct Keyword {
    std::string_view language;
    std::string_view region;
    const char* name;
    const char* value;
    System since;
    System until;
};

constexpr Keyword keywords[] = {
    {"", "SA", "calendar", "gregorian", first, System::v7_1},
    {"ar", "AE", "numbers", "arab", first, last},
    {"hi", "", "numbers", "deva", System::v8_1, last},
};

struct Week {
    std::string_view region;
    UCalendarDaysOfWeek firstDay;
    System until;
};

constexpr Week weeks[] = {
    {"AE", UCAL_SUNDAY, last}, {"AR", UCAL_SUNDAY, last}, {"AU", UCAL_SUNDAY, last},           {"BD", UCAL_FRIDAY, last},
    {"CN", UCAL_SUNDAY, last}, {"DZ", UCAL_MONDAY, last}, {"IE", UCAL_SUNDAY, last},           {"JO", UCAL_SUNDAY, last},
    {"NZ", UCAL_SUNDAY, last}, {"SY", UCAL_SUNDAY, last}, {"YE", UCAL_SATURDAY, System::v7_1},
};

/// The locale's own, or the one that its language is likely spoken in.
std::string regionOf(icu::Locale locale)
{
    UErrorCode failure = U_ZERO_ERROR;
    locale.addLikelySubtags(failure);
    return locale.getCountry();
}

bool has(const icu::Locale& locale, const char* keyword)
{
    UErrorCode failure = U_ZERO_ERROR;
    return !locale.getKeywordValue<std::string>(keyword, failure).empty();
}

} // namespace

icu::Locale withDataOfTheSystem(icu::Locale locale)
{
    const std::string region = regionOf(locale);
    for (const Keyword& keyword : keywords) {
        const bool isOfThisPlace = (keyword.language.empty() || keyword.language == locale.getLanguage()) &&
                                   (keyword.region.empty() || keyword.region == region);
        const bool isOfThisSystem = keyword.since <= phoneSystem() && phoneSystem() <= keyword.until;
        UErrorCode failure = U_ZERO_ERROR;
        if (isOfThisPlace && isOfThisSystem && !has(locale, keyword.name))
            locale.setKeywordValue(keyword.name, keyword.value, failure);
    }
    return locale;
}

void beginWeekByTheSystem(icu::Calendar& calendar, const icu::Locale& locale)
{
    const std::string region = regionOf(locale);
    for (const Week& week : weeks) {
        if (week.region == region && phoneSystem() <= week.until)
            calendar.setFirstDayOfWeek(week.firstDay);
    }
}

} // namespace simulator
