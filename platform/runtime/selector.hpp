#pragma once

#include "platform/runtime/FixedString.hpp"
#include "platform/runtime/objc.hpp"

/// What names stand for in the object runtime: selectors and classes. The phone's runtime fixes the selectors of a library when
/// it maps it; other runtimes are asked at the first use.

#if defined(__APPLE__)

/// By this the phone's runtime knows that there is something for it to fix ("objc4", Apple: `objc_image_info`).
struct ImageInfo {
    std::uint32_t version;
    std::uint32_t flags;
};
[[gnu::section("__DATA,__objc_imageinfo,regular,no_dead_strip"), gnu::used]] inline constinit const ImageInfo imageInfo{};

/// The name of a selector until the library is mapped, the selector itself from then on.
template <FixedString Name>
[[gnu::section("__DATA,__objc_selrefs,literal_pointers,no_dead_strip")]] inline constinit const char* selectorReference =
    Name.text;

/// The selector of that name.
template <FixedString Name>
inline SEL selector()
{
    return reinterpret_cast<SEL>(const_cast<char*>(selectorReference<Name>));
}

#else

/// The selector of that name. It is registered with the runtime at its first use.
template <FixedString Name>
inline SEL selector()
{
    static constinit SEL registered = nullptr;
    if (registered == nullptr) [[unlikely]]
        registered = sel_registerName(Name.text);
    return registered;
}

#endif

/// The class of that name, looked up at its first use and kept; as long as there is none, each use looks again.
template <FixedString Name>
[[gnu::noinline]] Class classNamed()
{
    static constinit Class found = nullptr;
    if (found == nullptr) [[unlikely]]
        found = objc_getClass(Name.text);
    return found;
}
