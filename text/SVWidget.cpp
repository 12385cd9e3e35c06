#include "text/SVWidget.hpp"

namespace {

struct SVWidgetIvars {
    Strong<APLCalendar> cal;
    Strong<UIView> weather;
};

SVWidgetIvars& ivarsOf(SVWidget* widget)
{
    return ivarsOf<SVWidgetIvars>(widget);
}

SVWidget* initWithFrame(SVWidget* self, SEL, CGRect frame)
{
    self = superOf<SVWidgetIvars, "initWithFrame:", SVWidget*>(self, frame);
    self->loadCalendar();
    return self;
}

void loadWeather(SVWidget* self, SEL)
{
    Strong<UIView>& weather = ivarsOf(self).weather;
    weather = adopt(UIView::alloc()->initWithFrame(self->bounds()));
    weather->setBackgroundColor(UIColor::greenColor());
    weather->setHidden(true);
    self->addSubview(weather);

    const Owned<UILabel> label = adopt(UILabel::alloc()->initWithFrame(CGRect::make(0.0, 65.0, 50.0, 50.0)));
    label->setFont(UIFont::fontWithName_size(constantString<".HelveticaNeueInterface-UltraLightP2">(), 17.5));
    label->setBackgroundColor(UIColor::clearColor());
    label->setTextColor(UIColor::whiteColor());
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setText(constantString<"Now">());
    weather->addSubview(label);
}

void loadCalendar(SVWidget* self, SEL)
{
    Strong<APLCalendar>& cal = ivarsOf(self).cal;
    cal = adopt(APLCalendar::alloc()->init());
    cal->setUserInteractionEnabled(false);
    cal->setDelegate(self);
    cal->setHidden(true);
    self->addSubview(cal);
}

void showWeather(SVWidget* self, SEL)
{
    const Strong<UIView>& weather = ivarsOf(self).weather;
    weather->setFrame(self->bounds());
    weather->setHidden(false);
}

/// The middle is that of the frame, not of the bounds, so a widget away from its superview's corner has its calendar pushed
/// by as much. This is meant.
void showCalendar(SVWidget* self, SEL)
{
    constexpr CGFloat lift = 25.0;
    const Strong<APLCalendar>& cal = ivarsOf(self).cal;
    cal->setCenter({CGRectGetMidX(self->frame()), CGRectGetMidY(self->frame()) - lift});
    cal->setHidden(false);
}

void hideALL(SVWidget* self, SEL)
{
    ivarsOf(self).cal->setHidden(true);
    ivarsOf(self).weather->setHidden(true);
}

} // namespace

void registerSVWidget()
{
    registerAPLCalendar();
    ClassBuilder<SVWidgetIvars>("SVWidget", "UIView")
        .ivar<&SVWidgetIvars::cal>("cal")
        .ivar<&SVWidgetIvars::weather>("weather")
        .adopts("APLCalendarDelegate")
        .method<"initWithFrame:">(initWithFrame)
        .method<"loadWeather">(loadWeather)
        .method<"loadCalendar">(loadCalendar)
        .method<"showWeather">(showWeather)
        .method<"showCalendar">(showCalendar)
        .method<"hideALL">(hideALL)
        .registerClass();
}
