#include "calendar/APLCalendarDelegate.hpp"

#include "platform/runtime/Encoding.hpp"

void registerAPLCalendarDelegate()
{
    objc_protocol* const protocol = objc_allocateProtocol("APLCalendarDelegate");
    protocol_addProtocol(protocol, objc_getProtocol("NSObject"));
    const auto addOptional = [protocol](SEL selector, const char* types) {
        protocol_addMethodDescription(protocol, selector, types, NO, YES);
    };
    addOptional(selector<"didSelectCalendarDay:">(), methodEncoding<void, NSInteger>.text);
    addOptional(selector<"didSelectCalendarDate:">(), methodEncoding<void, NSString*>.text);
    addOptional(selector<"didDeselectCalendarDay:">(), methodEncoding<void, NSInteger>.text);
    objc_registerProtocol(protocol);
}
