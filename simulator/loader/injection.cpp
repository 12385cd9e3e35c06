#include "simulator/loader/injection.hpp"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <set>
#include <stdexcept>
#include <system_error>

#include "simulator/foundation/phone_root.hpp"
#include "simulator/loader/injection_filter.hpp"

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
        if (!isForSpringBoard(library))
            continue;
        if (std::filesystem::exists(library))
            libraries.push_back(library);
        else
            complain(library, "it is missing");
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
