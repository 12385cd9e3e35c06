#include "simulator/foundation/system_log.hpp"
#include "simulator/services/calendar_files.hpp"
#include "tests/calendar/Diary.hpp"
#include "tests/fuzz/target.hpp"

/// A calendar's file: the text of a day comes of it, whatever it says.

namespace {

const Diary& diary()
{
    static const auto& only = *new Diary("", {.language = "en_US.UTF-8", .timeZone = "Europe/Berlin"});
    return only;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const auto& calendar = *new auto((diary(), newCalendar()));
    const AutoreleasePool pool;
    diary().add("Calendar.ics", std::string(textIn(bytes, size)));
    // A day on which clocks are set forward, of 23 hours.
    static const auto day = static_cast<std::int64_t>(simulator::momentOfLocalTime("2014-03-30T00:00:00").value());
    constexpr std::int64_t length = 23 * 3600;
    const auto found = simulator::eventsInFile(diary().folder() / "Calendar.ics", day, day + length);
    // The text of a full day takes longer than a thousand others.
    constexpr std::size_t mostInText = 20;
    if (found.events.size() <= mostInText)
        send<"getCalenderEventsForDay:", NSString*>(calendar.get(), localTime("2014-03-30T00:00:00"));
    simulator::takeSystemLog();
    return 0;
}
