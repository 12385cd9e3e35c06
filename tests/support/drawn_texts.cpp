#include "tests/support/drawn_texts.hpp"

#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/Phone.hpp"

namespace {

void (*drawInRect)(NSString*, SEL, CGRect, NSDictionary*);

} // namespace

void noteDrawnTexts()
{
    drawInRect = simulator::replaceMethod<"drawInRect:withAttributes:">(
        objc_getClass("NSString"), +[](NSString* self, SEL message, CGRect rect, NSDictionary* attributes) {
            drawnTexts().push_back(textOf(self));
            drawInRect(self, message, rect, attributes);
        });
}

std::vector<std::string>& drawnTexts()
{
    static auto& noted = *new std::vector<std::string>;
    return noted;
}
