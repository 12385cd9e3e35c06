#include <gmock/gmock.h>

#include "platform/runtime/send.hpp"
#include "tests/support/Phone.hpp"

/// Protocols that are made at run time.

namespace {

class Protocols : public testing::Test {
protected:
    Protocols()
    {
        adopted_ = objc_allocateProtocol("Adopted");
        protocol_addMethodDescription(adopted_, selector<"must">(), "v@:", YES, YES);
        protocol_addMethodDescription(adopted_, selector<"may">(), "v@:q", NO, YES);
        protocol_addMethodDescription(adopted_, selector<"may">(), "v@:d", NO, NO);
        objc_registerProtocol(adopted_);
        protocol_ = objc_allocateProtocol("Adopting");
        protocol_addProtocol(protocol_, adopted_);
        objc_registerProtocol(protocol_);
    }

    static std::string types(objc_protocol* protocol, SEL selector, BOOL isRequired, BOOL isInstance)
    {
        const objc_method_description method = protocol_getMethodDescription(protocol, selector, isRequired, isInstance);
        return method.types == nullptr ? "none" : method.types;
    }

    Phone phone_;
    objc_protocol* adopted_;
    objc_protocol* protocol_;
};

} // namespace

TEST_F(Protocols, TellTheirRequiredMethods)
{
    EXPECT_EQ(types(adopted_, selector<"must">(), YES, YES), "v@:");
    EXPECT_EQ(types(adopted_, selector<"must">(), NO, YES), "none");
    EXPECT_EQ(types(adopted_, selector<"must">(), YES, NO), "none");
}

TEST_F(Protocols, TellTheirOptionalMethods)
{
    EXPECT_EQ(types(adopted_, selector<"may">(), NO, YES), "v@:q");
    EXPECT_EQ(types(adopted_, selector<"may">(), NO, NO), "v@:d");
    EXPECT_EQ(types(adopted_, selector<"may">(), YES, YES), "none");
}

TEST_F(Protocols, TellTheMethodsOfThoseThatTheyAdopt)
{
    EXPECT_EQ(types(protocol_, selector<"must">(), YES, YES), "v@:");
    EXPECT_EQ(types(protocol_, selector<"may">(), NO, YES), "v@:q");
}
