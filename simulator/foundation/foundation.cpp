#include "simulator/foundation/foundation.hpp"

#include "simulator/runtime/runtime_entry_points.hpp"

namespace simulator {

void prepareFoundation()
{
    addRuntimeEntryPoints();
    replaceClock();
    replacePropertyListReading();
    replaceLocale();
    replaceNumberReading();
    replaceCalendarRanges();
}

} // namespace simulator
