#include "simulator/console/raised_exception.hpp"

#include "platform/Foundation/NSString.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

namespace {

class NSException : public NSObject {
public:
    NSString* name() { return send<"name", NSString*>(this); }
    NSString* reason() { return send<"reason", NSString*>(this); }
};

struct Description {
    std::string name;
    std::string reason;
};

void (*foundationsRaise)(NSException*, SEL);

Description& lastRaised()
{
    static auto& description = *new Description;
    return description;
}

void raise(NSException* self, SEL selector)
{
    lastRaised() = {toUTF8(self->name()), toUTF8(self->reason())};
    foundationsRaise(self, selector);
}

} // namespace

void rememberRaisedExceptions()
{
    foundationsRaise = replaceMethod<"raise">(classNamed<"NSException">(), &raise);
}

void forgetRaisedException()
{
    lastRaised() = {};
}

std::string describeRaisedException()
{
    if (lastRaised().name.empty())
        return "raised an exception";
    return "raised " + lastRaised().name + ": " + lastRaised().reason;
}

} // namespace simulator
