#include <cstdio>
#include <vector>

#include "bench/support/BenchPhone.hpp"
#include "platform/SpringBoard/SBLockScreen.hpp"
#include "simulator/springboard/SpringBoard.hpp"

/// What it costs to add the N-th notification of one application: each new item makes the strip ask every item of the list for
/// its application, so the cost may grow as fast as N and no faster. Prints the time for growing N; ends with status 1 when
/// twice the items take clearly more than twice the time.

using namespace simulator;

namespace {

/// The median time, in microseconds, to add one more to about `count` items.
double timeAt(int& present, int count)
{
    for (; present < count; ++present)
        notify("org.solvane.ferry", "Solvane Ferry", "Pier 2");
    constexpr int samples = 31;
    std::vector<double> times;
    for (int i = 0; i < samples; ++i, ++present)
        times.push_back(processorTimeOf([&] { notify("org.solvane.ferry", "Solvane Ferry", "Pier 2"); }));
    constexpr double microseconds = 1e6;
    return median(times) * microseconds;
}

} // namespace

int main()
{
    const BenchPhone phone;
    int present = 0;
    double before = 0;
    bool growsNoFaster = true;
    for (const int count : {500, 1000, 2000, 4000}) {
        const double time = timeAt(present, count);
        std::printf("| the notification after %d others | %.0f µs | | %s |\n", count, time,
                    before == 0 ? "" : std::to_string(time / before).substr(0, 4).append(" times the one before").c_str());
        constexpr double twiceAndTolerance = 2.4;
        growsNoFaster = growsNoFaster && (before == 0 || time <= before * twiceAndTolerance);
        before = time;
    }
    return growsNoFaster ? 0 : 1;
}
