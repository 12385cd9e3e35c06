#include <gmock/gmock.h>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/UIKit/UIView.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/encoded_here.hpp"

/// Classes described to the runtime by C++ code.

namespace {

using testing::ElementsAre;

std::vector<std::string> events;

class Lamp : public UIView {};

struct LampIvars {
    Strong<NSString> name;
    NSInteger power = 0;
    Weak<NSObject> room;
    CGRect light{};
    BOOL isLit = NO;
};

void setName(Lamp* self, SEL, NSString* name)
{
    ivarsOf<LampIvars>(self).name = name;
}

NSString* name(Lamp* self, SEL)
{
    return ivarsOf<LampIvars>(self).name;
}

NSInteger plotAtXY(Lamp* self, SEL, CGFloat x, CGFloat y, NSInteger day, BOOL isGrey)
{
    ivarsOf<LampIvars>(self).light = CGRect::make(x, y, 0, 0);
    return isGrey != NO ? -day : day;
}

CGRect light(Lamp* self, SEL)
{
    return ivarsOf<LampIvars>(self).light;
}

Lamp* initWithFrame(Lamp* self, SEL, CGRect frame)
{
    superOf<LampIvars, "initWithFrame:", Lamp*>(self, frame);
    ivarsOf<LampIvars>(self).power = 60;
    return self;
}

NSInteger watts(Class, SEL)
{
    return 60;
}

Class registerLamp()
{
    return ClassBuilder<LampIvars>("Lamp", "UIView")
        .ivar<&LampIvars::name>("_name")
        .ivar<&LampIvars::power>("power")
        .ivar<&LampIvars::room>("_room")
        .ivar<&LampIvars::light>("_light")
        .ivar<&LampIvars::isLit>("_isLit")
        .property<&LampIvars::room, "room", "NSObject">()
        .method<"initWithFrame:">(initWithFrame)
        .method<"setName:">(setName)
        .method<"name">(name)
        .method<"plotAtX:Y:Day:isGreyDay:">(plotAtXY)
        .method<"light">(light)
        .classMethod<"watts">(watts)
        .registerClass();
}

Lamp* newLamp(CGRect frame = {})
{
    return static_cast<Lamp*>(send<"alloc", UIView*>(objc_getClass("Lamp"))->initWithFrame(frame));
}

std::ptrdiff_t offsetOf(const char* ivar)
{
    return ivar_getOffset(class_getInstanceVariable(objc_getClass("Lamp"), ivar));
}

std::string ivarEncoding(const char* ivar)
{
    return ivar_getTypeEncoding(class_getInstanceVariable(objc_getClass("Lamp"), ivar));
}

std::string methodEncodingOf(const char* selectorName)
{
    return method_getTypeEncoding(class_getInstanceMethod(objc_getClass("Lamp"), sel_registerName(selectorName)));
}

class ClassBuilderTest : public testing::Test {
protected:
    ClassBuilderTest() { registerLamp(); }
    Phone phone_;
};

} // namespace

TEST_F(ClassBuilderTest, RegistersTheClassUnderItsNameAndSuperclass)
{
    const Class cls = objc_getClass("Lamp");
    ASSERT_NE(cls, nullptr);
    EXPECT_STREQ(class_getName(cls), "Lamp");
    EXPECT_EQ(class_getSuperclass(cls), objc_getClass("UIView"));
}

TEST_F(ClassBuilderTest, DeclaresInstanceVariablesByName)
{
    const Class cls = objc_getClass("Lamp");
    for (const char* ivar : {"_name", "power", "_room", "_light", "_isLit"})
        EXPECT_NE(class_getInstanceVariable(cls, ivar), nullptr) << ivar;
    EXPECT_EQ(class_getInstanceVariable(cls, "name"), nullptr);
}

TEST_F(ClassBuilderTest, LaysInstanceVariablesOutInTheOrderOfTheStruct)
{
    const std::ptrdiff_t start = offsetOf("_name");
    EXPECT_EQ(offsetOf("power") - start, static_cast<std::ptrdiff_t>(offsetof(LampIvars, power)));
    EXPECT_EQ(offsetOf("_room") - start, static_cast<std::ptrdiff_t>(offsetof(LampIvars, room)));
    EXPECT_EQ(offsetOf("_light") - start, static_cast<std::ptrdiff_t>(offsetof(LampIvars, light)));
    EXPECT_EQ(offsetOf("_isLit") - start, static_cast<std::ptrdiff_t>(offsetof(LampIvars, isLit)));
}

