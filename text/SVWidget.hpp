#pragma once

#include "calendar/APLCalendar.hpp"

/// The panel's widget area: a month calendar and a weather card, of which one is meant to be shown at a time. It is the
/// calendar's delegate and takes no interest in what it is told.
class SVWidget : public UIView {
public:
    static SVWidget* alloc() { return send<"alloc", SVWidget*>(classNamed<"SVWidget">()); }
    /// With a hidden calendar and no weather card.
    SVWidget* initWithFrame(CGRect frame) { return send<"initWithFrame:", SVWidget*>(this, frame); }

    /// Make the child, hidden.
    void loadWeather() { send<"loadWeather">(this); }
    void loadCalendar() { send<"loadCalendar">(this); }
    /// Show one child; the other is left as it is. A child that was never made is passed over.
    void showWeather() { send<"showWeather">(this); }
    void showCalendar() { send<"showCalendar">(this); }
    void hideALL() { send<"hideALL">(this); }
};

/// Makes the class, and the calendar that it holds, known to the runtime. To be called once.
void registerSVWidget();
