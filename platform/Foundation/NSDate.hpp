#pragma once

#include "platform/Foundation/NSObject.hpp"

/// A moment.
class NSDate : public NSObject {
public:
    static NSDate* date() { return send<"date", NSDate*>(classNamed<"NSDate">()); }
    static NSDate* dateWithTimeIntervalSince1970(NSTimeInterval seconds)
    {
        return send<"dateWithTimeIntervalSince1970:", NSDate*>(classNamed<"NSDate">(), seconds);
    }
    NSTimeInterval timeIntervalSince1970() const { return send<"timeIntervalSince1970", NSTimeInterval>(this); }
};
