#pragma once

#include "platform/Foundation/NSData.hpp"

enum NSPropertyListFormat : NSUInteger {
    NSPropertyListBinaryFormat_v1_0 = 200,
};

/// Property lists as bytes.
class NSPropertyListSerialization : public NSObject {
public:
    /// A list in any form; nil, and the reason in `error` unless that is null, when the bytes are none.
    static NSObject* propertyListWithData_options_format_error(NSData* data, NSUInteger options, NSPropertyListFormat* format,
                                                               NSError** error)
    {
        return send<"propertyListWithData:options:format:error:", NSObject*>(classNamed<"NSPropertyListSerialization">(), data,
                                                                             options, format, error);
    }
    /// Nil, and the reason in `error`, when the object is no property list.
    static NSData* dataWithPropertyList_format_options_error(NSObject* list, NSPropertyListFormat format, NSUInteger options,
                                                             NSError** error)
    {
        return send<"dataWithPropertyList:format:options:error:", NSData*>(classNamed<"NSPropertyListSerialization">(), list,
                                                                           format, options, error);
    }
};
