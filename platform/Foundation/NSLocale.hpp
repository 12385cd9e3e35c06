#pragma once

#include "platform/Foundation/NSObject.hpp"

/// The customs of a language and a region.
class NSLocale : public NSObject {
public:
    static NSLocale* currentLocale() { return send<"currentLocale", NSLocale*>(classNamed<"NSLocale">()); }
};
