#include <mutex>
#include <set>

#include "platform/runtime/objc.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/loader/Image.hpp"

/// Which library a class comes from. GNU's runtime does not tell.

namespace {

/// The names that were given out, which are good for as long as the process lives.
struct Names {
    std::mutex mutex;
    std::set<std::string> given;
};

Names& names()
{
    static auto& all = *new Names;
    return all;
}

} // namespace

/// As the phone's runtime does it: a compiler puts a class into its library's data, one that is made at run time lies in
/// memory of nobody's.
extern "C" const char* class_getImageName(Class cls)
{
    const std::filesystem::path file = cls == nullptr ? "" : simulator::fileOf(cls);
    if (file.empty())
        return nullptr;
    const std::lock_guard lock(names().mutex);
    return names().given.insert(simulator::onThePhone(file).native()).first->c_str();
}
