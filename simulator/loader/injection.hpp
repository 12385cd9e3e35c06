#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "simulator/loader/Image.hpp"

/// The loader that injects libraries into SpringBoard.
namespace simulator {

/// Loads every library in "/Library/MobileSubstrate/DynamicLibraries" that is for SpringBoard by its filter, in alphabetical
/// order; one that cannot be loaded or is missing beside its filter is reported on standard error and passed over. Then those
/// of `more`, in their order; throws std::runtime_error for one that cannot be loaded.
void injectLibraries(const std::vector<std::filesystem::path>& more);

/// A symbol that an injected library exports, the first library's first.
std::optional<ExportedSymbol> exportedSymbol(const std::string& name);

/// Every variable that the injected libraries export and that can hold an object.
std::vector<ExportedSymbol> exportedVariables();

} // namespace simulator
