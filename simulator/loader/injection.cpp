#include "simulator/loader/injection.hpp"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <set>
#include <stdexcept>
#include <system_error>

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"

namespace simulator {

namespace {

constexpr const char* libraryFolder = "/Library/MobileSubstrate/DynamicLibraries";

std::vector<const Image*>& injectedLibraries()
{
    static std::vector<const Image*> libraries;
    return libraries;
}

void complain(const std::filesystem::path& library, const std::string& reason)
{
    std::fprintf(stderr, "springboard: %s was not injected: %s\n", library.filename().c_str(), reason.c_str());
}

/// A filter names the bundles of the processes that its library goes into: {Filter: {Bundles: [...]}}. None when it is none.
std::optional<bool> filterNamesSpringBoard(const std::filesystem::path& filter)
{
    NSDictionary* const root = readPropertyList(filter);
    auto* const rules = valueOfClass<NSDictionary>(root, constantString<"Filter">());
    auto* const bundles = valueOfClass<NSArray>(rules, constantString<"Bundles">());
    if (bundles == nullptr)
        return std::nullopt;
    return bundles->containsObject(constantString<"com.apple.springboard">());
}

/// What the loader's folder names, sorted; a library or a filter alone names it as well.
std::set<std::filesystem::path> namedLibraries(const std::filesystem::path& folder)
{
    std::set<std::filesystem::path> libraries;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
        if (entry->path().extension() == ".dylib" || entry->path().extension() == ".plist")
            libraries.insert(std::filesystem::path(entry->path()).replace_extension(".dylib"));
    }
    if (failure && failure != std::errc::no_such_file_or_directory)
        std::fprintf(stderr, "springboard: no library was injected: %s: %s\n", folder.c_str(), failure.message().c_str());
    return libraries;
}

std::vector<std::filesystem::path> librariesForSpringBoard()
{
    std::vector<std::filesystem::path> libraries;
    for (const auto& library : namedLibraries(onThisMachine(libraryFolder))) {
        const auto filter = std::filesystem::path(library).replace_extension(".plist");
        const auto namesSpringBoard = filterNamesSpringBoard(filter);
        if (!namesSpringBoard)
            complain(library, "its filter " + filter.filename().native() + " cannot be read");
        else if (*namesSpringBoard && !std::filesystem::exists(library))
            complain(library, "it is missing");
        else if (*namesSpringBoard)
            libraries.push_back(library);
    }
    return libraries;
}

} // namespace

void injectLibraries(const std::vector<std::filesystem::path>& more)
{
    for (const auto& library : librariesForSpringBoard()) {
        try {
            injectedLibraries().push_back(&openImage(library));
        } catch (const std::runtime_error& failure) {
            complain(library, failure.what());
        }
    }
    for (const auto& library : more)
        injectedLibraries().push_back(&openImage(std::filesystem::absolute(library)));
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
