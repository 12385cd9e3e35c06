#pragma once

#include <filesystem>
#include <vector>

#include "simulator/loader/Image.hpp"
#include "simulator/loader/macho/MachOFile.hpp"
#include "simulator/loader/macho/UnwindTables.hpp"

namespace simulator {

/// Whether the file is a Mach-O file, for whichever processor.
bool isMachO(const std::filesystem::path& file);

/// A Mach-O library in this process.
///
/// The constructor does what the phone's loader does: it maps the segments of the slice for this processor, rebases the
/// pointers, binds every symbol at once and protects the pages. A symbol is looked for among the phone's entry points
/// (phone_entry_points.hpp), then in this process under its name without the leading underscore; the libraries that it is
/// expected in are not loaded, since this process stands for all of them, but for those that it can do without. What the phone's
/// object runtime would do then is done for selectors; a library registers its classes itself.
class MachOImage : public Image {
public:
    /// Throws std::runtime_error with the reason when the file cannot be loaded.
    explicit MachOImage(const std::filesystem::path& file);

    /// Loads the libraries that it can do without, each from the phone's file tree when it is there and whole. To be called
    /// once, before the initialisers are run.
    void openWeakLibraries() const;

    /// To be called once.
    void runInitialisers() noexcept;

    const std::vector<ExportedSymbol>& exports() const override { return exports_; }
    bool contains(const void* address) const;

private:
    explicit MachOImage(const macho::MachOFile& file);

    macho::Pages memory_;
    macho::UnwindTables unwindTables_;
    std::vector<std::string> weakLibraries_;
    std::vector<void (*)()> initialisers_;
    std::vector<ExportedSymbol> exports_;
};

} // namespace simulator
