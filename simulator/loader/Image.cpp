#include "simulator/loader/Image.hpp"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <map>
#include <mutex>
#include <stdexcept>

#include "simulator/loader/macho/MachOImage.hpp"
#include "simulator/loader/macho/Processor.hpp"

namespace simulator {

namespace {

/// A library in the machine's own form.
class ElfImage : public Image {
public:
    explicit ElfImage(const std::filesystem::path& file)
    {
        void* const handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        link_map* map = nullptr;
        if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &map) != 0)
            throw std::runtime_error(dlerror());
        readExports(*map);
    }

    const std::vector<ExportedSymbol>& exports() const override { return exports_; }

private:
    void readExports(const link_map& library)
    {
        const ElfW(Sym)* symbols = nullptr;
        const char* names = nullptr;
        for (const ElfW(Dyn)* entry = library.l_ld; entry->d_tag != DT_NULL; ++entry) {
            if (entry->d_tag == DT_SYMTAB)
                symbols = reinterpret_cast<const ElfW(Sym)*>(entry->d_un.d_ptr);
            else if (entry->d_tag == DT_STRTAB)
                names = reinterpret_cast<const char*>(entry->d_un.d_ptr);
        }
        if (symbols == nullptr || names == nullptr)
            return;
        // The linker puts the names right behind the symbols.
        for (const ElfW(Sym)* symbol = symbols; reinterpret_cast<const char*>(symbol) < names; ++symbol) {
            const auto type = ELF64_ST_TYPE(symbol->st_info);
            if (symbol->st_shndx == SHN_UNDEF || ELF64_ST_BIND(symbol->st_info) != STB_GLOBAL ||
                (type != STT_OBJECT && type != STT_FUNC))
                continue;
            exports_.push_back({names + symbol->st_name, reinterpret_cast<void*>(library.l_addr + symbol->st_value),
                                type == STT_FUNC ? ExportedSymbol::Kind::function : ExportedSymbol::Kind::variable,
                                type == STT_OBJECT && symbol->st_size == sizeof(void*)});
        }
    }

    std::vector<ExportedSymbol> exports_;
};

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

} // namespace

const Image& openImage(const std::filesystem::path& file)
{
    std::error_code missing;
    const auto path = std::filesystem::canonical(file, missing);
    if (missing)
        throw std::runtime_error(file.native() + ": " + missing.message());
    const std::lock_guard lock(images().mutex);
    auto& opened = images().opened;
    if (const auto found = opened.find(path); found != opened.end())
        return *found->second;
    if (!isMachO(path))
        return *opened.emplace(path, std::make_unique<ElfImage>(path)).first->second;

    // An initialiser may ask for more libraries, this one among them.
    auto library = std::make_unique<MachOImage>(path);
    MachOImage& image = *library;
    opened.emplace(path, std::move(library));
    image.runInitialisers();
    return image;
}

std::filesystem::path fileOfCode(const void* code)
{
    const void* const own = macho::thisProcessor.implementationBehind(code);
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
