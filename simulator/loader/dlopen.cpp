#include <dlfcn.h>
#include <stdexcept>

#include "platform/runtime/dlopen.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/loader/ElfImage.hpp"
#include "simulator/loader/Image.hpp"
#include "simulator/loader/macho/MachOImage.hpp"

/// Stands in front of the machine's dlopen: a path of the phone that a library of the phone asks for is looked up in the
/// phone's file tree. Everything else goes to the machine's.

namespace {

using Open = void* (*)(const char*, int);

bool isFromThePhone(const void* caller)
{
    const std::string& root = simulator::phoneRoot().native();
    return !root.empty() && simulator::fileOf(caller).native().starts_with(root);
}

/// A handle that tells no more than that the library is loaded; null, without a word, when it cannot be.
void* openFromThePhone(const std::filesystem::path& file, int mode, Open machines)
{
    try {
        if (simulator::isMachO(file))
            return const_cast<simulator::Image*>(&simulator::openImage(file));
        simulator::checkElf(file);
        return machines(file.c_str(), mode);
    } catch (const std::runtime_error&) {
        return nullptr;
    }
}

} // namespace

extern "C" void* dlopen(const char* path, int mode) noexcept
{
    static const auto machines = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    if (path == nullptr || *path != '/' || !isFromThePhone(__builtin_return_address(0)))
        return machines(path, mode);
    return openFromThePhone(simulator::onThisMachine(path), mode, machines);
}
