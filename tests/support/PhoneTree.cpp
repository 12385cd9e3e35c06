#include "tests/support/PhoneTree.hpp"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "tests/support/programs.hpp"

namespace fs = std::filesystem;

namespace {

fs::path newFolder()
{
    std::string name = fs::temp_directory_path() / "solvane-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("cannot make a temporary folder");
    return fs::canonical(name);
}

/// All but the sockets, which a SpringBoard that was killed leaves.
void copyTree(const fs::path& from, const fs::path& to)
{
    fs::create_directory(to);
    for (const auto& entry : fs::recursive_directory_iterator(from)) {
        const fs::path copy = to / entry.path().lexically_relative(from);
        if (entry.is_directory())
            fs::create_directory(copy);
        else if (entry.is_regular_file())
            fs::copy_file(entry.path(), copy);
    }
}

} // namespace

PhoneTree::PhoneTree() : folder_(newFolder()), root_(folder_ / "phone")
{
    copyTree(installed(), root_);
}

PhoneTree::~PhoneTree()
{
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

fs::path PhoneTree::preferencesFile() const
{
    return root_ / "User/Library/Preferences/org.solvane.Solvane.plist";
}

fs::path PhoneTree::libraryFolder() const
{
    return root_ / "Library/MobileSubstrate/DynamicLibraries";
}

fs::path PhoneTree::artLibrary() const
{
    return root_ / "System/Library/SpringBoardPlugins/NowPlayingArtLockScreen.lockbundle/NowPlayingArtLockScreen";
}

fs::path PhoneTree::weatherFramework() const
{
    return root_ / "System/Library/PrivateFrameworks/Weather.framework/Weather";
}

fs::path PhoneTree::addLibrary(const fs::path& library, const char* name) const
{
    const fs::path added = libraryFolder() / name;
    fs::copy_file(library, added);
    fs::copy_file(libraryFolder() / "Solvane.plist", fs::path(added).replace_extension(".plist"));
    return added;
}

void PhoneTree::writePreferences(std::string_view contents) const
{
    writeFile(preferencesFile(), contents);
}

void PhoneTree::writePreferencesXML(std::string_view rootElement) const
{
    writePreferences(xmlPropertyList(rootElement));
}

void PhoneTree::writeBinaryPreferences(const std::string& python) const
{
    const std::string code = "import datetime, plistlib, sys\n"
                             "plistlib.dump(" +
                             python + ", open(sys.argv[1], 'wb'), fmt=plistlib.FMT_BINARY)\n";
    const Outcome outcome = runProgram({pythonProgram(), "-c", code, preferencesFile()});
    if (outcome.status != 0)
        throw std::runtime_error(outcome.errors);
}

fs::path PhoneTree::installed()
{
    const char* const chosen = std::getenv("SOLVANE_PHONE_TREE");
    return chosen != nullptr ? chosen : DEFAULT_PHONE_TREE;
}

TemporaryFolder::TemporaryFolder() : path_(newFolder())
{
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string xmlPropertyList(std::string_view rootElement)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">" +
           std::string(rootElement) + "</plist>\n";
}

void writeFile(const fs::path& file, std::string_view contents)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << contents;
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.native());
}

std::string readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}
