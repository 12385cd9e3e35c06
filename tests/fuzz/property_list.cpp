#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/foundation/foundation.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"
#include "tests/fuzz/target.hpp"

/// A property list of any form: what is read of it can be told in words, and written again as a list that reads the same.

namespace {

constexpr NSUInteger binaryFormat = 200;

std::string_view writtenAgain(NSDictionary* list)
{
    const id contents = send<"dataWithPropertyList:format:options:error:", id>(
        classNamed<"NSPropertyListSerialization">(), list, binaryFormat, NSUInteger{0}, static_cast<id*>(nullptr));
    return {send<"bytes", const char*>(contents), send<"length", NSUInteger>(contents)};
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    const AutoreleasePool pool;
    simulator::prepareFoundation();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const AutoreleasePool pool;
    NSDictionary* const list = simulator::propertyListIn(textIn(bytes, size));
    if (list == nullptr)
        return 0;
    NSDictionary* const again = simulator::propertyListIn(writtenAgain(list));
    // What is no number does not equal itself, but reads the same.
    if (again == nullptr || (send<"isEqual:", BOOL>(again, list) == NO &&
                             simulator::toUTF8(again->description()) != simulator::toUTF8(list->description())))
        fail("the list is another one when it has been written and read again");
    return 0;
}
