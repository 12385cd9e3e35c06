#include <cstdio>

#include "platform/runtime/objc.hpp"
#include "platform/runtime/send.hpp"

/// Starts Foundation and writes the time: the yardstick for the start of SpringBoard.
int main()
{
    const id pool = send<"new", id>(classNamed<"NSAutoreleasePool">());
    const id now = send<"date", id>(classNamed<"NSDate">());
    std::puts(send<"UTF8String", const char*>(send<"description", id>(now)));
    send<"drain">(pool);
}
