#include <algorithm>
#include <gmock/gmock.h>

#include "platform/UIKit/UIWindow.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/motion.hpp"
#include "simulator/uikit/touch_input.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/Picture.hpp"
#include "tests/support/drawn_texts.hpp"
#include "tests/support/encoded_here.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/live_objects.hpp"
#include "tests/support/objects.hpp"
#include "tests/support/strip.hpp"

/// The strip of the applications that have notifications: icons, badges, the row, and how it is emptied.

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* mail = "com.apple.mobilemail";
constexpr const char* messages = "com.apple.MobileSMS";
constexpr const char* ferry = "org.solvane.ferry";

class AppsView : public testing::Test {
protected:
    AppsView() { use(CGRect::make(0, 0, 168, 100)); }

    void use(CGRect frame) { strip_ = strip::make(frame); }

    /// As the lock screen does: the item is in the list by then.
    void arrive(const Owned<NSObject>& item)
    {
        list_->addObject(item);
        strip::setItems(strip_, list_);
        strip::add(strip_, item);
        strip::show(strip_);
    }
    void arrive(const std::string& bundleIdentifier) { arrive(notification(bundleIdentifier)); }

    /// Shows the icons of so many applications.
    void fill(int count)
    {
        for (int i = 0; i < count; ++i)
            arrive("org.example." + std::to_string(i));
    }

    UIImageView* icon(const std::string& identifier) { return strip::iconOf(strip_, identifier); }
    UIImageView* badge(const std::string& identifier) { return strip::badgeOf(strip_, identifier); }

    fs::path badgeFile(const char* name = "Badge.png") const
    {
        return phone_.tree().root() / "Library/Application Support/Solvane" / name;
    }

    /// Where the icons stand, from left to right.
    std::vector<CGFloat> places()
    {
        std::vector<CGFloat> all;
        for (UIView* view : each<UIView>(strip_->subviews()))
            all.push_back(view->frame().origin.x);
        std::ranges::sort(all);
        return all;
    }

    std::vector<UIView*> subviews()
    {
        std::vector<UIView*> all;
        for (UIView* view : each<UIView>(strip_->subviews()))
            all.push_back(view);
        return all;
    }

    InjectedMorningPhone phone_;
    Owned<UIScrollView> strip_;
    Owned<NSMutableArray> list_ = arrayOf({});
};

/// The picture of a badge with that number in it.
Picture badgePicture(const std::string& number)
{
    const auto draw = exportedFunction<UIImage*(NSString*, UIImage*, CGPoint)>("drawTextInImage2");
    UIImage* const background = UIImage::imageWithContentsOfFile(text("/Library/Application Support/Solvane/Badge.png"));
    return pictureOf(draw(text(number), background, {12.5, 7.5}));
}

struct NoState {};

/// An object that tells of its end.
NSObject* mortal(const char* className)
{
    simulator::SimulatedClass<NoState>(className, "NSObject").registerClass();
    static void (*dealloc)(NSObject*, SEL);
    dealloc = reinterpret_cast<void (*)(NSObject*, SEL)>(
        class_getMethodImplementation(objc_getClass("NSObject"), selector<"dealloc">()));
    simulator::addMethod<"dealloc">(
        objc_getClass(className), +[](NSObject* self, SEL message) {
            MessageLog::messages().emplace_back(class_getName(object_getClass(self)));
            dealloc(self, message);
        });
    return newObject(className);
}

} // namespace

// The class and its properties

TEST_F(AppsView, IsAScrollView)
{
    EXPECT_STREQ(class_getName(class_getSuperclass(objc_getClass("SVAppsView"))), "UIScrollView");
}

TEST_F(AppsView, AnswersItsInterface)
{
    for (const char* name : {"initWithFrame:", "items", "setItems:", "iconImgViews", "setIconImgViews:", "identifierForListItem:",
                             "iconForListItem:", "addIconFor:andBadgeCount:", "showIcons", "clearAll"}) {
        const Method method = class_getInstanceMethod(objc_getClass("SVAppsView"), sel_registerName(name));
        ASSERT_NE(method, nullptr) << name;
        EXPECT_TRUE(isInLibrary(reinterpret_cast<const void*>(method_getImplementation(method)))) << name;
    }
    EXPECT_EQ(std::string(method_getTypeEncoding(
                  class_getInstanceMethod(objc_getClass("SVAppsView"), selector<"addIconFor:andBadgeCount:">()))),
              encodedHere("v@:@q"));
}

