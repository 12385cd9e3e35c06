#pragma once

#include <string>

namespace simulator {

/// Calls this process's observers of the Darwin notification of that name.
void tellObservers(const std::string& name);

} // namespace simulator
