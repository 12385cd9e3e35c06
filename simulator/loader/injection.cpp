#include "simulator/loader/injection.hpp"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <stdexcept>

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"

namespace simulator {

namespace {

constexpr const char* libraryFolder = "/Library/MobileSubstrate/DynamicLibraries";

std::vector<const Image*>& injectedLibraries()
{
    static std::vector<const Image*> libraries;
    return libraries;
}

/// A filter names the bundles of the processes that its library goes into: {Filter: {Bundles: [...]}}.
bool filterNamesSpringBoard(const std::filesystem::path& filter)
{
    NSDictionary* const root = NSDictionary::dictionaryWithContentsOfFile(toNSString(filter.native()));
    auto* const rules = root->objectForKey<NSDictionary>(constantString<"Filter">());
    auto* const bundles = rules->objectForKey<NSArray>(constantString<"Bundles">());
    return bundles->containsObject(constantString<"com.apple.springboard">());
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
    try {
        injectedLibraries().push_back(&openImage(library));
    } catch (const std::runtime_error& reason) {
        std::fprintf(stderr, "springboard: %s was not injected: %s\n", library.filename().c_str(), reason.what());
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
    for (const Image* library : injectedLibraries()) {
        const auto found = std::ranges::find(library->exports(), name, &ExportedSymbol::name);
        if (found != library->exports().end())
            return *found;
    }
    return std::nullopt;
}

std::vector<ExportedSymbol> exportedVariables()
{
    std::vector<ExportedSymbol> variables;
    for (const Image* library : injectedLibraries())
        std::ranges::copy_if(library->exports(), std::back_inserter(variables), &ExportedSymbol::canHoldObject);
    return variables;
}

} // namespace simulator