TEST_F(AppsView, HasItsFrame)
{
    use(CGRect::make(76, 100, 168, 100));
    EXPECT_EQ(strip_->frame(), CGRect::make(76, 100, 168, 100));
}

TEST_F(AppsView, BeginsWithoutItemsAndWithoutIcons)
{
    EXPECT_EQ(strip::items(strip_), nullptr);
    ASSERT_NE(strip::icons(strip_), nullptr);
    EXPECT_TRUE(strip::icons(strip_)->isKindOfClass(objc_getClass("NSMutableDictionary")));
    EXPECT_EQ(strip::icons(strip_)->count(), 0U);
    EXPECT_EQ(strip_->subviews()->count(), 0U);
}

TEST_F(AppsView, IsNilWhenTheScrollViewIs)
{
    simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("UIScrollView"), +[](UIView*, SEL, CGRect) { return static_cast<UIView*>(nullptr); });
    EXPECT_EQ(strip::make(), nullptr);
}

TEST_F(AppsView, ScrollsTakesTouchesAndHidesItsIndicators)
{
    EXPECT_EQ((send<"showsVerticalScrollIndicator", BOOL>(strip_.get())), NO);
    EXPECT_EQ((send<"showsHorizontalScrollIndicator", BOOL>(strip_.get())), NO);
    EXPECT_EQ((send<"isScrollEnabled", BOOL>(strip_.get())), YES);
    EXPECT_TRUE(strip_->isUserInteractionEnabled());
}

TEST_F(AppsView, SetsWhatAScrollViewHasByDefaultToo)
{
    Noted<"SVAppsView", "setShowsVerticalScrollIndicator:", void, BOOL>::install();
    Noted<"SVAppsView", "setShowsHorizontalScrollIndicator:", void, BOOL>::install();
    Noted<"SVAppsView", "setScrollEnabled:", void, BOOL>::install();
    Noted<"SVAppsView", "setUserInteractionEnabled:", void, BOOL>::install();
    strip::make();
    EXPECT_THAT(MessageLog::messages(),
                ElementsAre("? setShowsVerticalScrollIndicator: NO", "? setShowsHorizontalScrollIndicator: NO",
                            "? setScrollEnabled: YES", "? setUserInteractionEnabled: YES"));
}

TEST_F(AppsView, DeclaresItsProperties)
{
    const auto attributesOf = [](const char* name) {
        objc_property* const property = class_getProperty(objc_getClass("SVAppsView"), name);
        return property == nullptr ? "none" : std::string(property_getAttributes(property));
    };
    EXPECT_EQ(attributesOf("items"), "T@\"NSMutableArray\",&,N,V_items");
    EXPECT_EQ(attributesOf("iconImgViews"), "T@\"NSMutableDictionary\",&,N,V_iconImgViews");
    EXPECT_EQ(attributesOf("frames"), "none");
}

TEST_F(AppsView, KeepsItsListAndItsIconsInVariablesOfTheirNames)
{
    arrive(mail);
    EXPECT_EQ(variable<NSObject*>(strip_, "_items"), list_.get());
    EXPECT_EQ(variable<NSObject*>(strip_, "_iconImgViews"), (send<"iconImgViews", NSObject*>(strip_.get())));
}

TEST_F(AppsView, KeepsTheVeryListAndLetsThePreviousGo)
{
    const auto first = arrayOf({});
    const auto second = arrayOf({});
    strip::setItems(strip_, first);
    EXPECT_EQ(strip::items(strip_), first.get());
    EXPECT_EQ(retainCount(first), 2U);
    strip::setItems(strip_, second);
    EXPECT_EQ(retainCount(first), 1U);
    EXPECT_EQ(retainCount(second), 2U);
    strip::setItems(strip_, nullptr);
    EXPECT_EQ(strip::items(strip_), nullptr);
    EXPECT_EQ(retainCount(second), 1U);
}

