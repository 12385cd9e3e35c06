#include "simulator/console/report.hpp"

#include <iostream>

#include "simulator/console/BadLine.hpp"

namespace simulator {

std::string oneLine(const Json& json)
{
    constexpr int noIndent = -1;
    return json.dump(noIndent, ' ', false, Json::error_handler_t::replace);
}

void report(const Json& json)
{
    std::cout << oneLine(json) << '\n' << std::flush;
    if (!std::cout)
        throw BadLine("standard output cannot be written");
}

} // namespace simulator
