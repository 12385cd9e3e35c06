#pragma once

#include <stdexcept>

namespace simulator {

/// A line of a script that cannot be carried out, with what is wrong in words for the person who wrote it.
class BadLine : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace simulator
