#include "simulator/loader/Image.hpp"

#include <cerrno>
#include <dlfcn.h>
#include <map>
#include <mutex>
#include <stdexcept>
#include <system_error>

#include "simulator/files/whole_file.hpp"
#include "simulator/loader/ElfImage.hpp"
#include "simulator/loader/macho/MachOImage.hpp"
#include "simulator/loader/macho/Processor.hpp"

namespace simulator {

namespace {

struct Images {
    /// Recursive, since an initialiser may open more of them.
    std::recursive_mutex mutex;
    std::map<std::filesystem::path, std::unique_ptr<Image>> opened;
};

Images& images()
{
    static auto& all = *new Images;
    return all;
}

template <class Form>
std::unique_ptr<Form> load(const std::filesystem::path& file)
{
    try {
        return std::make_unique<Form>(file);
    } catch (const std::runtime_error& failure) {
        // The machine's loader begins with the file of which it speaks, which may be another.
        const std::string reason = failure.what();
        throw std::runtime_error(reason.starts_with(file.native()) ? reason : file.native() + ": " + reason);
    }
}

} // namespace

const Image& openImage(const std::filesystem::path& file)
{
    std::error_code missing;
    const auto path = std::filesystem::canonical(file, missing);
    if (missing)
        throw std::runtime_error(file.native() + ": " + missing.message());
    if (!openRegularFile(path))
        throw std::runtime_error(file.native() + ": " + std::generic_category().message(errno));
    const std::lock_guard lock(images().mutex);
    auto& opened = images().opened;
    if (const auto found = opened.find(path); found != opened.end())
        return *found->second;
    if (!isMachO(path))
        return *opened.emplace(path, load<ElfImage>(path)).first->second;

    // What it can do without, and its initialisers, may ask for more libraries, this one among them.
    auto library = load<MachOImage>(path);
    MachOImage& image = *library;
    opened.emplace(path, std::move(library));
    image.openWeakLibraries();
    image.runInitialisers();
    return image;
}

std::filesystem::path fileOf(const void* address)
{
    const void* const own = macho::thisProcessor.implementationBehind(address);
    const std::lock_guard lock(images().mutex);
    for (const auto& [path, image] : images().opened) {
        const auto* const library = dynamic_cast<const MachOImage*>(image.get());
        if (library != nullptr && library->contains(own))
            return path;
    }
    Dl_info image;
    return dladdr(own, &image) != 0 ? image.dli_fname : "";
}

} // namespace simulator
