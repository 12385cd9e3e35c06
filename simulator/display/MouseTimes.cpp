#include "simulator/display/MouseTimes.hpp"

#include <SDL.h>
#include <SDL_syswm.h>

namespace simulator {

namespace {

/// Empty for what the mouse has not done, and for what says "now" in place of a time.
std::optional<std::uint32_t> timeOf(const SDL_SysWMmsg& message)
{
    if (message.subsystem != SDL_SYSWM_X11)
        return {};
    const XEvent& event = message.msg.x11.event;
    Time time = CurrentTime;
    if (event.type == ButtonPress || event.type == ButtonRelease)
        time = event.xbutton.time;
    else if (event.type == MotionNotify)
        time = event.xmotion.time;
    return time == CurrentTime ? std::nullopt : std::optional(static_cast<std::uint32_t>(time));
}

} // namespace

MouseTimes::MouseTimes()
{
    // SDL shows each event of X just before those that it makes of it.
    SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
    SDL_SetEventFilter(stamp, this);
}

MouseTimes::~MouseTimes()
{
    SDL_SetEventFilter(nullptr, nullptr);
    SDL_EventState(SDL_SYSWMEVENT, SDL_DISABLE);
}

int MouseTimes::stamp(void* self, SDL_Event* event)
{
    constexpr int discard = 0;
    constexpr int keep = 1;
    auto& times = *static_cast<MouseTimes*>(self);
    switch (event->type) {
    case SDL_SYSWMEVENT:
        times.timeOfX_ = timeOf(*event->syswm.msg);
        return discard;
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        // What a finger does on a touch screen is no event of X's mouse. (`which` lies at the same place in all of these.)
        if (times.timeOfX_ && event->button.which != SDL_TOUCH_MOUSEID) {
            if (!times.lead_)
                times.lead_ = event->common.timestamp - *times.timeOfX_;
            event->common.timestamp = *times.timeOfX_ + *times.lead_;
        }
        return keep;
    default:
        return keep;
    }
}

} // namespace simulator
