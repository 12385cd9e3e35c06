#pragma once

#include <optional>
#include <string>

namespace simulator {

/// Solvane's preferences file on the phone.
inline constexpr const char* preferencesFile = "/User/Library/Preferences/org.solvane.Solvane.plist";

/// Writes the key "Name" into Solvane's preferences file on the phone, or deletes it; other keys stay. The file is
/// replaced whole, so that no reader sees half of it. Throws std::runtime_error when it cannot be written.
void writePreferredName(const std::optional<std::string>& name);

} // namespace simulator
