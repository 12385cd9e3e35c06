#include "simulator/loader/macho/MachOFile.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "simulator/loader/macho/CodeSignature.hpp"

namespace simulator::macho {

namespace {

[[noreturn]] void failWith(const std::string& what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

Pages readOnly(const std::filesystem::path& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        failWith(path.native());
    struct stat status{};
    Pages pages;
    if (::fstat(descriptor, &status) == 0 && status.st_size > 0)
        pages = Pages(static_cast<std::size_t>(status.st_size), PROT_READ, MAP_PRIVATE, descriptor);
    ::close(descriptor);
    return pages;
}

/// The slice of a file for several processors, or the whole of a file for one.
Bytes sliceForThisProcessor(Bytes file)
{
    if (file.bigEndianAt(0) == fatMagic) {
        const std::uint32_t count = file.bigEndianAt(offsetof(FatHeader, sliceCount));
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::size_t slice = sizeof(FatHeader) + i * sizeof(FatSlice);
            if (file.bigEndianAt(slice + offsetof(FatSlice, cpuType)) == thisCpu)
                return file.part(file.bigEndianAt(slice + offsetof(FatSlice, offset)),
                                 file.bigEndianAt(slice + offsetof(FatSlice, size)));
        }
    } else if (file.at<std::uint32_t>(0) == magic && file.at<Header>(0).cpuType == thisCpu) {
        return file;
    }
    throw std::runtime_error("it is not for this machine's processor");
}

} // namespace

Pages::Pages(std::size_t size, int protection, int flags, int descriptor) : size_(size)
{
    void* const mapped = ::mmap(nullptr, size, protection, flags, descriptor, 0);
    if (mapped == MAP_FAILED)
        failWith("no memory");
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
    const auto header = slice_.at<Header>(0);
    if (header.magic != magic || header.fileType != dynamicLibrary)
        throw std::runtime_error("it is not a dynamic library");

    FileRange signature{};
    std::size_t offset = headerSize;
    for (std::uint32_t i = 0; i < header.commandCount; ++i) {
        const auto command = slice_.at<LoadCommand>(offset);
        if (command.size < sizeof command || offset + command.size > headerSize + header.commandsSize)
            throw std::runtime_error("its load commands are damaged");
        switch (command.kind) {
        case segmentKind:
            readSegment(offset);
            break;
        case LC_LOAD_DYLIB:
        case LC_LOAD_WEAK_DYLIB:
        case LC_REEXPORT_DYLIB:
        case LC_LOAD_UPWARD_DYLIB:
            libraries_.emplace_back(slice_.textAt(offset + slice_.at<LibraryCommand>(offset).nameOffset));
            break;
        case LC_DYLD_INFO_ONLY:
            info_ = slice_.at<DyldInfoCommand>(offset);
            break;
        case LC_CODE_SIGNATURE:
            signature = slice_.at<LinkEditDataCommand>(offset).data;
            break;
        default:
            break;
        }
        offset += command.size;
    }
    if (segments_.empty())
        throw std::runtime_error("it has no segments");
    if (signature.size == 0)
        throw std::runtime_error("it has no code signature");
    verifyCodeSignature(slice_, signature.offset, signature.size);
}

void MachOFile::readSegment(std::size_t offset)
{
    const auto segment = slice_.at<SegmentCommand>(offset);
    slice_.part(segment.fileOffset, segment.fileSize);
    if (segment.fileSize > segment.memorySize)
        throw std::runtime_error("a segment is larger than its memory");
    segments_.push_back(segment);
    for (std::uint32_t i = 0; i < segment.sectionCount; ++i)
        sections_.push_back(slice_.at<Section>(offset + sizeof segment + i * sizeof(Section)));
}

} // namespace simulator::macho