TEST_F(ClassBuilderTest, PutsInstanceVariablesBehindThoseOfTheSuperclass)
{
    EXPECT_GE(offsetOf("_name"), static_cast<std::ptrdiff_t>(class_getInstanceSize(objc_getClass("UIView"))));
}

TEST_F(ClassBuilderTest, EncodesTheTypesOfInstanceVariables)
{
    EXPECT_EQ(ivarEncoding("_name"), "@");
    EXPECT_EQ(ivarEncoding("power"), encodedHere("q"));
    EXPECT_EQ(ivarEncoding("_room"), "@");
    EXPECT_EQ(ivarEncoding("_light"), encodedHere("{CGRect={CGPoint=dd}{CGSize=dd}}"));
    EXPECT_EQ(ivarEncoding("_isLit"), encodedHere("B"));
}

TEST_F(ClassBuilderTest, GivesAccessToInstanceVariablesByName)
{
    Lamp* const lamp = newLamp();
    send<"setName:">(lamp, constantString<"desk">());
    EXPECT_EQ(instanceVariable<NSString>(lamp, "_name"), constantString<"desk">());
}

TEST_F(ClassBuilderTest, StartsInstanceVariablesAtZero)
{
    const LampIvars& ivars = ivarsOf<LampIvars>(send<"alloc", Lamp*>(objc_getClass("Lamp")));
    EXPECT_EQ(ivars.name.get(), nullptr);
    EXPECT_EQ(ivars.power, 0);
    EXPECT_EQ(ivars.light, CGRect{});
}

TEST_F(ClassBuilderTest, KeepsTheInstanceVariablesOfTwoObjectsApart)
{
    Lamp* const first = newLamp();
    Lamp* const second = newLamp();
    send<"setName:">(first, constantString<"a">());
    send<"setName:">(second, constantString<"b">());
    const auto firstName = send<"name", NSString*>(first);
    EXPECT_EQ(firstName, constantString<"a">());
}

TEST_F(ClassBuilderTest, AddsMethodsBySelector)
{
    Lamp* const lamp = newLamp();
    EXPECT_TRUE(lamp->respondsToSelector(selector<"plotAtX:Y:Day:isGreyDay:">()));
    EXPECT_FALSE(lamp->respondsToSelector(selector<"plotAtX:Y:Day:">()));
    const auto result = send<"plotAtX:Y:Day:isGreyDay:", NSInteger>(lamp, CGFloat{1.5}, CGFloat{2.5}, NSInteger{31}, YES);
    EXPECT_EQ(result, -31);
    const auto shown = send<"light", CGRect>(lamp);
    EXPECT_EQ(shown, CGRect::make(1.5, 2.5, 0, 0));
}

TEST_F(ClassBuilderTest, AddsClassMethods)
{
    const auto result = send<"watts", NSInteger>(objc_getClass("Lamp"));
    EXPECT_EQ(result, 60);
    EXPECT_EQ(class_respondsToSelector(objc_getClass("Lamp"), selector<"watts">()), NO);
}

TEST_F(ClassBuilderTest, EncodesTheTypesOfMethods)
{
    EXPECT_EQ(methodEncodingOf("name"), "@@:");
    EXPECT_EQ(methodEncodingOf("setName:"), "v@:@");
    EXPECT_EQ(methodEncodingOf("plotAtX:Y:Day:isGreyDay:"), encodedHere("q@:ddqB"));
    EXPECT_EQ(methodEncodingOf("light"), encodedHere("{CGRect={CGPoint=dd}{CGSize=dd}}@:"));
    EXPECT_EQ(methodEncodingOf("initWithFrame:"), encodedHere("@@:{CGRect={CGPoint=dd}{CGSize=dd}}"));
}

TEST_F(ClassBuilderTest, DeclaresPropertiesForSubclassesToo)
{
    struct NoIvars {};
    ClassBuilder<NoIvars>("Lantern", "Lamp").registerClass();
    for (const char* name : {"Lamp", "Lantern"}) {
        objc_property* const room = class_getProperty(objc_getClass(name), "room");
        ASSERT_NE(room, nullptr) << name;
        EXPECT_STREQ(property_getAttributes(room), "T@\"NSObject\",W,N,V_room") << name;
    }
    EXPECT_EQ(class_getProperty(objc_getClass("UIView"), "room"), nullptr);
    EXPECT_EQ(class_getProperty(objc_getClass("Lamp"), "power"), nullptr);
}

