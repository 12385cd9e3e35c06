#pragma once

#include "platform/Foundation/NSDate.hpp"

class NSLocale;
class NSString;

enum NSDateFormatterBehavior : NSUInteger {
    NSDateFormatterBehavior10_4 = 1040,
};

/// Turns dates into texts and back, by a pattern of Unicode Technical Standard #35, in the user's locale, calendar and
/// time zone unless told otherwise.
class NSDateFormatter : public NSObject {
public:
    static NSDateFormatter* alloc() { return send<"alloc", NSDateFormatter*>(classNamed<"NSDateFormatter">()); }
    NSDateFormatter* init() { return send<"init", NSDateFormatter*>(this); }

    void setDateFormat(NSString* pattern) { send<"setDateFormat:">(this, pattern); }
    void setFormatterBehavior(NSDateFormatterBehavior behavior) { send<"setFormatterBehavior:">(this, behavior); }
    void setLocale(NSLocale* locale) { send<"setLocale:">(this, locale); }
    /// Nil for a text that the pattern does not read.
    NSDate* dateFromString(NSString* text) const { return send<"dateFromString:", NSDate*>(this, text); }
    NSString* stringFromDate(NSDate* date) const { return send<"stringFromDate:", NSString*>(this, date); }
};
