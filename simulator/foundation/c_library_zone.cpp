#include "simulator/foundation/c_library_zone.hpp"

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <regex.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "simulator/foundation/wall_clock.hpp"

namespace simulator {

namespace {

bool isZoneFile(const std::filesystem::path& path)
{
    constexpr std::string_view signature = "TZif";
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return false;
    struct stat status{};
    char beginning[signature.size()];
    const bool isZone = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
                        ::read(file, beginning, sizeof beginning) == static_cast<ssize_t>(sizeof beginning) &&
                        std::string_view(beginning, sizeof beginning) == signature;
    ::close(file);
    return isZone;
}

/// "CET-1CEST,M3.5.0,M10.5.0/3" (POSIX.1, 8.3).
bool isRule(const std::string& text)
{
    const std::string name = "([A-Za-z]{3,}|<[A-Za-z0-9+-]{3,}>)";
    const std::string fractions = "(:[0-5]?[0-9](:[0-5]?[0-9])?)?";
    const std::string offset = "[+-]?(2[0-4]|[01]?[0-9])" + fractions;
    const std::string date = "(J[0-9]{1,3}|[0-9]{1,3}|M(1[0-2]|0?[1-9])\\.[1-5]\\.[0-6])";
    const std::string change = "," + date + "(/[+-]?[0-9]{1,3}" + fractions + ")?";
    const std::string rule = "^" + name + offset + "(" + name + "(" + offset + ")?(" + change + change + ")?)?$";
    regex_t compiled;
    if (::regcomp(&compiled, rule.c_str(), REG_EXTENDED | REG_NOSUB) != 0)
        return false;
    const bool matches = ::regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
    ::regfree(&compiled);
    return matches;
}

struct LocalTime {
    std::int64_t secondsAhead;
    bool isSummerTime;
};

LocalTime localTimeAt(std::int64_t moment)
{
    const auto time = static_cast<std::time_t>(moment);
    std::tm fields{};
    if (::localtime_r(&time, &fields) == nullptr)
        return {0, false};
    return {fields.tm_gmtoff, fields.tm_isdst > 0};
}

/// ICU asks a zone for what it adds to universal time, in milliseconds: in winter, and for the summer on top.
class CLibraryZone final : public icu::TimeZone {
public:
    explicit CLibraryZone(const icu::UnicodeString& name) : TimeZone(name) {}

    TimeZone* clone() const override { return new CLibraryZone(*this); }
    UClassID getDynamicClassID() const override
    {
        static char identity = 0;
        return &identity;
    }

    void getOffset(UDate date, UBool isWallClock, std::int32_t& raw, std::int32_t& summer, UErrorCode&) const override
    {
        const auto given = static_cast<std::int64_t>(std::floor(date / U_MILLIS_PER_SECOND));
        const auto offsetAt = [](std::int64_t moment) { return localTimeAt(moment).secondsAhead; };
        const std::int64_t moment = isWallClock != 0 ? momentsOfWallClock(given, offsetAt).last() : given;
        const LocalTime time = localTimeAt(moment);
        const std::int64_t secondsAhead = isWallClock != 0 ? given - moment : time.secondsAhead;
        summer = time.isSummerTime ? U_MILLIS_PER_HOUR : 0;
        raw = static_cast<std::int32_t>(secondsAhead) * U_MILLIS_PER_SECOND - summer;
    }
    std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day, std::uint8_t,
                           std::int32_t millis, UErrorCode& failure) const override
    {
        std::tm fields{};
        fields.tm_year = (era == 0 ? 1 - year : year) - 1900;
        fields.tm_mon = month;
        fields.tm_mday = day;
        const double shown = static_cast<double>(::timegm(&fields)) * U_MILLIS_PER_SECOND + millis;
        std::int32_t raw = 0;
        std::int32_t summer = 0;
        getOffset(shown, UBool{true}, raw, summer, failure);
        return raw + summer;
    }
    std::int32_t getOffset(std::uint8_t era, std::int32_t year, std::int32_t month, std::int32_t day, std::uint8_t weekday,
                           std::int32_t millis, std::int32_t, UErrorCode& failure) const override
    {
        return getOffset(era, year, month, day, weekday, millis, failure);
    }

    std::int32_t getRawOffset() const override
    {
        std::int32_t raw = 0;
        std::int32_t summer = 0;
        UErrorCode failure = U_ZERO_ERROR;
        getOffset(static_cast<double>(std::time(nullptr)) * U_MILLIS_PER_SECOND, UBool{false}, raw, summer, failure);
        return raw;
    }
    /// The rules are the C library's; nobody else sets them.
    void setRawOffset(std::int32_t) override {}
    UBool useDaylightTime() const override { return static_cast<UBool>(::daylight != 0 ? 1 : 0); }
    UBool inDaylightTime(UDate date, UErrorCode& failure) const override
    {
        std::int32_t raw = 0;
        std::int32_t summer = 0;
        getOffset(date, UBool{false}, raw, summer, failure);
        return static_cast<UBool>(summer != 0 ? 1 : 0);
    }
};

} // namespace

bool isKnownToCLibrary(const std::string& timeZone)
{
    const std::string name = timeZone.substr(timeZone.starts_with(':') ? 1 : 0);
    if (name.empty())
        return true;
    const char* const chosenFolder = std::getenv("TZDIR");
    const bool hasChosen = chosenFolder != nullptr && *chosenFolder != '\0';
    const std::filesystem::path folder = hasChosen ? chosenFolder : "/usr/share/zoneinfo";
    // A name that is a path by itself stays one.
    return isZoneFile(folder / name) || isRule(name);
}

std::unique_ptr<icu::TimeZone> cLibraryZone(const std::string& name)
{
    ::tzset();
    return std::make_unique<CLibraryZone>(icu::UnicodeString::fromUTF8(name));
}

} // namespace simulator