TEST_F(ClassBuilderTest, GivesPropertiesAGetterAndASetter)
{
    Lamp* const lamp = newLamp();
    Owned<NSObject> room = adopt(send<"new", NSObject*>(objc_getClass("NSObject")));
    {
        const AutoreleasePool pool;
        send<"setRoom:">(lamp, room.get());
        EXPECT_EQ((send<"room", NSObject*>(lamp)), room.get());
    }
    EXPECT_EQ(retainCount(room), 1U);
    room = nullptr;
    EXPECT_EQ((send<"room", NSObject*>(lamp)), nullptr);
    EXPECT_EQ(methodEncodingOf("room"), "@@:");
    EXPECT_EQ(methodEncodingOf("setRoom:"), "v@:@");
}

TEST_F(ClassBuilderTest, KeepsThePropertyThatIsThere)
{
    const objc_property_attribute_t other{"T", "@"};
    EXPECT_EQ(class_addProperty(objc_getClass("Lamp"), "room", &other, 1), NO);
    EXPECT_STREQ(property_getAttributes(class_getProperty(objc_getClass("Lamp"), "room")), "T@\"NSObject\",W,N,V_room");
}

TEST_F(ClassBuilderTest, ReachesTheSuperclassesMethod)
{
    Lamp* const lamp = newLamp(CGRect::make(1, 2, 3, 4));
    EXPECT_EQ(lamp->frame(), CGRect::make(1, 2, 3, 4));
    EXPECT_EQ(ivarsOf<LampIvars>(lamp).power, 60);
}

TEST(Encodings, AreThoseOfTheRuntime)
{
    EXPECT_STREQ(encode<void>().text, "v");
    EXPECT_STREQ(encode<bool>().text, "B");
    EXPECT_STREQ(encode<signed char>().text, "c");
    EXPECT_STREQ(encode<unsigned char>().text, "C");
    EXPECT_STREQ(encode<short>().text, "s");
    EXPECT_STREQ(encode<unsigned short>().text, "S");
    EXPECT_STREQ(encode<int>().text, "i");
    EXPECT_STREQ(encode<unsigned>().text, "I");
    EXPECT_STREQ(encode<long long>().text, "q");
    EXPECT_STREQ(encode<unsigned long long>().text, "Q");
    EXPECT_STREQ(encode<float>().text, "f");
    EXPECT_STREQ(encode<double>().text, "d");
    EXPECT_STREQ(encode<id>().text, "@");
    EXPECT_STREQ(encode<NSString*>().text, "@");
    EXPECT_STREQ(encode<Class>().text, "#");
    EXPECT_STREQ(encode<SEL>().text, ":");
    EXPECT_STREQ(encode<const char*>().text, "*");
    EXPECT_EQ(encode<CGPoint>().text, encodedHere("{CGPoint=dd}"));
    EXPECT_EQ(encode<CGSize>().text, encodedHere("{CGSize=dd}"));
    EXPECT_EQ(encode<NSRange>().text, encodedHere("{_NSRange=QQ}"));
}

// The end of an object

namespace {

struct TokenIvars {
    NSInteger number = 0;
};

struct HolderIvars {
    Strong<NSObject> first;
    NSInteger plain = 0;
    Strong<NSObject> second;
    Weak<NSObject> seen;
    Strong<NSObject> third;
};

Owned<NSObject> token(NSInteger number)
{
    Owned<NSObject> made = adopt(send<"new", NSObject*>(objc_getClass("Token")));
    ivarsOf<TokenIvars>(made.get()).number = number;
    return made;
}

class ObjectsEnd : public testing::Test {
protected:
    ObjectsEnd()
    {
        ClassBuilder<TokenIvars>("Token", "NSObject")
            .ivar<&TokenIvars::number>("number")
            .method<"dealloc">(+[](NSObject* self, SEL) {
                events.push_back("token " + std::to_string(ivarsOf<TokenIvars>(self).number));
                superOf<TokenIvars, "dealloc">(self);
            })
            .registerClass();
        ClassBuilder<HolderIvars>("Holder", "NSObject")
            .ivar<&HolderIvars::first>("first")
            .ivar<&HolderIvars::plain>("plain")
            .ivar<&HolderIvars::second>("second")
            .ivar<&HolderIvars::seen>("seen")
            .ivar<&HolderIvars::third>("third")
            .registerClass();
    }

    Phone phone_;
};

NSObject* newHolder()
{
    NSObject* const holder = send<"new", NSObject*>(objc_getClass("Holder"));
    auto& ivars = ivarsOf<HolderIvars>(holder);
    ivars.first = token(1);
    ivars.second = token(2);
    ivars.third = token(3);
    return holder;
}

} // namespace

TEST_F(ObjectsEnd, ReleasesStrongVariablesInReverseOrder)
{
    objc_release(newHolder());
    EXPECT_THAT(events, ElementsAre("token 3", "token 2", "token 1"));
}

