#include <dlfcn.h>
#include <string_view>

#include "platform/runtime/dlopen.hpp"
#include "simulator/foundation/phone_root.hpp"

/// Stands in front of the machine's dlopen: a path of the phone that a library of the phone asks for is looked up in the
/// phone's file tree. Everything else goes to the machine's.

namespace {

using Open = void* (*)(const char*, int);

bool isFromThePhone(const void* caller)
{
    Dl_info image;
    const std::string& root = simulator::phoneRoot().native();
    return !root.empty() && dladdr(caller, &image) != 0 && std::string_view(image.dli_fname).starts_with(root);
}

} // namespace

extern "C" void* dlopen(const char* path, int mode) noexcept
{
    static const auto machines = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    if (path != nullptr && *path == '/' && isFromThePhone(__builtin_return_address(0)))
        return machines(simulator::onThisMachine(path).c_str(), mode);
    return machines(path, mode);
}