TEST_F(AppsView, KeepsTheListWhenItIsSetOnceMore)
{
    strip::setItems(strip_, arrayOf({}));
    strip::setItems(strip_, strip::items(strip_));
    EXPECT_EQ(retainCount(strip::items(strip_)), 1U);
}

TEST_F(AppsView, KeepsTheVeryDictionaryAndLetsThePreviousGo)
{
    const auto other = adopt(NSMutableDictionary::alloc()->init());
    const Owned<NSMutableDictionary> own = strip::icons(strip_);
    EXPECT_EQ(retainCount(own), 2U);
    send<"setIconImgViews:">(strip_.get(), other.get());
    EXPECT_EQ(strip::icons(strip_), other.get());
    EXPECT_EQ(retainCount(other), 2U);
    EXPECT_EQ(retainCount(own), 1U);
}

TEST_F(AppsView, WorksOnTheDictionaryThatItWasGiven)
{
    const auto other = adopt(NSMutableDictionary::alloc()->init());
    send<"setIconImgViews:">(strip_.get(), other.get());
    arrive(mail);
    EXPECT_EQ(other->count(), 1U);
}

TEST_F(AppsView, LetsGoOfTheIconsThenOfTheItems)
{
    NSObject* const items = mortal("MortalItems");
    NSObject* const icons = mortal("MortalIcons");
    send<"setItems:">(strip_.get(), items);
    send<"setIconImgViews:">(strip_.get(), icons);
    objc_release(items);
    objc_release(icons);
    EXPECT_THAT(MessageLog::messages(), IsEmpty());
    strip_ = nullptr;
    EXPECT_THAT(MessageLog::messages(), ElementsAre("MortalIcons", "MortalItems"));
}

// Counting

TEST_F(AppsView, TheFirstItemOfAnApplicationCountsOne)
{
    arrive(mail);
    EXPECT_EQ(shown(badge(mail)), badgePicture("1"));
}

TEST_F(AppsView, ThreeItemsOfOneApplicationLeaveOneIconWithBadgeThree)
{
    for (int i = 0; i < 3; ++i)
        arrive(mail);
    EXPECT_EQ(strip::icons(strip_)->count(), 1U);
    EXPECT_EQ(strip_->subviews()->count(), 1U);
    EXPECT_EQ(shown(badge(mail)), badgePicture("3"));
}

TEST_F(AppsView, EachApplicationIsCountedByItself)
{
    noteDrawnTexts();
    for (const char* application : {mail, messages, mail, ferry, mail, messages})
        arrive(application);
    EXPECT_THAT(drawnTexts(), ElementsAre("1", "1", "2", "1", "3", "2"));
    EXPECT_EQ(strip::icons(strip_)->count(), 3U);
}

TEST_F(AppsView, TheCountBeginsWhereItIsToldTo)
{
    noteDrawnTexts();
    const auto item = notification(mail);
    strip::setItems(strip_, arrayOf({item, notification(messages), notification(mail)}));
    strip::add(strip_, item, 5);
    strip::add(strip_, item, -3);
    constexpr long largest = std::numeric_limits<long>::max();
    strip::add(strip_, item, largest - 2);
    EXPECT_THAT(drawnTexts(), ElementsAre("7", "-1", std::to_string(largest)));
}

TEST_F(AppsView, WithoutItemsTheCountIsTheStartingOne)
{
    noteDrawnTexts();
    strip::add(strip_, notification(mail));
    strip::add(strip_, notification(mail), 4);
    EXPECT_THAT(drawnTexts(), ElementsAre("0", "4"));
}

TEST_F(AppsView, AnItemThatIsNotInTheListIsNotCounted)
{
    noteDrawnTexts();
    strip::setItems(strip_, arrayOf({notification(messages)}));
    strip::add(strip_, notification(mail));
    EXPECT_THAT(drawnTexts(), ElementsAre("0"));
}

TEST_F(AppsView, IdentifiersAreTheSameToTheLetter)
{
    noteDrawnTexts();
    arrive("com.apple.mobilemail");
    arrive("com.apple.MobileMail");
    arrive("com.apple.mobilemail ");
    EXPECT_THAT(drawnTexts(), ElementsAre("1", "1", "1"));
    EXPECT_EQ(strip::icons(strip_)->count(), 3U);
}

