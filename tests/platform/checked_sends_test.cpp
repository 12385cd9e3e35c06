#include <gmock/gmock.h>

#include "platform/Foundation/NSString.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/encoded_here.hpp"

/// What becomes of a send whose types are not the method's, in a checked build.

namespace {

class CheckedSend : public testing::Test {
    Phone phone_;

protected:
    UIView* const view = UIView::alloc()->initWithFrame(CGRectZero);
};

struct LampIvars {};

/// Matches the line that the process ends with. Encodings are given for words of 64 bits; those that the machine's own compiler
/// wrote have frame offsets among them.
auto says(const std::string& method, const std::string& sent, const std::string& declared)
{
    return testing::StartsWith(method + " is sent as " + encodedHere(sent) + ", but declared as " + encodedHere(declared) + "\n");
}

} // namespace

TEST_F(CheckedSend, EndsTheProcessForAnIntegerInPlaceOfABool)
{
    EXPECT_DEATH(send<"setHidden:">(view, NSInteger{1}), says("-[UIView setHidden:]", "v@:q", "v@:B"));
}

TEST_F(CheckedSend, EndsTheProcessForAnIntInPlaceOfAnInteger)
{
    if constexpr (sizeof(int) != sizeof(NSInteger)) {
        EXPECT_DEATH(send<"setTag:">(view, 5), says("-[UIView setTag:]", "v@:i", "v@:q"));
    }
}

TEST_F(CheckedSend, EndsTheProcessForAResultOfAnotherType)
{
    EXPECT_DEATH((send<"frame", CGPoint>(view)), says("-[UIView frame]", "{CGPoint=dd}@:", "{CGRect={CGPoint=dd}{CGSize=dd}}@:"));
}

TEST_F(CheckedSend, NamesTheReceiversOwnClass)
{
    UIScrollView* const scrollView = UIScrollView::alloc()->initWithFrame(CGRectZero);
    EXPECT_DEATH(send<"setTag:">(scrollView, BOOL{YES}), says("-[UIScrollView setTag:]", "v@:B", "v@:q"));
}

TEST_F(CheckedSend, ComparesAgainWhenTheSameSendMeetsAnotherClass)
{
    const auto ask = [](id object) { send<"number", NSInteger>(object); };
    ClassBuilder<LampIvars>("Lamp", "NSObject").method<"number">(+[](NSObject*, SEL) -> NSInteger { return 1; }).registerClass();
    struct CandleIvars {};
    ClassBuilder<CandleIvars>("Candle", "NSObject").method<"number">(+[](NSObject*, SEL) -> double { return 1; }).registerClass();
    ask(send<"new", id>(objc_getClass("Lamp")));
    EXPECT_DEATH(ask(send<"new", id>(objc_getClass("Candle"))), says("-[Candle number]", "q@:", "d@:"));
}

TEST_F(CheckedSend, ComparesWhatIsSentToAClass)
{
    EXPECT_DEATH((send<"stringWithUTF8String:", id>(classNamed<"NSString">(), view)),
                 testing::StartsWith("+[NSString stringWithUTF8String:] is sent as @@:@, but declared as @"));
}

TEST_F(CheckedSend, ComparesWhatIsSentToSuper)
{
    ClassBuilder<LampIvars>("Lamp", "UIView")
        .method<"setTag:">(
            +[](UIView* self, SEL, NSInteger tag) { superOf<LampIvars, "setTag:">(self, static_cast<short>(tag)); })
        .registerClass();
    UIView* const lamp = send<"new", UIView*>(objc_getClass("Lamp"));
    EXPECT_DEATH(lamp->setTag(1), says("-[UIView setTag:]", "v@:s", "v@:q"));
}

TEST_F(CheckedSend, ComparesTheNamedArgumentsOfAVariadicMessage)
{
    EXPECT_DEATH((sendVariadic<"stringWithFormat:", id>(classNamed<"NSString">(), 1, 2)),
                 testing::StartsWith("+[NSString stringWithFormat:] is sent as @@:i, but declared as @"));
}

TEST_F(CheckedSend, LeavesAMessageAloneThatNoMethodAnswers)
{
    EXPECT_ANY_THROW(send<"noSuchMessage:">(view, 1));
    EXPECT_EQ((send<"noSuchMessage:", int>(static_cast<UIView*>(nullptr), 1)), 0);
}
