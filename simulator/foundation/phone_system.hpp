#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The systems of which the class tables are known, the oldest first: a later one compares greater.
enum class System { v7_0, v7_0_4, v7_1, v8_1, v8_4 };

/// The system that this phone runs: 8.1 unless another was chosen.
System phoneSystem();

/// To be called before SpringBoard is launched, since its classes are those of the system.
void choosePhoneSystem(System system);

/// Its version, as "8.1".
std::string_view versionOf(System system);
/// The version of its Core Foundation, by which the loader's filters tell systems apart: 1141.14 of 8.1.
double coreFoundationVersionOf(System system);
/// None for a version of which nothing is known.
std::optional<System> systemOfVersion(std::string_view version);
/// All versions, for the user to choose from: "7.0|7.0.4".
std::string systemVersions();

} // namespace simulator
