#include "simulator/console/report.hpp"

#include <iostream>

#include "simulator/console/BadLine.hpp"

namespace simulator {

void report(const Json& json)
{
    std::cout << oneLine(json) << '\n' << std::flush;
    if (!std::cout)
        throw BadLine("standard output cannot be written");
}

} // namespace simulator
