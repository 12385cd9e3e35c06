#include "bench/sends/sends.h"

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/runtime/send.hpp"

void typedObjectSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        send<"object", id>(static_cast<id>(receiver));
}

void typedIntegerSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        send<"takeInteger:">(static_cast<id>(receiver), static_cast<int>(i));
}

void typedNumberSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        send<"number", double>(static_cast<id>(receiver));
}

void typedRectangleSends(void* receiver, long count)
{
    for (long i = 0; i < count; ++i)
        send<"rectangle", CGRect>(static_cast<id>(receiver));
}
