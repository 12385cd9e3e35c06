#include <memory>
#include <string_view>

#include <unicode/smpdtfmt.h>
#include <unicode/uchar.h>

#include "platform/Foundation/NSDateFormatter.hpp"
#include "platform/Foundation/NSLocale.hpp"
#include "simulator/foundation/calendars.hpp"
#include "simulator/foundation/clock.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/icu_texts.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/foundation/time_zones.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// Date formatters read strictly, as the phone's do from the start: the whole text must follow the pattern, and there must be
/// such a day and, on it, such a time. A number may be shorter than its pattern. GNUstep's make the best of any text.

namespace simulator {

namespace {

bool isOneOf(char16_t letter, std::u16string_view letters)
{
    return letters.find(letter) != std::u16string_view::npos;
}

void removeBlanksFromEnd(icu::UnicodeString& text)
{
    while (!text.isEmpty() && u_isUWhiteSpace(text[text.length() - 1]) != 0)
        text.truncate(text.length() - 1);
}

/// A pattern with the hours that the user chose over the region's (as CFDateFormatter rewrites it): each letter for an hour
/// becomes the other kind's; "a" goes with twelve hours, and comes behind the last of hour, minute and second.
icu::UnicodeString inUsersHours(const icu::UnicodeString& pattern)
{
    if (surroundings().customs.hours == Hours::asTheRegion)
        return pattern;
    const bool wantsTwelve = surroundings().customs.hours == Hours::twelve;
    const std::u16string_view otherHours = wantsTwelve ? u"Hk" : u"hK";
    const char16_t hour = wantsTwelve ? u'h' : u'H';

    icu::UnicodeString rewritten;
    bool isQuoted = false;
    bool hasDayHalf = false;
    std::int32_t endOfTime = 0;
    for (std::int32_t i = 0; i < pattern.length(); ++i) {
        const char16_t letter = pattern[i];
        if (letter == u'\'')
            isQuoted = !isQuoted;
        if (!isQuoted && letter == u'a') {
            hasDayHalf = true;
            if (!wantsTwelve) {
                removeBlanksFromEnd(rewritten);
                continue;
            }
        }
        if (rewritten.isEmpty() && u_isUWhiteSpace(letter) != 0)
            continue;
        const bool isHour = !isQuoted && isOneOf(letter, otherHours);
        rewritten += isHour ? hour : letter;
        if (isHour || (endOfTime > 0 && !isQuoted && isOneOf(letter, u"ms")))
            endOfTime = rewritten.length();
    }
    if (wantsTwelve && !hasDayHalf && endOfTime > 0)
        rewritten.insert(endOfTime, u" a");
    return rewritten;
}

/// A formatter that was given no pattern has its styles'.
icu::UnicodeString patternOf(NSDateFormatter* self, const icu::Locale& locale)
{
    NSString* const pattern = send<"dateFormat", NSString*>(self);
    if (pattern != nullptr)
        return toICU(pattern);
    // "None" is 0 here and -1 there; full is 4 here and 0 there.
    const auto style = [](NSUInteger number) { return static_cast<icu::DateFormat::EStyle>(number == 0 ? -1 : 4 - number); };
    const std::unique_ptr<icu::DateFormat> styled(icu::DateFormat::createDateTimeInstance(
        style(send<"dateStyle", NSUInteger>(self)), style(send<"timeStyle", NSUInteger>(self)), locale));
    icu::UnicodeString styles;
    if (const auto* const simple = dynamic_cast<const icu::SimpleDateFormat*>(styled.get()))
        simple->toPattern(styles);
    return styles;
}

/// A calendar's fields, ready to take those of a text: strict, and in the present era, which a text need not name.
std::unique_ptr<icu::Calendar> emptyFields(const icu::Calendar& calendar)
{
    std::unique_ptr<icu::Calendar> fields(calendar.clone());
    UErrorCode failure = U_ZERO_ERROR;
    fields->setTime(presentMoment() * U_MILLIS_PER_SECOND, failure);
    const std::int32_t era = fields->get(UCAL_ERA, failure);
    fields->clear();
    fields->set(UCAL_ERA, era);
    fields->setLenient(UBool{false});
    return fields;
}

/// Null when ICU cannot make one.
std::unique_ptr<icu::SimpleDateFormat> openFormatter(NSDateFormatter* self)
{
    const icu::Locale locale = localeBehind(send<"locale", NSLocale*>(self));
    auto calendar = openCalendar(locale, zoneBehind(send<"timeZone", NSObject*>(self)));
    UErrorCode failure = U_ZERO_ERROR;
    auto formatter = std::make_unique<icu::SimpleDateFormat>(inUsersHours(patternOf(self, locale)), locale, failure);
    if (U_FAILURE(failure) || calendar == nullptr)
        return nullptr;
    formatter->adoptCalendar(calendar.release());
    formatter->setBooleanAttribute(UDAT_PARSE_PARTIAL_LITERAL_MATCH, UBool{false}, failure);
    return formatter;
}

NSDate* dateFromString(NSDateFormatter* self, SEL, NSString* text)
{
    const auto formatter = openFormatter(self);
    if (text == nullptr || formatter == nullptr)
        return nullptr;
    // The formatter itself stays lenient: a strict one wants two digits for "dd". The calendar refuses what there is not.
    const auto fields = emptyFields(*formatter->getCalendar());
    const icu::UnicodeString characters = toICU(text);
    icu::ParsePosition position(0);
    formatter->parse(characters, *fields, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != characters.length())
        return nullptr;
    UErrorCode failure = U_ZERO_ERROR;
    const UDate date = fields->getTime(failure);
    return U_SUCCESS(failure) ? NSDate::dateWithTimeIntervalSince1970(date / U_MILLIS_PER_SECOND) : nullptr;
}

/// Nil for nil.
NSString* stringFromDate(NSDateFormatter* self, SEL, NSDate* date)
{
    const auto formatter = openFormatter(self);
    if (date == nullptr || formatter == nullptr)
        return nullptr;
    icu::UnicodeString text;
    return fromICU(formatter->format(date->timeIntervalSince1970() * U_MILLIS_PER_SECOND, text));
}

BOOL isLenient(NSDateFormatter*, SEL)
{
    return NO;
}

} // namespace

void replaceDateFormatters()
{
    const Class formatter = classNamed<"NSDateFormatter">();
    replaceMethod<"dateFromString:">(formatter, &dateFromString);
    replaceMethod<"stringFromDate:">(formatter, &stringFromDate);
    replaceMethod<"isLenient">(formatter, &isLenient);
}

} // namespace simulator
