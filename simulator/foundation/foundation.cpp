#include "simulator/foundation/foundation.hpp"

#include "simulator/runtime/runtime_entry_points.hpp"

namespace simulator {

void prepareFoundation()
{
    addRuntimeEntryPoints();
    addConstantTexts();
    replaceTimeZone();
    replaceClock();
    replacePropertyLists();
    replaceFiles();
    replaceLocale();
    replaceNumberReading();
    replaceCalendars();
    replaceDateFormatters();
}

} // namespace simulator