TEST_F(AppsView, AlertsOfOneTitleShareAnIcon)
{
    noteDrawnTexts();
    arrive(simulator::systemAlertItem(text("Low Battery"), text("20% left")));
    arrive(simulator::systemAlertItem(text("Low Battery"), text("10% left")));
    arrive(simulator::systemAlertItem(text("Alarm"), nullptr));
    EXPECT_THAT(drawnTexts(), ElementsAre("1", "2", "1"));
    EXPECT_EQ(strip::icons(strip_)->count(), 2U);
}

TEST_F(AppsView, AllUnknownKindsShareAnIcon)
{
    noteDrawnTexts();
    simulator::SimulatedClass<NoState>("OddItem", "NSObject").registerClass();
    arrive(simulator::unknownItem());
    arrive(adopt(newObject("OddItem")));
    arrive(adopt(newObject("NSObject")));
    EXPECT_THAT(drawnTexts(), ElementsAre("1", "2", "3"));
    EXPECT_NE(icon("noIdentifier"), nullptr);
    EXPECT_EQ(strip::icons(strip_)->count(), 1U);
}

TEST_F(AppsView, ItemsOfDifferentKindsWithOneIdentifierShareAnIcon)
{
    noteDrawnTexts();
    arrive(mail);
    arrive(simulator::cardItem(text(mail), nullptr));
    arrive(simulator::systemAlertItem(text(mail), nullptr));
    EXPECT_THAT(drawnTexts(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(strip::icons(strip_)->count(), 1U);
}

TEST_F(AppsView, AnItemWithoutAnIdentifierHurtsNothing)
{
    noteDrawnTexts();
    arrive(mail);
    arrive(simulator::bulletinItem(nullptr, text("Hello"), nullptr));
    arrive(simulator::systemAlertItem(nullptr, nullptr));
    arrive(mail);
    EXPECT_EQ(strip::icons(strip_)->count(), 1U);
    EXPECT_EQ(places(), (std::vector<CGFloat>{54}));
    EXPECT_EQ(shown(badge(mail)), badgePicture("2"));
    strip::clear(strip_);
    EXPECT_EQ(strip_->subviews()->count(), 0U);
}

TEST_F(AppsView, ACardWithoutAnIdentifierAndAnAlertWithoutATitleShowNoIcon)
{
    arrive(simulator::cardItem(nullptr, text("Ferry")));
    arrive(simulator::systemAlertItem(nullptr, text("20% left")));
    EXPECT_EQ(strip::icons(strip_)->count(), 0U);
    EXPECT_EQ(strip_->subviews()->count(), 0U);
    arrive(simulator::cardItem(text("pass.ferry.7"), text("Ferry")));
    EXPECT_EQ(places(), (std::vector<CGFloat>{54}));
}

namespace {

/// What is asked for an identifier, and what becomes of it meanwhile.
NSString* (*identifierOf)(NSObject*, SEL, NSObject*);
id weakObject = nullptr;

} // namespace

TEST_F(AppsView, AListThatIsReplacedDuringTheCountIsCountedToItsEnd)
{
    static bool wasThere = false;
    noteDrawnTexts();
    const auto item = notification(mail);
    {
        const AutoreleasePool pool;
        strip::setItems(strip_, arrayOf({item, notification(mail), notification(mail)}));
        objc_storeWeak(&weakObject, strip::items(strip_));
    }
    identifierOf = simulator::replaceMethod<"identifierForListItem:">(
        objc_getClass("SVAppsView"), +[](NSObject* self, SEL message, NSObject* asked) {
            static int calls = 0;
            // The first question is about the item that is added.
            if (++calls == 2) {
                strip::setItems(static_cast<UIView*>(self), nullptr);
                wasThere = weakObject != nullptr;
            }
            return identifierOf(self, message, asked);
        });
    strip::add(strip_, item);
    EXPECT_TRUE(wasThere);
    EXPECT_EQ(weakObject, nullptr);
    EXPECT_THAT(drawnTexts(), ElementsAre("3"));
}

TEST_F(AppsView, AnIdentifierIsKeptUntilItsIconIsStored)
{
    static NSString* identifier = nullptr;
    static bool wasThere = false;
    identifier = NSString::alloc()->initWithUTF8String("an identifier that is long enough to be an object");
    objc_storeWeak(&weakObject, identifier);
    simulator::replaceMethod<"identifierForListItem:">(
        objc_getClass("SVAppsView"), +[](NSObject*, SEL, NSObject*) { return identifier; });
    // The item forgets its identifier while it makes its picture.
    simulator::replaceMethod<"iconForListItem:">(
        objc_getClass("SVAppsView"), +[](NSObject*, SEL, NSObject*) {
            objc_release(identifier);
            wasThere = weakObject != nullptr;
            return static_cast<UIImage*>(nullptr);
        });
    strip::add(strip_, notification(mail));
    EXPECT_TRUE(wasThere);
    EXPECT_NE(icon("an identifier that is long enough to be an object"), nullptr);
}

TEST_F(AppsView, AListThatChangesDuringTheCountRaises)
{
    static NSMutableArray* list = nullptr;
    static int calls = 0;
    static NSString* (*identifier)(NSObject*, SEL, NSObject*);
    static std::string raised;
    static void (*raise)(NSObject*, SEL);
    raise = simulator::replaceMethod<"raise">(
        objc_getClass("NSException"), +[](NSObject* self, SEL message) {
            raised = textOf(send<"name", NSString*>(self)) + ": " + textOf(send<"reason", NSString*>(self));
            raise(self, message);
        });
    list = list_;
    for (int i = 0; i < 3; ++i)
        list_->addObject(notification(mail));
    identifier = simulator::replaceMethod<"identifierForListItem:">(
        objc_getClass("SVAppsView"), +[](NSObject* self, SEL message, NSObject* item) {
            if (++calls == 2)
                list->addObject(item);
            return identifier(self, message, item);
        });
    strip::setItems(strip_, list_);
    const auto item = notification(mail);
    EXPECT_ANY_THROW(strip::add(strip_, item));
    EXPECT_THAT(raised, testing::HasSubstr("mutated"));
    EXPECT_EQ(calls, 2);
}

// Icons and badges

TEST_F(AppsView, AnIconIsInTheStripOnlyOnceItIsShown)
{
    strip::add(strip_, notification(mail));
    ASSERT_NE(icon(mail), nullptr);
    EXPECT_EQ(icon(mail)->superview(), nullptr);
    EXPECT_EQ(icon(mail)->frame(), CGRect::make(0, 0, 50, 50));
    strip::show(strip_);
    EXPECT_EQ(icon(mail)->superview(), strip_.get());
}

TEST_F(AppsView, AnIconShowsTheImageOfItsItem)
{
    arrive(mail);
    arrive(ferry);
    EXPECT_EQ(shown(icon(mail)), pictureOf(strip::icon(strip_, notification(mail))));
    EXPECT_EQ(shown(icon(ferry)), pictureOf(strip::icon(strip_, notification(ferry))));
}

TEST_F(AppsView, IconsAndBadgesArePlainImageViews)
{
    arrive(mail);
    for (UIView* view : {icon(mail), badge(mail)})
        EXPECT_STREQ(class_getName(object_getClass(view)), "UIImageView");
}

TEST_F(AppsView, ABadgeHangsHalfOutsideTheCorner)
{
    arrive(mail);
    EXPECT_EQ(badge(mail)->frame(), CGRect::make(37.5, -12.5, 25, 25));
    EXPECT_EQ(badge(mail)->center(), (CGPoint{50, 0}));
    EXPECT_EQ(badge(mail)->superview(), icon(mail));
}

TEST_F(AppsView, ABadgeShowsItsNumber)
{
    arrive(mail);
    EXPECT_NE(shown(badge(mail)), badgePicture(""));
    EXPECT_NE(shown(badge(mail)), badgePicture("2"));
    arrive(mail);
    EXPECT_EQ(shown(badge(mail)), badgePicture("2"));
}

TEST_F(AppsView, ABadgeIsSeenInThePicture)
{
    simulator::lockScreen();
    use(CGRect::make(76, 100, 168, 100));
    simulator::springBoardWindow()->addSubview(strip_);
    arrive(mail);
    const Picture one = screenshot();
    arrive(mail);
    const Picture two = screenshot();
    // In points: the strip, the icon in it, the badge on that.
    const Picture::Box badgeOnScreen{76 + 54 + 37, 100 + 22 - 13, 76 + 54 + 63, 100 + 22 + 13};
    int changed = 0;
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x) {
            if (one.at(x, y) == two.at(x, y))
                continue;
            ++changed;
            EXPECT_TRUE(x >= 2 * badgeOnScreen.left && x < 2 * badgeOnScreen.right && y >= 2 * badgeOnScreen.top &&
                        y < 2 * badgeOnScreen.bottom)
                << x << ' ' << y;
        }
    }
    EXPECT_GT(changed, 50);
}

