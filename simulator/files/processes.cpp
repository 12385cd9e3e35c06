#include "simulator/files/processes.hpp"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <system_error>

namespace simulator {

bool processIsGone(std::string_view number)
{
    pid_t process = 0;
    const char* const end = number.data() + number.size();
    const auto [stop, error] = std::from_chars(number.data(), end, process);
    return error == std::errc() && stop == end && process > 0 && ::kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace simulator
