#include "tests/random_days/LocalTime.hpp"

#include <ctime>

bool isShown(const LocalTime& time)
{
    std::tm fields{};
    fields.tm_year = time.year - 1900;
    fields.tm_mon = time.month - 1;
    fields.tm_mday = time.day;
    fields.tm_hour = time.hour;
    fields.tm_min = time.minute;
    fields.tm_sec = time.second;
    fields.tm_isdst = -1;
    std::mktime(&fields);
    return fields.tm_hour == time.hour && fields.tm_min == time.minute && fields.tm_mday == time.day;
}
