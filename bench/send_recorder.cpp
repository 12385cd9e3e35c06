#include "bench/send_recorder.hpp"

#include <dlfcn.h>
#include <string_view>

/// Preloaded into a process, it stands in front of the runtime's lookup of methods and records the messages that one image
/// sends.

namespace {

struct Recording {
    const char* image = nullptr;
    std::vector<RecordedSend> sends;
};

Recording& recording()
{
    static auto& current = *new Recording;
    return current;
}

bool comesFromImage(const void* code)
{
    Dl_info info;
    return dladdr(code, &info) != 0 && std::string_view(info.dli_fname).ends_with(recording().image);
}

void record(id receiver, SEL selector, const void* caller)
{
    if (recording().image != nullptr && comesFromImage(caller))
        recording().sends.push_back(
            {receiver == nullptr ? "nil" : class_getName(object_getClass(receiver)), sel_getName(selector)});
}

template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

struct objc_super;

extern "C" {

[[gnu::visibility("default")]] IMP objc_msg_lookup(id receiver, SEL selector)
{
    static const auto lookUp = next<IMP(id, SEL)>("objc_msg_lookup");
    record(receiver, selector, __builtin_return_address(0));
    return lookUp(receiver, selector);
}

[[gnu::visibility("default")]] void beginRecordingSends(const char* image)
{
    recording() = {image, {}};
}

[[gnu::visibility("default")]] const std::vector<RecordedSend>* endRecordingSends()
{
    recording().image = nullptr;
    return &recording().sends;
}
}
