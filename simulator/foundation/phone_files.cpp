#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

#include "platform/Foundation/NSBundle.hpp"
#include "platform/Foundation/NSData.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/files/whole_file.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

/// Files that are read and written through Foundation, with the reason where that fails, and bundles: all of the phone's tree.

extern "C" NSString* const NSLocalizedDescriptionKey;

namespace simulator {

namespace {

constexpr std::size_t mostBytes = std::size_t{16} << 20;

/// An error with the system's reason.
void fail(NSError** error, NSInteger code, const std::string& reason)
{
    if (error == nullptr)
        return;
    const id text = toNSString(reason);
    const id key = NSLocalizedDescriptionKey;
    *error =
        send<"errorWithDomain:code:userInfo:", NSError*>(classNamed<"NSError">(), constantString<"NSCocoaErrorDomain">(), code,
                                                         NSDictionary::dictionaryWithObjects_forKeys_count(&text, &key, 1));
}

NSData* dataWithContentsOfFile_options_error(Class cls, SEL, NSString* path, NSUInteger, NSError** error)
{
    const std::filesystem::path file = onThisMachine(toUTF8(path));
    errno = EFBIG;
    const auto bytes = readWholeFile(file, mostBytes);
    if (bytes)
        return send<"dataWithBytes:length:", NSData*>(cls, static_cast<const void*>(bytes->data()), NSUInteger{bytes->size()});
    fail(error, errno == ENOENT ? NSFileReadNoSuchFileError : NSFileReadUnknownError,
         "cannot read " + file.native() + ": " + std::generic_category().message(errno));
    return nullptr;
}

BOOL writeToFile_options_error(NSData* self, SEL, NSString* path, NSUInteger options, NSError** error)
{
    const std::filesystem::path file = onThisMachine(toUTF8(path));
    std::error_code ignored;
    if ((options & NSDataWritingWithoutOverwriting) != 0 && std::filesystem::exists(file, ignored)) {
        fail(error, NSFileWriteFileExistsError, "cannot write " + file.native() + ": it is there");
        return NO;
    }
    try {
        writeWholeFile(file, {send<"bytes", const char*>(self), send<"length", NSUInteger>(self)});
        return YES;
    } catch (const std::runtime_error& failure) {
        fail(error, NSFileWriteUnknownError, failure.what());
        return NO;
    }
}

NSBundle* (*previousBundleWithPath)(NSBundle*, SEL, NSString*);

/// Foundation has bundles of its own, which lie elsewhere.
NSBundle* bundleWithPath(NSBundle* cls, SEL selector, NSString* path)
{
    const std::filesystem::path folder = onThisMachine(toUTF8(path));
    std::error_code ignored;
    const bool isThePhones = std::filesystem::is_directory(folder, ignored);
    return previousBundleWithPath(cls, selector, isThePhones ? toNSString(folder.native()) : path);
}

} // namespace

void replaceFiles()
{
    addMethod<"dataWithContentsOfFile:options:error:">(metaclassOf(classNamed<"NSData">()),
                                                       &dataWithContentsOfFile_options_error);
    // Behind the class stand others, which have copies of its methods.
    for (const char* name : {"NSData", "NSDataStatic", "NSDataMalloc", "NSMutableDataMalloc"})
        replaceMethod<"writeToFile:options:error:">(objc_getClass(name), &writeToFile_options_error);
    previousBundleWithPath = replaceMethod<"bundleWithPath:">(metaclassOf(classNamed<"NSBundle">()), &bundleWithPath);
}

} // namespace simulator
