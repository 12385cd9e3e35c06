#pragma once

#include <filesystem>
#include <vector>

#include "simulator/loader/Image.hpp"

namespace simulator {

/// Throws std::runtime_error with the reason when the file is cut off: the machine's loader maps what it is told is there, and
/// whoever touches it ends by a signal.
void checkElf(const std::filesystem::path& file);

/// A library in the machine's own form, loaded by the machine's loader.
class ElfImage : public Image {
public:
    /// Throws std::runtime_error with the reason when the file cannot be loaded.
    explicit ElfImage(const std::filesystem::path& file);

    const std::vector<ExportedSymbol>& exports() const override { return exports_; }

private:
    std::vector<ExportedSymbol> exports_;
};

} // namespace simulator
