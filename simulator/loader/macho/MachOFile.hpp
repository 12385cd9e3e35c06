#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "simulator/loader/macho/Bytes.hpp"
#include "simulator/loader/macho/format.hpp"

namespace simulator::macho {

/// Pages of memory, given back in the end.
class Pages {
public:
    Pages() = default;
    /// As mmap(2) does it; throws std::system_error.
    Pages(std::size_t size, int protection, int flags, int descriptor);
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    Pages(Pages&& other) noexcept;
    Pages& operator=(Pages&& other) noexcept;
    ~Pages();

    std::byte* data() const { return first_; }
    std::size_t size() const { return size_; }

private:
    std::byte* first_ = nullptr;
    std::size_t size_ = 0;
};

/// A Mach-O library on disk: its slice for this processor, read and checked, its code signature included.
class MachOFile {
public:
    /// Throws std::runtime_error with the reason when the file is not such a library.
    explicit MachOFile(const std::filesystem::path& path);

    Bytes slice() const { return slice_; }
    const std::vector<segment_command>& segments() const { return segments_; }
    const std::vector<section>& sections() const { return sections_; }
    /// The names of the libraries whose symbols it uses, in the order in which its instructions count them, from 1.
    const std::vector<std::string>& libraries() const { return libraries_; }
    /// The names of those that it can do without.
    const std::vector<std::string>& weakLibraries() const { return weakLibraries_; }

    Bytes rebaseInstructions() const { return slice_.part(info_.rebase_off, info_.rebase_size); }
    Bytes bindInstructions() const { return slice_.part(info_.bind_off, info_.bind_size); }
    Bytes lazyBindInstructions() const { return slice_.part(info_.lazy_bind_off, info_.lazy_bind_size); }
    Bytes exportsTrie() const { return slice_.part(info_.export_off, info_.export_size); }

private:
    void readSegment(std::size_t offset);

    Pages file_;
    Bytes slice_;
    std::vector<segment_command> segments_;
    std::vector<section> sections_;
    std::vector<std::string> libraries_;
    std::vector<std::string> weakLibraries_;
    dyld_info_command info_{};
};

} // namespace simulator::macho
