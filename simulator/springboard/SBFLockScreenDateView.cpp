#include "platform/Foundation/NSDateFormatter.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/springboard_classes.hpp"
#include "simulator/springboard/views.hpp"

/// The stock lock screen's clock, with the date below.

namespace simulator {

namespace {

struct DateViewState {
    Owned<UILabel> time;
    Owned<UILabel> date;
};

Owned<UILabel> line(UIView* view, CGFloat y, CGFloat height, UIFont* font)
{
    Owned<UILabel> label = whiteLabel(CGRect::make(0, y, view->bounds().size.width, height), font);
    label->setTextAlignment(NSTextAlignmentCenter);
    view->addSubview(label);
    return label;
}

UIView* initWithFrame(UIView* self, SEL, CGRect frame)
{
    superOf<DateViewState, "initWithFrame:", UIView*>(self, frame);
    auto& view = ivarsOf<DateViewState>(self);
    view.time = line(self, 0, 84, UIFont::fontWithName_size(constantString<"HelveticaNeue-UltraLight">(), 76));
    view.date = line(self, 84, 24, UIFont::fontWithName_size(constantString<"HelveticaNeue-Light">(), 17));
    self->setUserInteractionEnabled(false);
    return self;
}

NSString* formatted(NSDate* date, NSString* format)
{
    const auto formatter = adopt(NSDateFormatter::alloc()->init());
    formatter->setDateFormat(format);
    return formatter->stringFromDate(date);
}

void layoutSubviews(UIView* self, SEL)
{
    const auto& view = ivarsOf<DateViewState>(self);
    NSDate* const now = NSDate::date();
    // Without the half of the day, which a rewritten pattern would have.
    const bool hasTwelveHours = surroundings().customs.hours == Hours::twelve;
    view.time->setText(formatted(now, hasTwelveHours ? constantString<"h:mm">() : constantString<"H:mm">()));
    view.date->setText(formatted(now, constantString<"EEEE, d MMMM">()));
}

} // namespace

void registerSBFLockScreenDateView()
{
    SimulatedClass<DateViewState>("SBFLockScreenDateView", "UIView")
        .method<"initWithFrame:">(initWithFrame)
        .method<"layoutSubviews">(layoutSubviews)
        .registerClass();
}

} // namespace simulator
