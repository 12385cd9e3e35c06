#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <vector>

#include "bench/calendar_replay.hpp"
#include "bench/send_recorder.hpp"
#include "bench/support/BenchPhone.hpp"
#include "platform/UIKit/UIView.hpp"
#include "simulator/foundation/system_log.hpp"

/// Draws a month from scratch (drawHeader, drawDays), and after it replays the sends that the library made for it, written out
/// by hand. With the recorder preloaded it checks that both make the same sends; else it prints the ratio of their processor
/// times (medians) and ends with status 1 when it is above 1.3. `bench_calendar_sends [ROUNDS]`.

namespace {

/// The library that replays.
class Replay {
public:
    explicit Replay(UIView* calendar) : handle_(dlopen(REPLAY_LIBRARY, RTLD_NOW))
    {
        if (handle_ == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            std::abort();
        }
        const Ivar title = class_getInstanceVariable(object_getClass(calendar), "lblMonth");
        find<decltype(prepareReplay)>("prepareReplay")(
            calendar, reinterpret_cast<id*>(reinterpret_cast<char*>(calendar) + ivar_getOffset(title)));
        play_ = find<decltype(replayMonth)>("replayMonth");
    }

    void play() const { play_(); }

private:
    template <class Function>
    Function* find(const char* name)
    {
        return reinterpret_cast<Function*>(dlsym(handle_, name));
    }

    void* handle_;
    decltype(replayMonth)* play_;
};

NSInteger nothing(id, SEL)
{
    return 0;
}

/// From now on those methods of the calendar that its drawing sends to itself do nothing: the replay sends what they would.
void emptyMethods()
{
    for (const char* name :
         {"getTotalDaysInCurrentMonth", "getOffsetDays", "goOneMonthBack", "goOneMonthForward", "plotCellAtX:Y:Day:isGreyDay:"})
        method_setImplementation(class_getInstanceMethod(objc_getClass("APLCalendar"), sel_registerName(name)),
                                 reinterpret_cast<IMP>(&nothing));
}

double medianTimeOf(UIView* calendar, int rounds, const auto& draw)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        times.push_back(processorTimeOf(draw));
        const AutoreleasePool pool;
        send<"clearViews">(calendar);
        simulator::takeSystemLog();
    }
    return median(times);
}

/// What code in the image sends meanwhile.
std::vector<RecordedSend> sendsOf(UIView* calendar, const char* image, const auto& draw)
{
    const auto begin = reinterpret_cast<BeginRecordingSends*>(dlsym(RTLD_DEFAULT, "beginRecordingSends"));
    const auto end = reinterpret_cast<EndRecordingSends*>(dlsym(RTLD_DEFAULT, "endRecordingSends"));
    const AutoreleasePool pool;
    begin(image);
    draw();
    std::vector<RecordedSend> sends = *end();
    send<"clearViews">(calendar);
    return sends;
}

const char* describe(const std::vector<RecordedSend>& sends, std::size_t index)
{
    return index < sends.size() ? sends[index].selector.c_str() : "nothing";
}

bool areEqual(const std::vector<RecordedSend>& drawn, const std::vector<RecordedSend>& replayed)
{
    std::size_t index = 0;
    while (index < drawn.size() && index < replayed.size() && drawn[index] == replayed[index])
        ++index;
    if (index == drawn.size() && index == replayed.size()) {
        std::printf("| drawing a month from scratch | %zu sends | replayed in the same order to the same classes | |\n", index);
        return true;
    }
    std::fprintf(stderr, "send %zu is %s in the drawing and %s in the replay\n", index, describe(drawn, index),
                 describe(replayed, index));
    return false;
}

} // namespace

// What is measured, by names that a profile shows.
extern "C" {
[[gnu::noinline]] void drawnByTheLibrary(UIView* calendar)
{
    send<"drawHeader">(calendar);
    send<"drawDays">(calendar);
}
[[gnu::noinline]] void sentByHand(const Replay* replay)
{
    replay->play();
}
}

int main(int count, char** words)
{
    setenv("LANG", "de_DE.UTF-8", 1);
    unsetenv("LC_ALL");
    const BenchPhone phone;
    auto* const calendar = static_cast<UIView*>(send<"alloc", UIView*>(objc_getClass("APLCalendar"))->init());
    send<"clearViews">(calendar);
    const Replay replay(calendar);
    const auto draw = [&] { drawnByTheLibrary(calendar); };
    const auto sendAlone = [&] { sentByHand(&replay); };

    if (dlsym(RTLD_DEFAULT, "beginRecordingSends") != nullptr) {
        const auto drawn = sendsOf(calendar, "/Solvane.dylib", draw);
        emptyMethods();
        return areEqual(drawn, sendsOf(calendar, REPLAY_LIBRARY, sendAlone)) ? 0 : 1;
    }

    const int rounds = count > 1 ? std::atoi(words[1]) : 300;
    const double drawn = medianTimeOf(calendar, rounds, draw);
    emptyMethods();
    const double sent = medianTimeOf(calendar, rounds, sendAlone);
    constexpr double microseconds = 1e6;
    constexpr double limit = 1.3;
    std::printf("| drawing a month from scratch | %.0f us | its sends alone %.0f us | ratio %.3f (at most %.1f) |\n",
                drawn * microseconds, sent * microseconds, drawn / sent, limit);
    return drawn / sent > limit ? 1 : 0;
}
