#include <atomic>
#include <gmock/gmock.h>
#include <memory>
#include <thread>
#include <type_traits>

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/UIKit/UIView.hpp"
#include "platform/runtime/AutoreleasePool.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "platform/runtime/ObjectLock.hpp"
#include "platform/runtime/each.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "tests/support/Phone.hpp"

/// The C++ face of the object runtime, on classes of the tests' own.

namespace {

using testing::ElementsAre;

std::vector<std::string> events;

/// An object whose end is noted.
struct MortalIvars {
    NSInteger number = 0;
};

class Mortal : public NSObject {};

void mortalDealloc(Mortal* self, SEL)
{
    events.push_back("end of " + std::to_string(ivarsOf<MortalIvars>(self).number));
    superOf<MortalIvars, "dealloc">(self);
}

Owned<Mortal> mortal(NSInteger number = 0)
{
    if (objc_getClass("Mortal") == nullptr)
        ClassBuilder<MortalIvars>("Mortal", "NSObject")
            .ivar<&MortalIvars::number>("number")
            .method<"dealloc">(mortalDealloc)
            .registerClass();
    Owned<Mortal> made = adopt(send<"new", Mortal*>(objc_getClass("Mortal")));
    ivarsOf<MortalIvars>(made.get()).number = number;
    return made;
}

/// Leaves something other than zero where functions give their results.
[[gnu::noinline]] double leftOver()
{
    static const volatile double value = 1.5;
    return value;
}

template <class Result>
[[gnu::noinline]] Result sentToNil()
{
    leftOver();
    return send<"whatever", Result>(static_cast<NSObject*>(nullptr));
}

} // namespace

// Sends

TEST(SendToNil, GivesZeroForEveryKindOfResult)
{
    EXPECT_EQ(sentToNil<int>(), 0);
    EXPECT_EQ(sentToNil<NSInteger>(), 0);
    EXPECT_EQ(sentToNil<NSUInteger>(), 0U);
    EXPECT_EQ(sentToNil<BOOL>(), NO);
    EXPECT_EQ(sentToNil<unichar>(), 0);
    EXPECT_EQ(sentToNil<double>(), 0.0);
    EXPECT_EQ(sentToNil<float>(), 0.0F);
    EXPECT_EQ(sentToNil<id>(), nullptr);
    EXPECT_EQ(sentToNil<const char*>(), nullptr);
}

TEST(SendToNil, GivesStructsOfZeros)
{
    EXPECT_EQ(sentToNil<CGRect>(), CGRect{});
    EXPECT_EQ(sentToNil<CGSize>(), CGSize{});
    EXPECT_EQ(sentToNil<CGPoint>(), CGPoint{});
    const auto range = sentToNil<NSRange>();
    EXPECT_EQ(range.location, 0U);
    EXPECT_EQ(range.length, 0U);
}

TEST(SendToNil, IsLegalThroughANullPointerOfAnyClass)
{
    // The compiler must not know that they are null.
    NSString* volatile text = nullptr;
    UIView* volatile view = nullptr;
    NSArray* volatile array = nullptr;
    NSString* const noText = text;
    UIView* const noView = view;
    NSArray* const noArray = array;
    EXPECT_EQ(noText->length(), 0U);
    EXPECT_EQ(noView->frame(), CGRect{});
    EXPECT_EQ(noView->superview()->superview()->alpha(), 0.0);
    EXPECT_EQ(noArray->count(), 0U);
}

TEST(SendToNil, GivesZeroWhenItGoesToSuper)
{
    const auto sent = sendSuper<"frame", CGRect>(objc_getClass("NSObject"), static_cast<NSObject*>(nullptr));
    EXPECT_EQ(sent, CGRect{});
}

TEST(Send, CarriesStructsBothWays)
{
    const Phone phone;
    UIView* const view = UIView::alloc()->initWithFrame(CGRect::make(1.5, 2.5, 30, 40));
    EXPECT_EQ(view->frame(), CGRect::make(1.5, 2.5, 30, 40));
    EXPECT_EQ(view->center(), (CGPoint{16.5, 22.5}));
}

TEST(Send, CarriesSmallStructsInRegisters)
{
    NSString* const hello = constantString<"hello">();
    const NSRange range = send<"rangeOfString:", NSRange>(hello, constantString<"ll">());
    EXPECT_EQ(range.location, 2U);
    EXPECT_EQ(range.length, 2U);
}

