#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// A library in this process, whatever the form of its file.
namespace simulator {

struct ExportedSymbol {
    enum class Kind { variable, function };
    std::string name;
    void* address;
    Kind kind;
    /// A variable of an object's pointer size; of a Mach-O library, which tells no sizes, any variable.
    bool canHoldObject;
};

class Image {
public:
    virtual ~Image() = default;
    /// The symbols that the library defines for others.
    virtual const std::vector<ExportedSymbol>& exports() const = 0;
};

/// Loads the library in that file and runs its initialisers: a Mach-O library for this processor, as the phone's loader does,
/// or one of the machine's own. A library that is loaded already is given again. Throws std::runtime_error with the file's name
/// and the reason when it cannot be loaded; nothing of it stays then. An exception out of an initialiser ends the process, as on
/// the phone. An image lives until the process ends.
const Image& openImage(const std::filesystem::path& file);

/// The file of the library in which that code or constant lies, empty when there is none; for an implementation of a method,
/// the file of the library whose implementation it is.
std::filesystem::path fileOf(const void* address);

} // namespace simulator