TEST_F(AppsView, ReadsTheBadgesFileAnewForEachBadge)
{
    arrive(mail);
    const Picture before = shown(badge(mail));
    writePicture(plainImage({35, 35}, 2, 0xFF00FF00), badgeFile("Badge@2x.png"));
    arrive(messages);
    EXPECT_EQ(shown(badge(mail)), before);
    EXPECT_EQ(shown(badge(messages)), badgePicture("1"));
    EXPECT_EQ(shown(badge(messages)).at(1, 1), 0xFF00FF00);
}

TEST_F(AppsView, ShowsAnEmptyBadgeWithoutTheFile)
{
    fs::remove(badgeFile());
    fs::remove(badgeFile("Badge@2x.png"));
    arrive(mail);
    EXPECT_EQ(badge(mail)->image(), nullptr);
    EXPECT_EQ(badge(mail)->frame(), CGRect::make(37.5, -12.5, 25, 25));
    EXPECT_NE(icon(mail)->image(), nullptr);
    EXPECT_THAT(simulator::takeSystemLog(), IsEmpty());
}

TEST_F(AppsView, ShowsAnEmptyBadgeWhenTheFileIsNoPicture)
{
    writeFile(badgeFile(), "no picture");
    writeFile(badgeFile("Badge@2x.png"), "no picture");
    arrive(mail);
    EXPECT_EQ(badge(mail)->image(), nullptr);
    EXPECT_THAT(simulator::takeSystemLog(), IsEmpty());
}

