#include <string>

#include "platform/Foundation/NSLocale.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// The user's calendar is the Gregorian one in every locale, as it is on a phone until its user chooses another. GNUstep
/// says so of its calendar but lets its date formatters follow the locale's customs (the Persian calendar in Iran), so the
/// locale itself is made to say it.

namespace simulator {

namespace {

NSLocale* (*machinesCurrentLocale)(NSObject*, SEL);

NSLocale* currentLocale(NSObject* self, SEL selector)
{
    static NSLocale* const locale = [&] {
        const std::string name = toUTF8(send<"localeIdentifier", NSString*>(machinesCurrentLocale(self, selector)));
        return send<"initWithLocaleIdentifier:", NSLocale*>(send<"alloc", id>(classNamed<"NSLocale">()),
                                                            toNSString(name + "@calendar=gregorian"));
    }();
    return locale;
}

} // namespace

void replaceLocale()
{
    machinesCurrentLocale = replaceMethod<"currentLocale">(metaclassOf(classNamed<"NSLocale">()), &currentLocale);
}

} // namespace simulator
