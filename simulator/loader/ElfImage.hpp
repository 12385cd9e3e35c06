#pragma once

#include <filesystem>
#include <vector>

#include "simulator/loader/Image.hpp"

namespace simulator {

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
