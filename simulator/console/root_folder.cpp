#include "simulator/console/root_folder.hpp"

#include <stdexcept>
#include <string>
#include <system_error>

#include "simulator/files/whole_file.hpp"

namespace simulator {

namespace fs = std::filesystem;

namespace {

bool isUpToDate(const fs::path& copy, const fs::path& original)
{
    return fs::exists(copy) && fs::file_size(copy) == fs::file_size(original) &&
           fs::last_write_time(copy) >= fs::last_write_time(original);
}

void requireInstalled(const fs::path& installedTree)
{
    if (!fs::is_directory(installedTree))
        throw std::runtime_error("the installed file tree " + installedTree.string() + " is missing");
}

/// The tree takes its place whole, and once: who is killed leaves no part of it there, and of those who start at once, all but
/// the first find that it is there.
void fillRoot(const fs::path& root, const fs::path& installedTree)
{
    requireInstalled(installedTree);
    const fs::path canonical = fs::weakly_canonical(fs::absolute(root));
    const fs::path folder = canonical.has_filename() ? canonical : canonical.parent_path();
    fs::create_directories(folder.parent_path());
    const fs::path incoming = nameBeside(folder);
    fs::copy(installedTree, incoming, fs::copy_options::recursive);
    std::error_code failure;
    fs::rename(incoming, folder, failure);
    if (!failure)
        return;
    std::error_code ignored;
    fs::remove_all(incoming, ignored);
    if (!fs::is_directory(folder / "Library"))
        throw std::runtime_error("cannot fill " + folder.native() + ": " + failure.message());
}

} // namespace

void updateRoot(const fs::path& root, const fs::path& installedTree)
{
    requireInstalled(installedTree);
    fs::create_directories(root);
    for (const auto& entry : fs::recursive_directory_iterator(installedTree)) {
        const fs::path copy = root / entry.path().lexically_relative(installedTree);
        if (entry.is_directory())
            fs::create_directories(copy);
        else if (!isUpToDate(copy, entry.path()))
            // Another process may be running the library that is replaced.
            copyWholeFile(entry.path(), copy);
    }
}

void prepareChosenRoot(const fs::path& root, const fs::path& installedTree)
{
    if (fs::exists(root) && !fs::is_directory(root))
        throw std::runtime_error(root.string() + " is not a folder");
    if (!fs::exists(root) || fs::is_empty(root))
        fillRoot(root, installedTree);
    else if (!fs::is_directory(root / "Library"))
        throw std::runtime_error(root.string() + " is not a phone's file tree");
}

} // namespace simulator
