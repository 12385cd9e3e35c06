#pragma once

#include <string>

#include "simulator/console/inspector.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/springboard/geometry.hpp"

namespace simulator {

/// Where things stand on a screen: "desk", "phone", or what the report in a file tells (docs/console.md has its form). Throws
/// std::invalid_argument, with the file and what is wrong, when there is no such file or it is no report of such a screen.
Geometry geometryNamed(const std::string& nameOrFile, const ScreenSize& screen);

/// The report of where things stand, in the form of such a file, with the geometry's name.
Json reportOf(const Geometry& geometry, CGSize screen);

} // namespace simulator