TEST_F(AppsView, ShowsAnEmptyIconWithItsBadgeForAnItemWithoutImage)
{
    simulator::replaceMethod<"iconForListItem:">(
        objc_getClass("SVAppsView"), +[](NSObject*, SEL, NSObject*) { return static_cast<UIImage*>(nullptr); });
    arrive(mail);
    EXPECT_EQ(icon(mail)->image(), nullptr);
    EXPECT_EQ(shown(badge(mail)), badgePicture("1"));
    EXPECT_EQ(icon(mail)->superview(), strip_.get());
}

TEST_F(AppsView, ThrowsTheOldIconAway)
{
    // Foundation keeps what a dictionary gave for a while.
    Owned<UIView> first;
    {
        const AutoreleasePool pool;
        arrive(mail);
        first = icon(mail);
        const auto item = notification(mail);
        strip::add(strip_, item);
        EXPECT_EQ(first->superview(), nullptr);
        EXPECT_NE(icon(mail), first.get());
        EXPECT_EQ(strip_->subviews()->count(), 0U);
    }
    EXPECT_EQ(retainCount(first), 1U);
}

TEST_F(AppsView, ForgetsOldIconsAltogether)
{
    const auto arriveOften = [&] {
        for (int i = 0; i < 20; ++i) {
            const AutoreleasePool pool;
            arrive(mail);
        }
    };
    arriveOften();
    const long views = livingObjectsOf("UIImageView");
    const long images = livingObjectsOf("UIImage");
    arriveOften();
    EXPECT_EQ(livingObjectsOf("UIImageView"), views);
    // Each item of the list keeps an image of its own.
    EXPECT_EQ(livingObjectsOf("UIImage"), images + 20);
}

