#include "simulator/foundation/property_lists.hpp"

#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/foundation/whole_file.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// GNUstep reads only XML through dictionaryWithContentsOfFile: and complains on standard error about a file it cannot
/// read; the phone reads binary ones as well and says nothing ("Property List Programming Guide").

namespace simulator {

namespace {

constexpr NSUInteger binaryFormat = 200;

/// Keeps Foundation's own complaints off standard error for a scope.
class Silence {
public:
    Silence() : previous_(std::exchange(_NSLog_printf_handler, +[](NSString*) {})) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { _NSLog_printf_handler = previous_; }

private:
    void (*previous_)(NSString*);
};

id parse(const std::string& bytes)
{
    const Silence silence;
    const id contents = send<"dataWithBytes:length:", id>(classNamed<"NSData">(), bytes.data(), NSUInteger{bytes.size()});
    try {
        return send<"propertyListWithData:options:format:error:", id>(classNamed<"NSPropertyListSerialization">(), contents,
                                                                      NSUInteger{0}, static_cast<NSUInteger*>(nullptr),
                                                                      static_cast<id*>(nullptr));
    } catch (...) {
        // The parser raises on some of what is no property list at all.
        return nullptr;
    }
}

NSDictionary* dictionaryWithContentsOfFile(NSObject*, SEL, NSString* path)
{
    return path == nullptr ? nullptr : readPropertyList(onThisMachine(toUTF8(path)));
}

} // namespace

NSDictionary* readPropertyList(const std::filesystem::path& file)
{
    std::error_code unreadable;
    if (!std::filesystem::is_regular_file(file, unreadable))
        return nullptr;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream || bytes.empty())
        return nullptr;
    const id root = parse(bytes);
    return root->isKindOfClass(classNamed<"NSDictionary">()) ? static_cast<NSDictionary*>(root) : nullptr;
}

void writePropertyList(NSDictionary* root, const std::filesystem::path& file)
{
    const id contents = send<"dataWithPropertyList:format:options:error:", id>(
        classNamed<"NSPropertyListSerialization">(), root, binaryFormat, NSUInteger{0}, static_cast<id*>(nullptr));
    writeWholeFile(file, {send<"bytes", const char*>(contents), send<"length", NSUInteger>(contents)});
}

void replacePropertyListReading()
{
    replaceMethod<"dictionaryWithContentsOfFile:">(metaclassOf(classNamed<"NSDictionary">()), &dictionaryWithContentsOfFile);
}

} // namespace simulator