TEST(Send, CarriesVariadicArguments)
{
    const AutoreleasePool pool;
    NSString* const made = NSString::stringWithFormat(constantString<"%ld %@ %.2f %d">(), 5L, constantString<"x">(), 1.5, 7);
    EXPECT_STREQ(made->UTF8String(), "5 x 1.50 7");
}

// Class lookup

TEST(Hook, OfAClassThatHasHadNoMessageYetConcernsThatClassAlone)
{
    const Class hooked = objc_allocateClassPair(objc_getClass("NSObject"), "HookedBeforeAnyMessage", 0);
    class_addMethod(hooked, selector<"hookedMessage">(), reinterpret_cast<IMP>(+[](NSObject*, SEL) {}), "v@:");
    objc_registerClassPair(hooked);
    const Class other = objc_allocateClassPair(objc_getClass("NSObject"), "OtherBeforeAnyMessage", 0);
    objc_registerClassPair(other);
    const auto replacement = reinterpret_cast<IMP>(+[](NSObject*, SEL) {});
    MSHookMessageEx(hooked, selector<"hookedMessage">(), replacement, nullptr);
    EXPECT_EQ(class_getMethodImplementation(hooked, selector<"hookedMessage">()), replacement);
    EXPECT_NE(class_getMethodImplementation(other, selector<"hookedMessage">()), replacement);
}

TEST(ClassNamed, LooksAgainUntilTheClassIsThere)
{
    EXPECT_EQ(classNamed<"Latecomer">(), nullptr);
    struct Ivars {};
    const Class cls = ClassBuilder<Ivars>("Latecomer", "NSObject").registerClass();
    EXPECT_EQ(classNamed<"Latecomer">(), cls);
}

TEST(ConstantString, IsMadeOnce)
{
    EXPECT_EQ(constantString<"once">(), constantString<"once">());
}

TEST(ConstantString, IsUTF8)
{
    EXPECT_EQ(constantString<"\u00B0">()->length(), 1U);
    EXPECT_EQ(constantString<"\u00B0">()->characterAtIndex(0), 0x00B0);
}

// Ownership

TEST(OwnedReference, TakesAdoptedObjectsAsTheyAre)
{
    EXPECT_EQ(retainCount(mortal()), 1U);
}

TEST(OwnedReference, RetainsAPlainPointer)
{
    const Owned<Mortal> first = mortal();
    const Owned<Mortal> second(first.get());
    EXPECT_EQ(retainCount(first), 2U);
}

TEST(OwnedReference, ReleasesAtTheEndOfItsScope)
{
    {
        const Owned<Mortal> object = mortal(1);
        EXPECT_THAT(events, ElementsAre());
    }
    EXPECT_THAT(events, ElementsAre("end of 1"));
}

TEST(OwnedReference, SharesWhenItIsCopied)
{
    const Owned<Mortal> first = mortal();
    {
        const Owned<Mortal> second = first;
        EXPECT_EQ(second.get(), first.get());
        EXPECT_EQ(retainCount(first), 2U);
    }
    EXPECT_EQ(retainCount(first), 1U);
}

TEST(OwnedReference, EmptiesItsSourceWhenItIsMoved)
{
    Owned<Mortal> first = mortal();
    const Owned<Mortal> second = std::move(first);
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(retainCount(second), 1U);
}

TEST(OwnedReference, HandsOverToAnOwnerOfASuperclass)
{
    Owned<Mortal> first = mortal();
    const Owned<NSObject> second = std::move(first);
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(retainCount(second), 1U);
}

TEST(OwnedReference, ReleasesWhatItHeldWhenItIsAssigned)
{
    Owned<Mortal> reference = mortal(1);
    reference = mortal(2);
    EXPECT_THAT(events, ElementsAre("end of 1"));
}

TEST(OwnedReference, LeaksOnRequest)
{
    Mortal* leaked = nullptr;
    {
        Owned<Mortal> reference = mortal(1);
        leaked = reference.leak();
    }
    EXPECT_THAT(events, ElementsAre());
    EXPECT_EQ(retainCount(leaked), 1U);
    objc_release(leaked);
}

