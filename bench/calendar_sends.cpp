#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <filesystem>
#include <vector>

#include "bench/month_replay.hpp"
#include "bench/send_recorder.hpp"
#include "platform/UIKit/UIView.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/foundation/clock.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/runtime/injection.hpp"
#include "simulator/springboard/SpringBoard.hpp"

/// What the drawing of a month costs beside the sends that it is made of: drawHeader and drawDays, beside a replay of their
/// sends by hand. `calendar_sends PHONE-TREE`; with the recorder preloaded it checks that the replay is faithful and counts,
/// else it draws and measures.

namespace {

/// The replay's own library.
class Replay {
public:
    explicit Replay(UIView* calendar)
    {
        const auto file = std::filesystem::canonical("/proc/self/exe").parent_path() / replayFile;
        handle_ = dlopen(file.c_str(), RTLD_NOW);
        if (handle_ == nullptr)
            throw std::runtime_error(dlerror());
        const Ivar title = class_getInstanceVariable(object_getClass(calendar), "lblMonth");
        find<decltype(prepareMonthReplay)>("prepareMonthReplay")(
            calendar, reinterpret_cast<id*>(reinterpret_cast<char*>(calendar) + ivar_getOffset(title)));
        play = find<decltype(replayMonth)>("replayMonth");
    }

    static constexpr const char* replayFile = "month_replay.so";
    decltype(replayMonth)* play;

private:
    template <class Function>
    Function* find(const char* name)
    {
        return reinterpret_cast<Function*>(dlsym(handle_, name));
    }

    void* handle_;
};

/// Seconds of this process's processor time.
double processorTime()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

NSInteger nothing(id, SEL)
{
    return 0;
}

/// From now on the calendar's own methods, but for those of a view, do nothing.
void emptyMethods()
{
    for (const char* name : {"getTotalDaysInCurrentMonth", "getOffsetDays", "goOneMonthBack", "goOneMonthForward",
                             "plotCellAtX:Y:Day:isGreyDay:"})
        method_setImplementation(class_getInstanceMethod(objc_getClass("APLCalendar"), sel_registerName(name)),
                                 reinterpret_cast<IMP>(&nothing));
}

/// The library's file, opened in the tree for its code's address range is not needed: an image is known by its path's end.
constexpr const char* libraryImage = "/Solvane.dylib";

void drawMonth(UIView* calendar)
{
    send<"drawHeader">(calendar);
    send<"drawDays">(calendar);
}

template <class Draw>
double timeOf(UIView* calendar, Draw draw)
{
    const AutoreleasePool pool;
    const double start = processorTime();
    draw();
    const double time = processorTime() - start;
    send<"clearViews">(calendar);
    simulator::takeSystemLog();
    return time;
}

template <class Draw>
std::vector<double> timesOf(UIView* calendar, int rounds, Draw draw)
{
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i)
        times.push_back(timeOf(calendar, draw));
    std::ranges::sort(times);
    return times;
}

template <class Draw>
std::vector<RecordedSend> sendsOf(UIView* calendar, const char* image, Draw draw)
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

int compare(const std::vector<RecordedSend>& drawn, const std::vector<RecordedSend>& replayed)
{
    const auto [left, right] = std::ranges::mismatch(drawn, replayed);
    if (left == drawn.end() && right == replayed.end()) {
        std::printf("sends:  %zu, and the replay makes the same in the same order\n", drawn.size());
        return 0;
    }
    std::printf("the replay differs at send %td: %s %s, not %s %s (%zu and %zu sends)\n", left - drawn.begin(),
                right == replayed.end() ? "none" : right->receiver.c_str(),
                right == replayed.end() ? "" : right->selector.c_str(), left == drawn.end() ? "none" : left->receiver.c_str(),
                left == drawn.end() ? "" : left->selector.c_str(), drawn.size(), replayed.size());
    return 1;
}

} // namespace

// The two measured functions, by names that a profile shows.
extern "C" {
[[gnu::noinline]] void drawnByTheLibrary(UIView* calendar)
{
    drawMonth(calendar);
}
[[gnu::noinline]] void sentByHand(const Replay* replay)
{
    replay->play();
}
}

int main(int count, char** words)
{
    if (count != 3) {
        std::fprintf(stderr, "usage: calendar_sends PHONE-TREE ROUNDS\n");
        return 2;
    }
    setenv("LANG", "de_DE.UTF-8", 1);
    setenv("TZ", "UTC", 1);
    unsetenv("LC_ALL");
    simulator::setPhoneRoot(words[1]);
    simulator::openSystemLog();
    simulator::launchSpringBoard({});
    simulator::injectLibraries({});
    simulator::freezeClockAt(simulator::momentOfLocalTime("2014-03-15T12:00:00").value());

    const AutoreleasePool pool;
    auto* const calendar = static_cast<UIView*>(send<"alloc", UIView*>(objc_getClass("APLCalendar"))->init());
    send<"clearViews">(calendar);
    const Replay replay(calendar);
    const auto byLibrary = [&] { drawnByTheLibrary(calendar); };
    const auto byHand = [&] { sentByHand(&replay); };

    if (dlsym(RTLD_DEFAULT, "beginRecordingSends") != nullptr) {
        const auto drawn = sendsOf(calendar, libraryImage, byLibrary);
        emptyMethods();
        return compare(drawn, sendsOf(calendar, Replay::replayFile, byHand));
    }

    const int rounds = std::atoi(words[2]);
    const auto drawn = timesOf(calendar, rounds, byLibrary);
    emptyMethods();
    const auto sent = timesOf(calendar, rounds, byHand);
    constexpr double microseconds = 1e6;
    const double median = drawn[drawn.size() / 2];
    const double medianByHand = sent[sent.size() / 2];
    std::printf("processor time of a drawing: %.0f us by the library, %.0f us for the sends by hand (medians of %d), ratio %.2f\n",
                median * microseconds, medianByHand * microseconds, rounds, median / medianByHand);
    return 0;
}