TEST_F(AppsView, FollowsItsHeight)
{
    use(CGRect::make(0, 0, 168, 80));
    arrive(mail);
    EXPECT_EQ(icon(mail)->frame(), CGRect::make(59, 22, 40, 40));
    EXPECT_EQ(badge(mail)->frame(), CGRect::make(30, -10, 20, 20));
    EXPECT_EQ(strip_->contentSize(), (CGSize{50, 80}));
    arrive(messages);
    EXPECT_EQ(places(), (std::vector<CGFloat>{34, 84}));
    EXPECT_EQ(strip_->contentSize(), (CGSize{100, 80}));
}

TEST_F(AppsView, ReadsItsHeightAtEachUse)
{
    strip::add(strip_, notification(mail));
    strip_->setFrame(CGRect::make(0, 0, 200, 64));
    strip::show(strip_);
    EXPECT_EQ(icon(mail)->frame(), CGRect::make(79, 22, 32, 32));
    EXPECT_EQ(strip_->contentSize(), (CGSize{42, 64}));
    strip::add(strip_, notification(messages));
    EXPECT_EQ(icon(messages)->frame(), CGRect::make(0, 0, 32, 32));
    EXPECT_EQ(badge(messages)->frame(), CGRect::make(24, -8, 16, 16));
}

TEST_F(AppsView, ReadsItsHeightForEachSideOfAnIconAndOfABadge)
{
    MessageLog::name(strip_.get(), "strip");
    Noted<"SVAppsView", "frame", CGRect>::install();
    strip::add(strip_, notification(mail));
    // An icon's side is the height less half the height.
    EXPECT_EQ(std::ranges::count(MessageLog::messages(), "strip frame"), 2 * 2 + 2);
}

// The row

namespace {

struct Row {
    CGFloat width;
    int applications;
    /// Where the first icon stands.
    CGFloat start;
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.applications << " in " << row.width << " points";
}

class Rows : public AppsView, public testing::WithParamInterface<Row> {};

} // namespace

TEST_P(Rows, StandInTheMiddleHalfAGapToTheLeftOrBeginAtTheEdge)
{
    const Row& row = GetParam();
    use(CGRect::make(0, 0, row.width, 100));
    strip::show(strip_);
    fill(row.applications);
    EXPECT_EQ(strip_->contentSize(), (CGSize{static_cast<CGFloat>(60 * row.applications), 100}));
    std::vector<CGFloat> expected;
    for (int i = 0; i < row.applications; ++i)
        expected.push_back(row.start + 60 * i);
    EXPECT_EQ(places(), expected);
    for (UIView* view : subviews()) {
        EXPECT_EQ(view->frame().origin.y, 22);
        EXPECT_EQ(view->frame().size, (CGSize{50, 50}));
    }
}

INSTANTIATE_TEST_SUITE_P(OnAPhone320Wide, Rows,
                         testing::Values(Row{168, 0, 0}, Row{168, 1, 54}, Row{168, 2, 24}, Row{168, 3, 0}, Row{168, 5, 0}));
INSTANTIATE_TEST_SUITE_P(OnAPhone375Wide, Rows,
                         testing::Values(Row{223, 0, 0}, Row{223, 1, 81.5}, Row{223, 2, 51.5}, Row{223, 3, 21.5},
                                         Row{223, 5, 0}));
INSTANTIATE_TEST_SUITE_P(OnAPhone414Wide, Rows,
                         testing::Values(Row{262, 0, 0}, Row{262, 1, 101}, Row{262, 2, 71}, Row{262, 3, 41}, Row{262, 5, 0}));

TEST_F(AppsView, KeepsTheDictionarysOwnOrder)
{
    use(CGRect::make(0, 0, 168, 100));
    for (const char* application : {mail, messages, ferry, "org.solvane.larder", "com.apple.Music", "com.apple.mobilephone"})
        arrive(application);
    CGFloat x = 0;
    for (UIView* view : each<UIView>(strip::icons(strip_)->allValues())) {
        EXPECT_EQ(view->frame().origin.x, x);
        x += 60;
    }
    EXPECT_EQ(x, 360);
}

TEST_F(AppsView, ShowsEachIconOnceHoweverOftenItIsShown)
{
    arrive(mail);
    arrive(messages);
    const auto before = places();
    for (int i = 0; i < 3; ++i)
        strip::show(strip_);
    EXPECT_EQ(strip_->subviews()->count(), 2U);
    EXPECT_EQ(places(), before);
}

