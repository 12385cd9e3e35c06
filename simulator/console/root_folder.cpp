#include "simulator/console/root_folder.hpp"

#include <stdexcept>
#include <string>
#include <unistd.h>

namespace simulator {

namespace fs = std::filesystem;

namespace {

bool isUpToDate(const fs::path& copy, const fs::path& original)
{
    return fs::exists(copy) && fs::file_size(copy) == fs::file_size(original) &&
           fs::last_write_time(copy) >= fs::last_write_time(original);
}

/// Another process may be running the library that is replaced, so the new file takes the old one's place whole.
void replaceFile(const fs::path& copy, const fs::path& original)
{
    fs::path incoming = copy;
    incoming += ".incoming-" + std::to_string(::getpid());
    fs::copy_file(original, incoming, fs::copy_options::overwrite_existing);
    fs::rename(incoming, copy);
}

} // namespace

void updateRoot(const fs::path& root, const fs::path& installedTree)
{
    if (!fs::is_directory(installedTree))
        throw std::runtime_error("the installed file tree " + installedTree.string() + " is missing");
    fs::create_directories(root);
    for (const auto& entry : fs::recursive_directory_iterator(installedTree)) {
        const fs::path copy = root / entry.path().lexically_relative(installedTree);
        if (entry.is_directory())
            fs::create_directories(copy);
        else if (!isUpToDate(copy, entry.path()))
            replaceFile(copy, entry.path());
    }
}

void prepareChosenRoot(const fs::path& root, const fs::path& installedTree)
{
    if (fs::exists(root) && !fs::is_directory(root))
        throw std::runtime_error(root.string() + " is not a folder");
    if (!fs::exists(root) || fs::is_empty(root))
        updateRoot(root, installedTree);
    else if (!fs::is_directory(root / "Library"))
        throw std::runtime_error(root.string() + " is not a phone's file tree");
}

} // namespace simulator
