#include "simulator/loader/macho/MachOImage.hpp"

#include <functional>
#include <unistd.h>

#include "simulator/files/whole_file.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/loader/macho/Processor.hpp"
#include "simulator/loader/macho/exports.hpp"
#include "simulator/loader/macho/fixups.hpp"
#include "simulator/loader/macho/selectors.hpp"

namespace simulator {

namespace {

using namespace macho;

bool isMagic(std::uint32_t number)
{
    return number == MH_MAGIC || number == MH_MAGIC_64 || number == __builtin_bswap32(FAT_MAGIC);
}

std::vector<void (*)()> readInitialisers(const MachOFile& file, const Segments& segments)
{
    std::vector<void (*)()> initialisers;
    for (const section& pointers : file.sections()) {
        if ((pointers.flags & SECTION_TYPE) != S_MOD_INIT_FUNC_POINTERS)
            continue;
        for (Word offset = 0; offset < pointers.size; offset += sizeof(Word)) {
            const Word initialiser = load(segments.pointerAt(pointers.addr + offset));
            if (!segments.holdsInstructions(initialiser - reinterpret_cast<Word>(segments.at(0))))
                throw std::runtime_error("an initialiser is not in its code");
            initialisers.push_back(
                reinterpret_cast<void (*)()>(thisProcessor.callableByThisMachine(reinterpret_cast<void*>(initialiser))));
        }
    }
    return initialisers;
}

} // namespace

bool isMachO(const std::filesystem::path& file)
{
    std::uint32_t number = 0;
    const Descriptor opened = openRegularFile(file);
    return opened && ::read(opened.number(), &number, sizeof number) == ssize_t{sizeof number} && isMagic(number);
}

MachOImage::MachOImage(const std::filesystem::path& file) : MachOImage(MachOFile(file))
{
}

MachOImage::MachOImage(const MachOFile& file) : weakLibraries_(file.weakLibraries())
{
    Segments segments(file);
    rebase(file, segments);
    bind(file, segments);
    fixSelectors(file, segments);
    exports_ = readExports(file, segments);
    initialisers_ = readInitialisers(file, segments);
    const std::byte* const start = segments.at(0);
    memory_ = segments.protect();
    unwindTables_ = thisProcessor.registerUnwindTables(file, start);
}

void MachOImage::openWeakLibraries() const
{
    for (const std::string& name : weakLibraries_) {
        try {
            openImage(onThisMachine(name));
        } catch (const std::runtime_error&) {
            continue;
        }
    }
}

void MachOImage::runInitialisers() noexcept
{
    for (const auto initialiser : initialisers_)
        initialiser();
}

bool MachOImage::contains(const void* address) const
{
    const auto* const byte = static_cast<const std::byte*>(address);
    return std::less_equal<>()(memory_.data(), byte) && std::less<>()(byte, memory_.data() + memory_.size());
}

} // namespace simulator
