#pragma once

#include <optional>
#include <string>
#include <vector>

/// What a phone's user can choose about dates and numbers, and what is not known of how the phone reads them.
namespace simulator {

enum class Hours { asTheRegion, twelve, twentyFour };

struct Customs {
    /// One of calendarSystems(); none for the region's own.
    std::optional<std::string> calendar;
    /// A choice other than the region's rewrites the hours of every date pattern.
    Hours hours = Hours::asTheRegion;
    /// Whether `intValue` reads the decimal digits of any script, or ASCII's alone. Which of the two the phone does is not
    /// known.
    bool readsDigitsOfAnyScript = true;

    /// Shows a visitor each field with its name.
    static void visit(auto& customs, const auto& visitor)
    {
        auto& [calendar, hours, readsDigitsOfAnyScript] = customs;
        visitor("calendar", calendar);
        visitor("hours", hours);
        visitor("anyDigits", readsDigitsOfAnyScript);
    }
};

/// The calendar systems that there are, by their names: "gregorian", "buddhist".
std::vector<std::string> calendarSystems();

} // namespace simulator
