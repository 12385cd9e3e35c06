#include "simulator/foundation/property_lists.hpp"

#include <cerrno>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

#include <unicode/ucnv.h>

#include "platform/Foundation/NSData.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/files/whole_file.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/property_list_forms.hpp"
#include "simulator/foundation/property_list_objects.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// The phone reads property lists of every form, says nothing about one that it cannot read ("Property List Programming
/// Guide"), and survives every file. GNUstep's readers do neither, so these are our own.

namespace simulator {

namespace {

constexpr NSUInteger binaryFormat = 200;
constexpr NSInteger NSPropertyListWriteInvalidError = 3852;
constexpr std::size_t mostBytes = std::size_t{16} << 20;

/// The encoding that a file's first bytes mark, or else its XML declaration names.
std::string encodingOf(std::string_view bytes)
{
    UErrorCode status = U_ZERO_ERROR;
    if (const char* const marked =
            ucnv_detectUnicodeSignature(bytes.data(), static_cast<std::int32_t>(bytes.size()), nullptr, &status))
        return marked;
    constexpr std::string_view attribute = " encoding=";
    const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    const std::size_t found = declaration.find(attribute);
    if (!declaration.starts_with("<?xml") || found == std::string_view::npos)
        return "UTF-8";
    const std::string_view value = declaration.substr(found + attribute.size());
    return std::string(value.substr(std::min<std::size_t>(1, value.size()), value.find_first_of("\"'", 1) - 1));
}

std::u16string decoded(std::string_view bytes)
{
    UErrorCode status = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open(encodingOf(bytes).c_str(), &status);
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    // No encoding has more characters than bytes.
    std::u16string text(2 * bytes.size(), u'\0');
    const std::int32_t length = ucnv_toUChars(converter, text.data(), static_cast<std::int32_t>(text.size()), bytes.data(),
                                              static_cast<std::int32_t>(bytes.size()), &status);
    ucnv_close(converter);
    if (U_FAILURE(status))
        throw NoPropertyList();
    text.resize(static_cast<std::size_t>(length));
    constexpr char16_t mark = 0xfeff;
    return text.starts_with(mark) ? text.substr(1) : text;
}

/// The root of a list in whatever form.
id parse(std::string_view bytes)
{
    if (bytes.starts_with(binaryMark))
        return readBinaryForm(bytes);
    const std::u16string text = decoded(bytes);
    const std::size_t start = text.find_first_not_of(u" \t\r\n");
    const bool isXML = start != std::u16string::npos && text[start] == '<';
    return isXML ? readXMLForm(text) : readOldForm(text);
}

/// None for what is no property list.
std::optional<std::string> bytesOf(NSObject* list)
{
    try {
        return writeBinaryForm(list);
    } catch (const NoPropertyList&) {
        return std::nullopt;
    }
}

NSObject* (*foundationsDataWithPropertyList)(NSObject*, SEL, NSObject*, NSUInteger, NSUInteger, NSError**);

NSObject* dataWithPropertyList(NSObject* self, SEL selector, NSObject* list, NSUInteger format, NSUInteger options,
                               NSError** error)
{
    if (format != binaryFormat || list == nullptr)
        return foundationsDataWithPropertyList(self, selector, list, format, options, error);
    if (const auto bytes = bytesOf(list))
        return dataWith(*bytes);
    if (error != nullptr)
        *error = send<"errorWithDomain:code:userInfo:", NSError*>(classNamed<"NSError">(), constantString<"NSCocoaErrorDomain">(),
                                                                  NSPropertyListWriteInvalidError, id{nullptr});
    return nullptr;
}

NSDictionary* dictionaryWithContentsOfFile(NSObject*, SEL, NSString* path)
{
    return path == nullptr ? nullptr : readPropertyList(onThisMachine(toUTF8(path)));
}

NSObject* propertyListWithData(NSObject*, SEL, NSData* data, NSUInteger, NSUInteger*, NSError**)
{
    const std::string_view bytes(send<"bytes", const char*>(data), send<"length", NSUInteger>(data));
    return bytes.size() > mostBytes ? nullptr : propertyListIn(bytes);
}

} // namespace

NSDictionary* readPropertyList(const std::filesystem::path& file)
{
    const auto bytes = readWholeFile(file, mostBytes);
    return bytes ? propertyListIn(*bytes) : nullptr;
}

NSDictionary* readPropertyListToChange(const std::filesystem::path& file)
{
    const auto bytes = readWholeFile(file, mostBytes);
    if (!bytes && errno != ENOENT && errno != EFBIG)
        throw std::system_error(errno, std::generic_category(), "cannot read " + file.native());
    return bytes ? propertyListIn(*bytes) : nullptr;
}

NSDictionary* propertyListIn(std::string_view bytes)
{
    Owned<NSDictionary> dictionary;
    {
        const AutoreleasePool pool;
        try {
            const id root = parse(bytes);
            if (root->isKindOfClass(classNamed<"NSDictionary">()))
                dictionary = static_cast<NSDictionary*>(root);
        } catch (const NoPropertyList&) {
            return nullptr;
        }
    }
    return dictionary.autorelease();
}

void writePropertyList(NSDictionary* root, const std::filesystem::path& file)
{
    const auto contents = bytesOf(root);
    if (!contents)
        throw std::runtime_error("cannot write " + file.native() + ": it would be no property list");
    std::filesystem::create_directories(file.parent_path());
    writeWholeFile(file, *contents);
}

void replacePropertyLists()
{
    replaceMethod<"dictionaryWithContentsOfFile:">(metaclassOf(classNamed<"NSDictionary">()), &dictionaryWithContentsOfFile);
    // Lists whose root is a dictionary alone: nobody here has others.
    replaceMethod<"propertyListWithData:options:format:error:">(metaclassOf(classNamed<"NSPropertyListSerialization">()),
                                                                &propertyListWithData);
    foundationsDataWithPropertyList = replaceMethod<"dataWithPropertyList:format:options:error:">(
        metaclassOf(classNamed<"NSPropertyListSerialization">()), &dataWithPropertyList);
}

} // namespace simulator
