#pragma once

#include "platform/Foundation/NSString.hpp"

/// Why something could not be done.
class NSError : public NSObject {
public:
    NSInteger code() const { return send<"code", NSInteger>(this); }
    /// A sentence for the user.
    NSString* localizedDescription() const { return send<"localizedDescription", NSString*>(this); }
};

/// Codes of Foundation's own errors.
inline constexpr NSInteger NSFileReadUnknownError = 256;
inline constexpr NSInteger NSFileReadNoSuchFileError = 260;
inline constexpr NSInteger NSFileWriteUnknownError = 512;
inline constexpr NSInteger NSFileWriteFileExistsError = 516;

enum NSDataWritingOptions : NSUInteger {
    /// The file is replaced whole: no reader sees half of it.
    NSDataWritingAtomic = 1 << 0,
    /// A file that is there stays, which is an error. Not together with the one above.
    NSDataWritingWithoutOverwriting = 1 << 1,
    /// The file can be read before the phone has been unlocked for the first time.
    NSDataWritingFileProtectionNone = 0x10000000,
};

/// Bytes.
class NSData : public NSObject {
public:
    /// The bytes of a file; nil, and the reason in `error`, when it cannot be read.
    static NSData* dataWithContentsOfFile_options_error(NSString* path, NSUInteger options, NSError** error)
    {
        return send<"dataWithContentsOfFile:options:error:", NSData*>(classNamed<"NSData">(), path, options, error);
    }
    /// False, and the reason in `error`, when the file cannot be written.
    bool writeToFile_options_error(NSString* path, NSUInteger options, NSError** error)
    {
        return send<"writeToFile:options:error:", BOOL>(this, path, options, error) != NO;
    }
};
