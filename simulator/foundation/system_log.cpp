#include "simulator/foundation/system_log.hpp"

#include <utility>

#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/surroundings.hpp"

namespace simulator {

namespace {

/// GNUstep hands over "2014-03-05 08:30:00.000 springboard[12:34] text\n".
void collect(NSString* line)
{
    std::string text = toUTF8(line);
    if (!text.empty() && text.back() == '\n')
        text.pop_back();
    const auto end = text.find("] ");
    surroundings().log.push_back(end == std::string::npos ? text : text.substr(end + 2));
}

} // namespace

void openSystemLog()
{
    _NSLog_printf_handler = collect;
}

std::vector<std::string> takeSystemLog()
{
    return std::exchange(surroundings().log, {});
}

} // namespace simulator