TEST_F(ObjectsEnd, ReleasesNothingMoreThanOnce)
{
    const Owned<NSObject> shared = token(7);
    NSObject* const holder = newHolder();
    ivarsOf<HolderIvars>(holder).second = shared.get();
    objc_release(holder);
    EXPECT_EQ(retainCount(shared), 1U);
}

TEST_F(ObjectsEnd, LeavesWeakVariablesObjectsAlone)
{
    const Owned<NSObject> seen = token(9);
    NSObject* const holder = newHolder();
    ivarsOf<HolderIvars>(holder).seen = seen.get();
    objc_release(holder);
    EXPECT_EQ(retainCount(seen), 1U);
}

TEST_F(ObjectsEnd, ForgetsItsWeakVariables)
{
    // The object that was referred to goes later, and then nothing must be written where the holder was.
    Owned<NSObject> seen = token(9);
    NSObject* const holder = newHolder();
    ivarsOf<HolderIvars>(holder).seen = seen.get();
    static std::vector<id*> destroyed;
    auto* const slot = reinterpret_cast<id*>(&ivarsOf<HolderIvars>(holder).seen);
    simulator::replaceMethod<"dealloc">(
        objc_getClass("NSObject"), +[](NSObject* self, SEL) {
            // The memory stays, so that a late write shows.
            if (object_getClass(self) == objc_getClass("Holder"))
                destroyed.push_back(reinterpret_cast<id*>(&ivarsOf<HolderIvars>(self).seen));
        });
    objc_release(holder);
    ASSERT_THAT(destroyed, ElementsAre(slot));
    const id mark = token(1).leak();
    *slot = mark;
    seen = nullptr;
    EXPECT_EQ(*slot, mark);
}

// Hooks

namespace {

struct BaseIvars {};
struct DerivedIvars {};

class HookTest : public testing::Test {
protected:
    HookTest()
    {
        ClassBuilder<BaseIvars>("HookBase", "NSObject")
            .method<"answer">(+[](NSObject*, SEL) -> NSInteger { return 1; })
            .registerClass();
        ClassBuilder<DerivedIvars>("HookDerived", "HookBase").registerClass();
    }

    static NSInteger answerOf(const char* className)
    {
        return send<"answer", NSInteger>(send<"new", NSObject*>(objc_getClass(className)));
    }

    using Answer = NSInteger (*)(NSObject*, SEL);
    static inline Answer previous = nullptr;

    static void hook(const char* className)
    {
        MSHookMessageEx(
            objc_getClass(className), selector<"answer">(),
            reinterpret_cast<IMP>(+[](NSObject* self, SEL message) -> NSInteger { return previous(self, message) + 10; }),
            reinterpret_cast<IMP*>(&previous));
    }
};

} // namespace

TEST_F(HookTest, ReplacesAMethodAndGivesThePreviousOne)
{
    hook("HookBase");
    EXPECT_EQ(answerOf("HookBase"), 11);
}

TEST_F(HookTest, ReachesSubclasses)
{
    hook("HookBase");
    EXPECT_EQ(answerOf("HookDerived"), 11);
}

TEST_F(HookTest, ReplacesAnInheritedMethodInThatClassAlone)
{
    hook("HookDerived");
    EXPECT_EQ(answerOf("HookDerived"), 11);
    EXPECT_EQ(answerOf("HookBase"), 1);
}

TEST_F(HookTest, ReachesObjectsThatAreThereAlready)
{
    NSObject* const object = send<"new", NSObject*>(objc_getClass("HookBase"));
    EXPECT_EQ((send<"answer", NSInteger>(object)), 1);
    hook("HookBase");
    EXPECT_EQ((send<"answer", NSInteger>(object)), 11);
}

TEST_F(HookTest, PassesOverAMissingClass)
{
    hook("NoSuchClass");
    EXPECT_EQ(previous, nullptr);
}

TEST_F(HookTest, PassesOverAMissingMethod)
{
    IMP slot = nullptr;
    MSHookMessageEx(objc_getClass("HookBase"), selector<"question">(), reinterpret_cast<IMP>(+[] {}), &slot);
    EXPECT_EQ(slot, nullptr);
    EXPECT_EQ(class_respondsToSelector(objc_getClass("HookBase"), selector<"question">()), NO);
}

TEST_F(HookTest, NeedsNoSlot)
{
    MSHookMessageEx(objc_getClass("HookBase"), selector<"answer">(),
                    reinterpret_cast<IMP>(+[](NSObject*, SEL) -> NSInteger { return 5; }), nullptr);
    EXPECT_EQ(answerOf("HookBase"), 5);
}
