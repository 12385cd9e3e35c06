#include "settings/greeting_name.hpp"

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSPropertyListSerialization.hpp"

namespace {

NSString* preferencesFile()
{
    return constantString<"/User/Library/Preferences/org.solvane.Solvane.plist">();
}

NSString* nameKey()
{
    return constantString<"Name">();
}

/// Nil for bytes that are no property list, or one of something else.
NSDictionary* settingsIn(NSData* bytes)
{
    if (bytes == nullptr)
        return nullptr;
    NSObject* const list = NSPropertyListSerialization::propertyListWithData_options_format_error(bytes, 0, nullptr, nullptr);
    return list->isKindOfClass(classNamed<"NSDictionary">()) ? static_cast<NSDictionary*>(list) : nullptr;
}

/// Puts the bytes beside the preferences file under a name that nothing has yet, and gives it; nil, and the reason, when that
/// cannot be done.
NSString* keepBeside(NSData* bytes, NSError** error)
{
    for (int number = 1;; ++number) {
        NSString* const file = NSString::stringWithFormat(constantString<"%@.damaged-%d">(), preferencesFile(), number);
        NSError* reason = nullptr;
        if (bytes->writeToFile_options_error(file, NSDataWritingWithoutOverwriting, &reason))
            return file;
        *error = reason;
        if (reason->code() != NSFileWriteFileExistsError)
            return nullptr;
    }
}

/// Nil when the file has them, or else the reason.
NSError* writeSettings(NSDictionary* settings)
{
    NSError* error = nullptr;
    NSData* const bytes = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        settings, NSPropertyListBinaryFormat_v1_0, 0, &error);
    if (bytes != nullptr &&
        bytes->writeToFile_options_error(preferencesFile(), NSDataWritingAtomic | NSDataWritingFileProtectionNone, &error))
        return nullptr;
    return error;
}

} // namespace

NSString* greetingName()
{
    NSError* error = nullptr;
    NSData* const bytes = NSData::dataWithContentsOfFile_options_error(preferencesFile(), 0, &error);
    return settingsIn(bytes)->objectForKey(nameKey())->description();
}

NameWriting writeGreetingName(NSString* name)
{
    NSError* error = nullptr;
    NSData* const bytes = NSData::dataWithContentsOfFile_options_error(preferencesFile(), 0, &error);
    if (bytes == nullptr && error->code() != NSFileReadNoSuchFileError)
        return {.failure = error->localizedDescription()};

    NameWriting writing;
    const auto settings = adopt(NSMutableDictionary::alloc()->init());
    if (NSDictionary* const present = settingsIn(bytes)) {
        settings->setDictionary(present);
    } else if (bytes != nullptr) {
        writing.keptDamagedFile = keepBeside(bytes, &error);
        if (writing.keptDamagedFile == nullptr)
            return {.failure = error->localizedDescription()};
    }

    if (name->length() == 0)
        settings->removeObjectForKey(nameKey());
    else
        settings->setObject_forKey(name, nameKey());
    writing.failure = writeSettings(settings)->localizedDescription();
    return writing;
}
