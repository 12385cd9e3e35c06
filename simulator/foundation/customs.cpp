#include "simulator/foundation/customs.hpp"

#include <memory>

#include <unicode/calendar.h>

namespace simulator {

std::vector<std::string> calendarSystems()
{
    UErrorCode failure = U_ZERO_ERROR;
    const UBool commonOnly = 0;
    const std::unique_ptr<icu::StringEnumeration> names(
        icu::Calendar::getKeywordValuesForLocale("calendar", icu::Locale::getRoot(), commonOnly, failure));
    std::vector<std::string> systems;
    while (const char* const name = names->next(nullptr, failure))
        systems.emplace_back(name);
    return systems;
}

} // namespace simulator
