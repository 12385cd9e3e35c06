#include "simulator/foundation/system_log.hpp"

#include <iterator>
#include <utility>

#include "simulator/foundation/strings.hpp"

namespace simulator {

namespace {

std::vector<std::string>& lines()
{
    static auto& collected = *new std::vector<std::string>;
    return collected;
}

/// GNUstep hands over "2014-03-05 08:30:00.000 springboard[12:34] text\n".
void collect(NSString* line)
{
    std::string text = toUTF8(line);
    if (!text.empty() && text.back() == '\n')
        text.pop_back();
    const auto end = text.find("] ");
    lines().push_back(end == std::string::npos ? text : text.substr(end + 2));
}

} // namespace

void openSystemLog()
{
    _NSLog_printf_handler = collect;
}

std::vector<std::string> takeSystemLog()
{
    return std::exchange(lines(), {});
}

void restoreSystemLog(std::vector<std::string> earlier)
{
    lines().insert(lines().begin(), std::make_move_iterator(earlier.begin()), std::make_move_iterator(earlier.end()));
}

} // namespace simulator
