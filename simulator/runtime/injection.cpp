#include "simulator/runtime/injection.hpp"

#include <algorithm>
#include <cstdio>
#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"

namespace simulator {

namespace {

constexpr const char* libraryFolder = "/Library/MobileSubstrate/DynamicLibraries";

std::vector<link_map*>& injectedLibraries()
{
    static std::vector<link_map*> libraries;
    return libraries;
}

/// A filter names the bundles of the processes that its library goes into: {Filter: {Bundles: [...]}}.
bool filterNamesSpringBoard(const std::filesystem::path& filter)
{
    NSDictionary* const root = NSDictionary::dictionaryWithContentsOfFile(toNSString(filter.native()));
    auto* const rules = static_cast<NSDictionary*>(root->objectForKey(constantString<"Filter">()));
    auto* const bundles = static_cast<NSArray*>(rules->objectForKey(constantString<"Bundles">()));
    for (NSString* bundle : each<NSString>(bundles)) {
        if (bundle->isEqualToString(constantString<"com.apple.springboard">()))
            return true;
    }
    return false;
}

std::vector<std::filesystem::path> librariesForSpringBoard()
{
    std::vector<std::filesystem::path> libraries;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(onThisMachine(libraryFolder), missing)) {
        if (entry.path().extension() != ".dylib")
            continue;
        const auto filter = std::filesystem::path(libraryFolder) / entry.path().filename().replace_extension(".plist");
        if (filterNamesSpringBoard(filter))
            libraries.push_back(entry.path());
    }
    std::ranges::sort(libraries);
    return libraries;
}

void inject(const std::filesystem::path& library)
{
    void* const handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    link_map* map = nullptr;
    if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &map) != 0) {
        std::fprintf(stderr, "springboard: %s was not injected: %s\n", library.c_str(), dlerror());
        return;
    }
    injectedLibraries().push_back(map);
}

/// The symbols that an ELF library defines for others.
template <class Visit>
void forEachExport(const link_map& library, Visit visit)
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
        if (symbol->st_shndx != SHN_UNDEF && ELF64_ST_BIND(symbol->st_info) == STB_GLOBAL)
            visit(*symbol, names + symbol->st_name, reinterpret_cast<void*>(library.l_addr + symbol->st_value));
    }
}

} // namespace

void injectLibraries(const std::vector<std::filesystem::path>& more)
{
    for (const auto& library : librariesForSpringBoard())
        inject(library);
    for (const auto& library : more)
        inject(std::filesystem::absolute(library));
}

std::optional<ExportedSymbol> exportedSymbol(const std::string& name)
{
    std::optional<ExportedSymbol> found;
    for (const link_map* library : injectedLibraries()) {
        forEachExport(*library, [&](const ElfW(Sym)& symbol, const char* symbolName, void* address) {
            const auto type = ELF64_ST_TYPE(symbol.st_info);
            if (found || name != symbolName)
                return;
            if (type == STT_OBJECT)
                found = {name, address, ExportedSymbol::Kind::variable};
            else if (type == STT_FUNC)
                found = {name, address, ExportedSymbol::Kind::function};
        });
    }
    return found;
}

std::vector<ExportedSymbol> exportedVariables()
{
    std::vector<ExportedSymbol> variables;
    for (const link_map* library : injectedLibraries()) {
        forEachExport(*library, [&](const ElfW(Sym)& symbol, const char* name, void* address) {
            if (ELF64_ST_TYPE(symbol.st_info) == STT_OBJECT && symbol.st_size == sizeof(id))
                variables.push_back({name, address, ExportedSymbol::Kind::variable});
        });
    }
    return variables;
}

} // namespace simulator