TEST_F(AppsView, GoesAroundTheIconsOnceToLayThemOut)
{
    arrive(mail);
    MessageLog::name(icon(mail), "icon");
    MessageLog::name(strip_, "strip");
    Noted<"SVAppsView", "setContentSize:", void, CGSize>::install();
    Noted<"UIImageView", "setFrame:", void, CGRect>::install();
    Noted<"SVAppsView", "addSubview:", void, id>::install();
    strip::show(strip_);
    EXPECT_THAT(MessageLog::messages(),
                ElementsAre("strip setContentSize: 60,100", "icon setFrame: 54,22,50,50", "strip addSubview: icon"));
}

TEST_F(AppsView, IsScrolledByAFingerWhenTheRowIsWiderThanTheStrip)
{
    simulator::lockScreen();
    use(CGRect::make(76, 100, 168, 100));
    simulator::springBoardWindow()->addSubview(strip_);
    fill(5);
    const Picture before = screenshot();
    EXPECT_EQ(strip_->contentOffset(), (CGPoint{0, 0}));
    simulator::swipe(simulator::springBoardWindow(), {230, 150}, simulator::Direction::left);
    simulator::finishMotion();
    // The last icon's end and the gap behind it: 300 - 168.
    EXPECT_EQ(strip_->contentOffset(), (CGPoint{132, 0}));
    EXPECT_NE(screenshot(), before);
    simulator::swipe(simulator::springBoardWindow(), {90, 150}, simulator::Direction::right);
    simulator::finishMotion();
    EXPECT_EQ(strip_->contentOffset(), (CGPoint{0, 0}));
    EXPECT_EQ(screenshot(), before);
}

TEST_F(AppsView, StandsStillUnderAFingerWhenTheRowFits)
{
    simulator::lockScreen();
    use(CGRect::make(76, 100, 168, 100));
    simulator::springBoardWindow()->addSubview(strip_);
    fill(2);
    simulator::swipe(simulator::springBoardWindow(), {230, 150}, simulator::Direction::left);
    EXPECT_EQ(strip_->contentOffset(), (CGPoint{0, 0}));
}

// Clearing

TEST_F(AppsView, IsEmptyOnceItIsCleared)
{
    arrive(mail);
    arrive(messages);
    const Owned<NSMutableDictionary> icons = strip::icons(strip_);
    const Owned<UIView> kept = icon(mail);
    strip::clear(strip_);
    EXPECT_EQ(strip_->subviews()->count(), 0U);
    EXPECT_EQ(kept->superview(), nullptr);
    EXPECT_EQ(strip::icons(strip_), icons.get());
    EXPECT_EQ(icons->count(), 0U);
    EXPECT_EQ(strip_->contentSize(), (CGSize{0, 100}));
}

TEST_F(AppsView, KeepsItsItemsWhenItIsCleared)
{
    arrive(mail);
    strip::clear(strip_);
    EXPECT_EQ(strip::items(strip_), list_.get());
    EXPECT_EQ(list_->count(), 1U);
}

TEST_F(AppsView, BeginsANewRowAfterClearing)
{
    arrive(mail);
    arrive(messages);
    strip::clear(strip_);
    arrive(mail);
    EXPECT_EQ(places(), (std::vector<CGFloat>{54}));
    // The list still holds both.
    EXPECT_EQ(shown(badge(mail)), badgePicture("2"));
}

TEST_F(AppsView, ForgetsIconsThatWereNeverShownWhenItIsCleared)
{
    strip::add(strip_, notification(mail));
    strip::clear(strip_);
    EXPECT_EQ(strip::icons(strip_)->count(), 0U);
    strip::show(strip_);
    EXPECT_EQ(strip_->subviews()->count(), 0U);
}

TEST_F(AppsView, IsClearedByShowingNothing)
{
    MessageLog::name(strip_, "strip");
    Noted<"SVAppsView", "showIcons", void>::install();
    strip::clear(strip_);
    EXPECT_THAT(MessageLog::messages(), ElementsAre("strip showIcons"));
}
