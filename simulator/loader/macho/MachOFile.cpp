#include "simulator/loader/macho/MachOFile.hpp"

#include <cerrno>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

#include "simulator/files/whole_file.hpp"
#include "simulator/loader/macho/CodeSignature.hpp"
#include "simulator/loader/macho/Processor.hpp"

namespace simulator::macho {

namespace {

[[noreturn]] void failWith(const std::string& what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

Pages readOnly(const std::filesystem::path& path)
{
    const Descriptor file = openRegularFile(path);
    struct stat status{};
    if (!file || ::fstat(file.number(), &status) != 0)
        failWith("it cannot be read");
    if (status.st_size == 0)
        return {};
    return {static_cast<std::size_t>(status.st_size), PROT_READ, MAP_PRIVATE, file.number()};
}

/// The slice of a file for several processors, or the whole of a file for one.
Bytes sliceForThisProcessor(Bytes file)
{
    if (file.bigEndianAt(0) == FAT_MAGIC) {
        const std::uint32_t count = file.bigEndianAt(offsetof(fat_header, nfat_arch));
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::size_t slice = sizeof(fat_header) + i * sizeof(fat_arch);
            if (file.bigEndianAt(slice + offsetof(fat_arch, cputype)) == thisProcessor.cputype)
                return file.part(file.bigEndianAt(slice + offsetof(fat_arch, offset)),
                                 file.bigEndianAt(slice + offsetof(fat_arch, size)));
        }
    } else if (file.at<std::uint32_t>(0) == magicOfThisSize && file.at<mach_header>(0).cputype == thisProcessor.cputype) {
        return file;
    }
    throw std::runtime_error("it is not for this machine's processor");
}

} // namespace

Pages::Pages(std::size_t size, int protection, int flags, int descriptor) : size_(size)
{
    void* const mapped = ::mmap(nullptr, size, protection, flags, descriptor, 0);
    if (mapped == MAP_FAILED)
        failWith("it finds no memory");
    first_ = static_cast<std::byte*>(mapped);
}

Pages::Pages(Pages&& other) noexcept : first_(std::exchange(other.first_, nullptr)), size_(std::exchange(other.size_, 0))
{
}

Pages& Pages::operator=(Pages&& other) noexcept
{
    std::swap(first_, other.first_);
    std::swap(size_, other.size_);
    return *this;
}

Pages::~Pages()
{
    if (first_ != nullptr)
        ::munmap(first_, size_);
}

MachOFile::MachOFile(const std::filesystem::path& path)
    : file_(readOnly(path)), slice_(sliceForThisProcessor({file_.data(), file_.size()}))
{
    const auto header = slice_.at<mach_header>(0);
    if (header.magic != magicOfThisSize || header.filetype != MH_DYLIB)
        throw std::runtime_error("it is not a dynamic library");

    linkedit_data_command signature{};
    std::size_t offset = headerSize;
    for (std::uint32_t i = 0; i < header.ncmds; ++i) {
        const auto command = slice_.at<load_command>(offset);
        if (command.cmdsize < sizeof command || offset + command.cmdsize > headerSize + header.sizeofcmds)
            throw std::runtime_error("its load commands are damaged");
        switch (command.cmd) {
        case segmentOfThisSize:
            readSegment(offset);
            break;
        case LC_LOAD_DYLIB:
        case LC_LOAD_WEAK_DYLIB:
        case LC_REEXPORT_DYLIB:
        case LC_LOAD_UPWARD_DYLIB:
            libraries_.emplace_back(slice_.textAt(offset + slice_.at<dylib_command>(offset).name));
            if (command.cmd == LC_LOAD_WEAK_DYLIB)
                weakLibraries_.push_back(libraries_.back());
            break;
        case LC_DYLD_INFO_ONLY:
            info_ = slice_.at<dyld_info_command>(offset);
            break;
        case LC_CODE_SIGNATURE:
            signature = slice_.at<linkedit_data_command>(offset);
            break;
        default:
            break;
        }
        offset += command.cmdsize;
    }
    if (segments_.empty())
        throw std::runtime_error("it has no segments");
    if (signature.datasize == 0)
        throw std::runtime_error("it has no code signature");
    verifyCodeSignature(slice_, signature.dataoff, signature.datasize);
}

void MachOFile::readSegment(std::size_t offset)
{
    const auto segment = slice_.at<segment_command>(offset);
    slice_.part(segment.fileoff, segment.filesize);
    if (segment.filesize > segment.vmsize)
        throw std::runtime_error("a segment is larger than its memory");
    segments_.push_back(segment);
    for (std::uint32_t i = 0; i < segment.nsects; ++i)
        sections_.push_back(slice_.at<section>(offset + sizeof segment + i * sizeof(section)));
}

} // namespace simulator::macho