TEST(OwnedReference, HandsOverToThePool)
{
    {
        const AutoreleasePool pool;
        mortal(1).autorelease();
        EXPECT_THAT(events, ElementsAre());
    }
    EXPECT_THAT(events, ElementsAre("end of 1"));
}

TEST(StrongSlot, RetainsWhatItIsGiven)
{
    const Owned<Mortal> object = mortal();
    static constinit Strong<Mortal> slot;
    slot = object.get();
    EXPECT_EQ(retainCount(object), 2U);
}

TEST(StrongSlot, ReleasesThePreviousObject)
{
    static constinit Strong<Mortal> slot;
    slot = mortal(1);
    slot = mortal(2);
    EXPECT_THAT(events, ElementsAre("end of 1"));
    slot = nullptr;
    EXPECT_THAT(events, ElementsAre("end of 1", "end of 2"));
}

TEST(StrongSlot, TakesOverAnOwnedReference)
{
    static constinit Strong<Mortal> slot;
    slot = mortal();
    EXPECT_EQ(retainCount(slot), 1U);
}

TEST(StrongSlot, TakesOverAnOwnedReferenceToASubclass)
{
    static constinit Strong<NSObject> slot;
    slot = mortal();
    EXPECT_EQ(retainCount(slot), 1U);
}

TEST(StrongSlot, MayBeGivenWhatItHolds)
{
    static constinit Strong<Mortal> slot;
    slot = mortal();
    slot = slot.get();
    const Strong<Mortal>& same = slot;
    slot = same;
    EXPECT_THAT(events, ElementsAre());
    EXPECT_EQ(retainCount(slot), 1U);
}

TEST(StrongSlot, HasNoDestructor)
{
    EXPECT_TRUE(std::is_trivially_destructible_v<Strong<NSObject>>);
}

using WeakSlot = TestOn<Phone>;

TEST_F(WeakSlot, DoesNotRetain)
{
    const Owned<Mortal> object = mortal();
    Weak<Mortal> slot;
    slot = object.get();
    EXPECT_EQ(retainCount(object), 1U);
    EXPECT_EQ(slot.load().get(), object.get());
    slot = nullptr;
}

TEST_F(WeakSlot, ReadsNilOnceTheObjectIsGone)
{
    Weak<Mortal> slot;
    {
        const Owned<Mortal> object = mortal();
        slot = object.get();
    }
    EXPECT_EQ(slot.load().get(), nullptr);
}

TEST_F(WeakSlot, KeepsTheObjectAliveForAsLongAsTheResultLives)
{
    Weak<Mortal> slot;
    Owned<Mortal> object = mortal(1);
    slot = object.get();
    const Owned<Mortal> loaded = slot.load();
    object = nullptr;
    EXPECT_THAT(events, ElementsAre());
    EXPECT_EQ(retainCount(loaded), 1U);
}

TEST_F(WeakSlot, FollowsTheLastAssignment)
{
    const Owned<Mortal> second = mortal(2);
    Weak<Mortal> slot;
    {
        const Owned<Mortal> first = mortal(1);
        slot = first.get();
        slot = second.get();
    }
    EXPECT_EQ(slot.load().get(), second.get());
    slot = nullptr;
}

TEST_F(WeakSlot, IsOneOfAnyNumber)
{
    Weak<Mortal> slots[3];
    {
        const Owned<Mortal> object = mortal();
        for (auto& slot : slots)
            slot = object.get();
    }
    for (auto& slot : slots)
        EXPECT_EQ(slot.load().get(), nullptr);
}

TEST_F(WeakSlot, ReadsNilFromTheMomentTheObjectsEndBegins)
{
    static Weak<NSObject> slot;
    static bool wasNil = false;
    struct WatcherIvars {};
    ClassBuilder<WatcherIvars>("Watcher", "NSObject")
        .method<"dealloc">(+[](NSObject* self, SEL) {
            wasNil = slot.load().get() == nullptr;
            superOf<WatcherIvars, "dealloc">(self);
        })
        .registerClass();
    NSObject* const watcher = send<"new", NSObject*>(objc_getClass("Watcher"));
    slot = watcher;
    objc_release(watcher);
    EXPECT_TRUE(wasNil);
    EXPECT_EQ(slot.load().get(), nullptr);
}

