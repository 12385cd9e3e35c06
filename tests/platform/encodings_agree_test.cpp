#include <gmock/gmock.h>

#include "platform/runtime/encodings_agree.hpp"

/// Which sends and methods fit together, by their encodings alone.

namespace {

struct Pair {
    const char* name;
    const char* sent;
    const char* declared;
};

std::string nameOf(const testing::TestParamInfo<Pair>& info)
{
    return info.param.name;
}

void PrintTo(const Pair& pair, std::ostream* out)
{
    *out << pair.sent << " and " << pair.declared;
}

class AgreeingEncodings : public testing::TestWithParam<Pair> {};
class DisagreeingEncodings : public testing::TestWithParam<Pair> {};

} // namespace

TEST_P(AgreeingEncodings, FitBothWays)
{
    EXPECT_TRUE(encodingsAgree(GetParam().sent, GetParam().declared));
    EXPECT_TRUE(encodingsAgree(GetParam().declared, GetParam().sent));
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, AgreeingEncodings,
    testing::Values(
        Pair{"TheSame", "v@:q", "v@:q"}, //
        Pair{"FrameOffsets", "v@:qd", "v32@0:8q16d24"}, Pair{"OffsetsOfRegisters", "v@:i", "v12@+0:+4i-8"},
        Pair{"Qualifiers", "v@:@*^v", "Vv40@0:8N@16r*24o^v32"}, Pair{"QualifiersBehindAPointer", "v@:^v", "v@:^r^{State=i}"},
        Pair{"AnObjectOfANamedClass", "@@:@", "@\"NSString\"24@0:8@\"NSArray\"16"}, Pair{"AnObjectAndAClass", "#@:@", "@#:#"}, //
        Pair{"AnObjectAndABlock", "v@:@i", "v@:@?i"}, Pair{"SignedAndPlainBool", "c@:B", "B@:c"},                              //
        Pair{"UnsignedAndPlainBool", "C@:B", "B@:C"}, Pair{"LongOf32Bits", "l@:L", "i@:I"},
        Pair{"PointersToDifferentTypes", "v@:^v^v^v^v", "v@:^{State=q[4i]^{State}}^@^d^^[2{P=dd}]"},
        Pair{"APointerToAFunction", "v@:^vi", "v@:^?i"}, Pair{"ATextAndAPointer", "*@:^v", "^C@:*"},
        Pair{"AnObjectOfCoreFoundation", "@@:@", "^{CGColor=}16@0:8^{__CFString=}"},
        Pair{"StructsOfDifferentNames", "{CGRect={CGPoint=dd}{CGSize=dd}}@:", "{_NSRect={_NSPoint=dd}{_NSSize=dd}}16@0:8"},
        Pair{"AStructWithoutAName", "v@:{_NSRange=QQ}", "v@:{?=QQ}"},
        Pair{"AStructWithNamedMembers", "v@:{CGPoint=dd}", "v@:{CGPoint=\"x\"d\"y\"d}"},
        Pair{"Arrays", "v@:{S=[12i]}", "v@:{T=[12i]}"}),
    nameOf);

TEST_P(DisagreeingEncodings, DoNotFitEitherWay)
{
    EXPECT_FALSE(encodingsAgree(GetParam().sent, GetParam().declared));
    EXPECT_FALSE(encodingsAgree(GetParam().declared, GetParam().sent));
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, DisagreeingEncodings,
    testing::Values(Pair{"AnIntegerAndABool", "v@:q", "v20@0:8C16"}, Pair{"AnIntegerAndAnInt", "v@:i", "v24@0:8q16"},
                    Pair{"SignedAndUnsigned", "v@:q", "v@:Q"},                                                   //
                    Pair{"ShortAndInt", "v@:s", "v@:i"},                                                         //
                    Pair{"AUnicharAndABool", "S@:", "C@:"}, Pair{"FloatAndDouble", "f@:", "d@:"},                //
                    Pair{"AnIntegerAndADouble", "v@:q", "v@:d"}, Pair{"ResultAndNone", "v@:", "@16@0:8"},        //
                    Pair{"OneArgumentLess", "v@:@", "v@:@@"}, Pair{"ArgumentsInAnotherOrder", "v@:@q", "v@:q@"}, //
                    Pair{"AnObjectAndAText", "v@:@", "v@:*"}, Pair{"AnObjectAndAPointerToObjects", "v@:@", "v@:^@"},
                    Pair{"AnObjectAndASelector", "v@:@", "v@::"}, //
                    Pair{"AnObjectAndAnInteger", "v@:@", "v@:q"}, Pair{"APointerAndASelector", "v@:^v", "v@::"},
                    Pair{"StructsOfOtherMembers", "{CGPoint=dd}@:", "{CGPoint=ff}@:"},
                    Pair{"AStructAndItsMembers", "v@:{CGPoint=dd}", "v@:dd"},
                    Pair{"StructsOfOtherLayout", "v@:{CGRect={CGPoint=dd}{CGSize=dd}}", "v@:{CGRect=dddd}"},
                    Pair{"AStructAndAPointerToIt", "v@:{CGPoint=dd}", "v@:^{CGPoint=dd}"},
                    Pair{"ArraysOfOtherLengths", "v@:{S=[12i]}", "v@:{S=[13i]}"},
                    Pair{"BitFieldsOfOtherWidths", "v@:{S=b3}", "v@:{S=b4}"}),
    nameOf);