TEST(AutoreleasePool, ReleasesWhatCameIntoItAtTheEnd)
{
    {
        const AutoreleasePool pool;
        mortal(1).autorelease();
        {
            const AutoreleasePool inner;
            mortal(2).autorelease();
        }
        EXPECT_THAT(events, ElementsAre("end of 2"));
    }
    EXPECT_THAT(events, ElementsAre("end of 2", "end of 1"));
}

TEST(AutoreleasePool, DrainsWhenAnExceptionPasses)
{
    try {
        const AutoreleasePool pool;
        mortal(1).autorelease();
        throw 1;
    } catch (int) {
    }
    EXPECT_THAT(events, ElementsAre("end of 1"));
}

// Locks

TEST(ObjectLock, IsRecursive)
{
    const Owned<Mortal> object = mortal();
    const ObjectLock outer(object);
    const ObjectLock inner(object);
    SUCCEED();
}

namespace {

/// Whether another thread gets the object's lock at once. The thread that does not is left waiting.
bool isFree(NSObject* object)
{
    const auto got = std::make_shared<std::atomic<bool>>(false);
    std::thread([object, got] {
        {
            const ObjectLock lock(object);
        }
        *got = true;
    }).detach();
    for (int i = 0; i < 200 && !*got; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return *got;
}

} // namespace

TEST(ObjectLock, KeepsAnotherThreadOut)
{
    // Not released: the other thread still waits for its lock.
    Mortal* const object = mortal().leak();
    const ObjectLock lock(object);
    EXPECT_FALSE(isFree(object));
}

TEST(ObjectLock, LetsAnotherThreadInAfterwards)
{
    const Owned<Mortal> object = mortal();
    {
        const ObjectLock outer(object);
        const ObjectLock inner(object);
    }
    EXPECT_TRUE(isFree(object));
}

TEST(ObjectLock, LetsGoWhenAnExceptionPasses)
{
    const Owned<Mortal> object = mortal();
    try {
        const ObjectLock lock(object);
        throw 1;
    } catch (int) {
    }
    EXPECT_TRUE(isFree(object));
}

TEST(ObjectLock, IsOneOfItsObject)
{
    const Owned<Mortal> first = mortal();
    const Owned<Mortal> second = mortal();
    const ObjectLock lock(first);
    EXPECT_TRUE(isFree(second));
}

// Enumeration

namespace {

NSMutableArray* numbers(NSInteger count)
{
    NSMutableArray* const array = NSMutableArray::alloc()->init();
    for (NSInteger i = 0; i < count; ++i)
        array->addObject(mortal(i));
    return array;
}

std::vector<NSInteger> walked(id collection)
{
    std::vector<NSInteger> seen;
    for (Mortal* object : each<Mortal>(collection))
        seen.push_back(ivarsOf<MortalIvars>(object).number);
    return seen;
}

} // namespace

TEST(Each, VisitsEveryItemInOrder)
{
    for (const NSInteger count : {1, 2, 15, 16, 17, 32, 33, 100}) {
        std::vector<NSInteger> expected;
        for (NSInteger i = 0; i < count; ++i)
            expected.push_back(i);
        EXPECT_EQ(walked(numbers(count)), expected) << count;
    }
}

TEST(Each, VisitsNothingInAnEmptyCollection)
{
    EXPECT_THAT(walked(numbers(0)), ElementsAre());
}

TEST(Each, VisitsNothingInNil)
{
    EXPECT_THAT(walked(nullptr), ElementsAre());
}

TEST(Each, MayBeLeftEarly)
{
    NSInteger visited = 0;
    for ([[maybe_unused]] Mortal* object : each<Mortal>(numbers(40))) {
        if (++visited == 20)
            break;
    }
    EXPECT_EQ(visited, 20);
}

TEST(Each, RaisesWhenTheCollectionGrowsDuringTheWalk)
{
    NSMutableArray* const array = numbers(3);
    NSInteger visited = 0;
    EXPECT_ANY_THROW({
        for ([[maybe_unused]] Mortal* object : each<Mortal>(array)) {
            ++visited;
            array->addObject(mortal(9));
        }
    });
    EXPECT_EQ(visited, 1);
}

TEST(Each, RaisesWhenTheCollectionIsEmptiedDuringTheWalk)
{
    NSMutableArray* const array = numbers(3);
    EXPECT_ANY_THROW({
        for ([[maybe_unused]] Mortal* object : each<Mortal>(array))
            array->removeAllObjects();
    });
}
