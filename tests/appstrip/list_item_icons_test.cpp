#include <gmock/gmock.h>

#include "platform/SpringBoard/SBAwayListItem.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MessageLog.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/Picture.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/runtime_calls.hpp"
#include "tests/support/strip.hpp"

/// Which application an item of the lock screen's list belongs to, and which picture stands for it.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListItems : public testing::Test {
protected:
    explicit ListItems(const simulator::ScreenSize& screen = {}) : phone_(screen), strip_(strip::make()) {}

    std::string identifier(NSObject* item) { return textOf(strip::identifier(strip_, item)); }
    UIImage* icon(NSObject* item) { return strip::icon(strip_, item); }

    InjectedMorningPhone phone_;
    Owned<UIScrollView> strip_;
    // Made while SpringBoard's own classes are what they are: an item asks them for its picture.
    Owned<NSObject> mail_ = notification("com.apple.mobilemail");
    Owned<NSObject> nameless_ = simulator::bulletinItem(nullptr, nullptr, nullptr);
};

struct NoState {};

/// A new class without anything of its own.
Class makeClass(const char* name, const char* superclass)
{
    simulator::SimulatedClass<NoState>(name, superclass).registerClass();
    return objc_getClass(name);
}

UIImage* namedImage(const char* name)
{
    UIImage* const image = plainImage({1, 1}, 1, 0xFFFFFFFF).leak();
    MessageLog::name(image, name);
    return image;
}

std::string quoted(NSString* string)
{
    return string == nullptr ? "nil" : '"' + textOf(string) + '"';
}

/// Everything that is asked of SpringBoard for an icon, in order.
std::vector<std::string>& requests()
{
    static auto& noted = *new std::vector<std::string>;
    return noted;
}

UIImage* bundleImage = nullptr;
UIImage* applicationImage = nullptr;
NSObject* application = nullptr;

/// The two ways to an icon note what they are given, and give images that are told apart.
void noteIconRequests()
{
    bundleImage = namedImage("bundle image");
    applicationImage = namedImage("application image");
    simulator::replaceMethod<"_applicationIconImageForBundleIdentifier:format:scale:">(
        simulator::metaclassOf(objc_getClass("UIImage")), +[](NSObject*, SEL, NSString* identifier, int format, CGFloat scale) {
            requests().push_back("bundle " + quoted(identifier) + " format " + std::to_string(format) + " scale " +
                                 MessageLog::describe(scale));
            return bundleImage;
        });
    const Class icon = objc_getClass("SBApplicationIcon");
    simulator::replaceMethod<"initWithApplication:">(
        icon, +[](NSObject* self, SEL, NSObject* given) {
            requests().push_back("icon for " + MessageLog::describe(given));
            return self;
        });
    simulator::replaceMethod<"generateIconImage:">(
        icon, +[](NSObject*, SEL, int format) {
            requests().push_back("format " + std::to_string(format));
            return applicationImage;
        });
}

/// From now on SpringBoard's controller is another object, of the class of that name.
void replaceController(const char* className)
{
    static NSObject* controller = nullptr;
    controller = newObject(className);
    application = newObject("NSObject");
    MessageLog::name(application, "application");
    simulator::replaceMethod<"sharedInstance">(
        simulator::metaclassOf(objc_getClass("SBApplicationController")), +[](NSObject*, SEL) { return controller; });
}

NSObject* lookUpByBundle(NSObject*, SEL, NSString* identifier)
{
    requests().push_back("by bundle " + quoted(identifier));
    return application;
}

NSObject* lookUpByDisplay(NSObject*, SEL, NSString* identifier)
{
    requests().push_back("by display " + quoted(identifier));
    return application;
}

std::vector<NSString*> answers;
int identifierCalls = 0;
NSString* (*previousIdentifier)(NSObject*, SEL, NSObject*);

void countIdentifierCalls()
{
    previousIdentifier = simulator::replaceMethod<"identifierForListItem:">(
        objc_getClass("SVAppsView"), +[](NSObject* self, SEL message, NSObject* item) {
            ++identifierCalls;
            return previousIdentifier(self, message, item);
        });
}

/// The strip's identifiers are these, one after the other.
void answerIdentifiers(std::vector<NSString*> wanted)
{
    answers = std::move(wanted);
    identifierCalls = 0;
    simulator::replaceMethod<"identifierForListItem:">(
        objc_getClass("SVAppsView"),
        +[](NSObject*, SEL, NSObject*) { return answers.at(static_cast<std::size_t>(identifierCalls++)); });
}

constexpr const char* kinds[] = {"SBAwayBulletinListItem", "SBAwayCardListItem", "SBAwaySystemAlertItem"};

/// An object of no kind that notes which kinds it is asked about.
NSObject* askedObject()
{
    const Class cls = makeClass("AskedItem", "NSObject");
    simulator::addMethod<"isKindOfClass:">(
        cls, +[](NSObject*, SEL, Class kind) -> BOOL {
            requests().emplace_back(class_getName(kind));
            return NO;
        });
    return newObject("AskedItem");
}

} // namespace

// Identifiers

TEST_F(ListItems, ABulletinIsKnownByTheApplicationThatPostedIt)
{
    EXPECT_EQ(identifier(notification("com.apple.mobilemail")), "com.apple.mobilemail");
}

TEST_F(ListItems, ACardIsKnownByTheCardsIdentifier)
{
    EXPECT_EQ(identifier(simulator::cardItem(text("pass.ferry.7"), text("Ferry"))), "pass.ferry.7");
}

TEST_F(ListItems, ASystemAlertIsKnownByItsTitle)
{
    EXPECT_EQ(identifier(simulator::systemAlertItem(text("Low Battery"), text("20% left"))), "Low Battery");
}

TEST_F(ListItems, AnItemOfAnotherKindHasNoIdentifier)
{
    EXPECT_EQ(identifier(simulator::unknownItem()), "noIdentifier");
}

TEST_F(ListItems, AnObjectThatIsNoListItemHasNoIdentifier)
{
    EXPECT_EQ(identifier(newObject("NSObject")), "noIdentifier");
    EXPECT_EQ(identifier(text("com.apple.mobilemail")), "noIdentifier");
    EXPECT_EQ(identifier(nullptr), "noIdentifier");
}

TEST_F(ListItems, IdentifiersAreTheVeryObjectsThatTheItemsHold)
{
    NSString* const section = text("com.apple.mobilemail");
    NSString* const title = text("Low Battery");
    const auto bulletin = simulator::bulletinItem(section, nullptr, nullptr);
    const auto card = simulator::cardItem(section, nullptr);
    const auto alert = simulator::systemAlertItem(title, nullptr);
    EXPECT_EQ(strip::identifier(strip_, bulletin), section);
    EXPECT_EQ(strip::identifier(strip_, card), section);
    EXPECT_EQ(strip::identifier(strip_, alert), title);
}

TEST_F(ListItems, ABulletinWithoutASectionGivesNil)
{
    const auto item = simulator::bulletinItem(nullptr, text("Hello"), nullptr);
    EXPECT_EQ(strip::identifier(strip_, item), nullptr);
}

TEST_F(ListItems, ACardAndAnAlertWithoutANameGiveNil)
{
    const auto card = simulator::cardItem(nullptr, nullptr);
    const auto alert = simulator::systemAlertItem(nullptr, nullptr);
    EXPECT_EQ(strip::identifier(strip_, card), nullptr);
    EXPECT_EQ(strip::identifier(strip_, alert), nullptr);
}

TEST_F(ListItems, SubclassesCountAsTheirKind)
{
    static BBBulletin* const bulletin =
        static_cast<SBAwayBulletinListItem*>(notification("org.example.sub").leak())->activeBulletin();
    simulator::addMethod<"activeBulletin">(
        makeClass("SpecialBulletin", "SBAwayBulletinListItem"), +[](NSObject*, SEL) { return bulletin; });
    static SBSCardItem* const card =
        static_cast<SBAwayCardListItem*>(simulator::cardItem(text("pass.1"), nullptr).leak())->cardItem();
    simulator::addMethod<"cardItem">(makeClass("SpecialCard", "SBAwayCardListItem"), +[](NSObject*, SEL) { return card; });
    simulator::addMethod<"title">(
        makeClass("SpecialAlert", "SBAwaySystemAlertItem"), +[](NSObject*, SEL) { return text("Alarm"); });
    EXPECT_EQ(identifier(newObject("SpecialBulletin")), "org.example.sub");
    EXPECT_EQ(identifier(newObject("SpecialCard")), "pass.1");
    EXPECT_EQ(identifier(newObject("SpecialAlert")), "Alarm");
}

TEST_F(ListItems, SubclassesGiveTheIconsOfTheirKind)
{
    static UIImage* const thumbnail = namedImage("thumbnail");
    static UIImage* const alertIcon = namedImage("alert icon");
    simulator::addMethod<"cardThumbnail">(
        makeClass("SpecialCard", "SBAwayCardListItem"), +[](NSObject*, SEL) { return thumbnail; });
    simulator::addMethod<"iconImage">(
        makeClass("SpecialAlert", "SBAwaySystemAlertItem"), +[](NSObject*, SEL) { return alertIcon; });
    EXPECT_EQ(icon(newObject("SpecialCard")), thumbnail);
    EXPECT_EQ(icon(newObject("SpecialAlert")), alertIcon);
}

TEST_F(ListItems, AreAskedForTheirKindInOrder)
{
    NSObject* const item = askedObject();
    identifier(item);
    EXPECT_THAT(requests(), ElementsAre(kinds[0], kinds[1], kinds[2]));
    requests().clear();
    icon(item);
    EXPECT_THAT(requests(), ElementsAre(kinds[0], kinds[1], kinds[2]));
}

// Icons

TEST_F(ListItems, CalendarsIconIsDrawnForTheBundleInFormatZeroAtTheScreensScale)
{
    noteIconRequests();
    EXPECT_EQ(icon(notification("com.apple.mobilecal")), bundleImage);
    EXPECT_THAT(requests(), ElementsAre("bundle \"com.apple.mobilecal\" format 0 scale 2"));
}

class ListItemsOnALargePhone : public ListItems {
protected:
    ListItemsOnALargePhone() : ListItems({414, 736, 3}) {}
};

TEST_F(ListItemsOnALargePhone, CalendarsIconIsDrawnAtThatScreensScale)
{
    noteIconRequests();
    icon(notification("com.apple.mobilecal"));
    icon(simulator::unknownItem());
    EXPECT_THAT(requests(), ElementsAre("bundle \"com.apple.mobilecal\" format 0 scale 3", "bundle nil format 0 scale 3"));
}

TEST_F(ListItems, AnotherApplicationsIconIsMadeFromTheApplicationInFormatTwo)
{
    makeClass("NewController", "NSObject");
    simulator::addMethod<"applicationWithBundleIdentifier:">(objc_getClass("NewController"), &lookUpByBundle);
    replaceController("NewController");
    noteIconRequests();
    EXPECT_EQ(icon(mail_), applicationImage);
    EXPECT_THAT(requests(), ElementsAre("by bundle \"com.apple.mobilemail\"", "icon for application", "format 2"));
}

TEST_F(ListItems, TheNewerLookUpIsTakenWhereBothAreThere)
{
    makeClass("BothController", "NSObject");
    simulator::addMethod<"applicationWithBundleIdentifier:">(objc_getClass("BothController"), &lookUpByBundle);
    simulator::addMethod<"applicationWithDisplayIdentifier:">(objc_getClass("BothController"), &lookUpByDisplay);
    replaceController("BothController");
    noteIconRequests();
    icon(mail_);
    EXPECT_THAT(requests(), ElementsAre("by bundle \"com.apple.mobilemail\"", "icon for application", "format 2"));
}

TEST_F(ListItems, TheOlderLookUpIsTakenWhereThereIsNoNewer)
{
    makeClass("OldController", "NSObject");
    simulator::addMethod<"applicationWithDisplayIdentifier:">(objc_getClass("OldController"), &lookUpByDisplay);
    replaceController("OldController");
    noteIconRequests();
    EXPECT_EQ(icon(mail_), applicationImage);
    EXPECT_THAT(requests(), ElementsAre("by display \"com.apple.mobilemail\"", "icon for application", "format 2"));
}

TEST_F(ListItems, AnIconIsMadeOfNoApplicationWhereThereIsNoLookUp)
{
    makeClass("BareController", "NSObject");
    replaceController("BareController");
    noteIconRequests();
    EXPECT_EQ(icon(mail_), applicationImage);
    EXPECT_THAT(requests(), ElementsAre("icon for nil", "format 2"));
}

TEST_F(ListItems, AreLookedUpByWhatTheControllerSaysItRespondsTo)
{
    // The controller has the newer look-up and denies it.
    const Class controller = makeClass("DenyingController", "NSObject");
    static const SEL newer = selector<"applicationWithBundleIdentifier:">();
    simulator::addMethod<"respondsToSelector:">(
        controller, +[](NSObject* self, SEL, SEL asked) -> BOOL {
            return BOOL{asked != newer && class_respondsToSelector(object_getClass(self), asked) != NO};
        });
    simulator::addMethod<"applicationWithBundleIdentifier:">(controller, &lookUpByBundle);
    simulator::addMethod<"applicationWithDisplayIdentifier:">(controller, &lookUpByDisplay);
    replaceController("DenyingController");
    noteIconRequests();
    icon(mail_);
    EXPECT_THAT(requests(), ElementsAre("by display \"com.apple.mobilemail\"", "icon for application", "format 2"));
}

TEST_F(ListItems, TheLookUpGoesAheadWithoutASection)
{
    makeClass("NewController", "NSObject");
    simulator::addMethod<"applicationWithBundleIdentifier:">(objc_getClass("NewController"), &lookUpByBundle);
    replaceController("NewController");
    application = nullptr;
    noteIconRequests();
    EXPECT_EQ(icon(nameless_), applicationImage);
    EXPECT_THAT(requests(), ElementsAre("by bundle nil", "icon for nil", "format 2"));
}

TEST_F(ListItems, ABulletinCalledNoIdentifierGivesItsOwnImage)
{
    noteIconRequests();
    const auto item = notification("noIdentifier");
    EXPECT_EQ(icon(item), static_cast<SBAwayBulletinListItem*>(item.get())->iconImage());
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ListItems, ACardGivesItsThumbnail)
{
    noteIconRequests();
    const auto item = simulator::cardItem(text("com.apple.mobilecal"), nullptr);
    EXPECT_EQ(icon(item), static_cast<SBAwayCardListItem*>(item.get())->cardThumbnail());
    EXPECT_NE(icon(item), nullptr);
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ListItems, ASystemAlertGivesItsOwnImage)
{
    noteIconRequests();
    const auto item = simulator::systemAlertItem(text("Low Battery"), nullptr);
    EXPECT_EQ(icon(item), static_cast<SBAwaySystemAlertItem*>(item.get())->iconImage());
    EXPECT_NE(icon(item), nullptr);
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ListItems, AnItemOfAnotherKindGivesTheGenericIcon)
{
    noteIconRequests();
    EXPECT_EQ(icon(simulator::unknownItem()), bundleImage);
    EXPECT_EQ(icon(newObject("NSObject")), bundleImage);
    EXPECT_THAT(requests(), ElementsAre("bundle nil format 0 scale 2", "bundle nil format 0 scale 2"));
}

TEST_F(ListItems, ANilImageIsHandedOn)
{
    noteIconRequests();
    bundleImage = nullptr;
    applicationImage = nullptr;
    EXPECT_EQ(icon(notification("com.apple.mobilemail")), nullptr);
    EXPECT_EQ(icon(notification("com.apple.mobilecal")), nullptr);
    EXPECT_EQ(icon(simulator::unknownItem()), nullptr);
}

TEST_F(ListItems, IconsAreThoseThatSpringBoardDraws)
{
    EXPECT_EQ(icon(notification("com.apple.mobilemail"))->size(), (CGSize{60, 60}));
    EXPECT_EQ(icon(notification("com.apple.mobilecal"))->size(), (CGSize{29, 29}));
    EXPECT_NE(pictureOf(icon(notification("com.apple.mobilemail"))), pictureOf(icon(notification("com.apple.Music"))));
}

TEST_F(ListItems, AnApplicationThatSpringBoardDoesNotKnowHasNoIcon)
{
    EXPECT_EQ(icon(notification("org.example.removed")), nullptr);
    EXPECT_EQ(icon(simulator::bulletinItem(nullptr, nullptr, nullptr)), nullptr);
}

namespace {

/// The image that SpringBoard's icon has drawn, and that it takes with it when it goes.
UIImage* drawnImage = nullptr;
id weakImage = nullptr;

} // namespace

TEST_F(ListItems, AnImageOutlivesTheIconThatOwnsIt)
{
    simulator::replaceMethod<"generateIconImage:">(
        objc_getClass("SBApplicationIcon"), +[](NSObject*, SEL, int) {
            drawnImage = plainImage({1, 1}, 1, 0xFFFFFFFF).leak();
            objc_storeWeak(&weakImage, drawnImage);
            return drawnImage;
        });
    static void (*dealloc)(NSObject*, SEL);
    dealloc = reinterpret_cast<void (*)(NSObject*, SEL)>(
        class_getMethodImplementation(objc_getClass("SBApplicationIcon"), selector<"dealloc">()));
    simulator::addMethod<"dealloc">(
        objc_getClass("SBApplicationIcon"), +[](NSObject* self, SEL message) {
            objc_release(drawnImage);
            dealloc(self, message);
        });
    {
        const AutoreleasePool pool;
        EXPECT_EQ(icon(mail_), drawnImage);
        EXPECT_EQ(weakImage, drawnImage);
    }
    EXPECT_EQ(weakImage, nullptr);
}

TEST_F(ListItems, AnImageOutlivesTheItemThatOwnsIt)
{
    Owned<NSObject> items[3];
    {
        // What their making leaves behind goes with this.
        const AutoreleasePool pool;
        items[0] = simulator::cardItem(text("pass.ferry.7"), nullptr);
        items[1] = simulator::systemAlertItem(text("Low Battery"), nullptr);
        items[2] = notification("noIdentifier");
    }
    for (Owned<NSObject>& item : items) {
        const std::string kind = class_getName(object_getClass(item));
        {
            const AutoreleasePool pool;
            objc_storeWeak(&weakImage, icon(item));
            ASSERT_NE(weakImage, nullptr) << kind;
            item = nullptr;
            EXPECT_NE(weakImage, nullptr) << kind;
        }
        EXPECT_EQ(weakImage, nullptr) << kind;
    }
}

// Nothing is kept

TEST_F(ListItems, ABulletinIsAskedForItsIdentifierThreeTimes)
{
    countIdentifierCalls();
    icon(notification("com.apple.mobilemail"));
    EXPECT_EQ(identifierCalls, 3);
}

namespace {

/// From now on it is noted what the controller and the strip are asked on the way to an application.
void noteTheWayToAnApplication()
{
    static NSObject* (*shared)(NSObject*, SEL);
    shared = simulator::replaceMethod<"sharedInstance">(
        simulator::metaclassOf(objc_getClass("SBApplicationController")), +[](NSObject* self, SEL message) {
            requests().push_back("controller");
            return shared(self, message);
        });
    previousIdentifier = simulator::replaceMethod<"identifierForListItem:">(
        objc_getClass("SVAppsView"), +[](NSObject* self, SEL message, NSObject* item) {
            requests().push_back("identifier");
            return previousIdentifier(self, message, item);
        });
}

BOOL noteQuestion(NSObject* self, SEL, SEL asked)
{
    requests().push_back(std::string("responds to ") + sel_getName(asked));
    return class_respondsToSelector(object_getClass(self), asked);
}

/// A controller that notes what it is asked whether it responds to.
void useQuestionedController(const char* name)
{
    makeClass(name, "NSObject");
    simulator::addMethod<"respondsToSelector:">(objc_getClass(name), &noteQuestion);
    replaceController(name);
    noteTheWayToAnApplication();
    noteIconRequests();
}

} // namespace

TEST_F(ListItems, ABulletinIsAskedForItsIdentifierOnceTheLookUpIsKnown)
{
    useQuestionedController("NewController");
    simulator::addMethod<"applicationWithBundleIdentifier:">(objc_getClass("NewController"), &lookUpByBundle);
    icon(mail_);
    EXPECT_THAT(requests(), ElementsAre("identifier", "identifier", "controller", "responds to applicationWithBundleIdentifier:",
                                        "identifier", "by bundle \"com.apple.mobilemail\"", "icon for application", "format 2"));
}

TEST_F(ListItems, ABulletinIsAskedForItsIdentifierOnceTheOlderLookUpIsKnown)
{
    useQuestionedController("OldController");
    simulator::addMethod<"applicationWithDisplayIdentifier:">(objc_getClass("OldController"), &lookUpByDisplay);
    icon(mail_);
    EXPECT_THAT(requests(), ElementsAre("identifier", "identifier", "controller", "responds to applicationWithBundleIdentifier:",
                                        "responds to applicationWithDisplayIdentifier:", "identifier",
                                        "by display \"com.apple.mobilemail\"", "icon for application", "format 2"));
}

TEST_F(ListItems, ABulletinIsNotAskedForItsIdentifierWithoutALookUp)
{
    useQuestionedController("BareController");
    icon(mail_);
    EXPECT_THAT(requests(), ElementsAre("identifier", "identifier", "controller", "responds to applicationWithBundleIdentifier:",
                                        "responds to applicationWithDisplayIdentifier:", "icon for nil", "format 2"));
}

TEST_F(ListItems, CalendarsBulletinIsAskedForItsIdentifierTwice)
{
    countIdentifierCalls();
    icon(notification("com.apple.mobilecal"));
    EXPECT_EQ(identifierCalls, 2);
}

TEST_F(ListItems, ABulletinCalledNoIdentifierIsAskedForItTwice)
{
    countIdentifierCalls();
    icon(notification("noIdentifier"));
    EXPECT_EQ(identifierCalls, 2);
}

TEST_F(ListItems, OtherKindsAreNotAskedForTheirIdentifier)
{
    countIdentifierCalls();
    icon(simulator::cardItem(text("pass.1"), nullptr));
    icon(simulator::systemAlertItem(text("Low Battery"), nullptr));
    icon(simulator::unknownItem());
    EXPECT_EQ(identifierCalls, 0);
}

TEST_F(ListItems, EachUseTakesTheIdentifierOfItsOwnCall)
{
    noteIconRequests();
    answerIdentifiers({text("com.apple.mobilecal"), text("second")});
    icon(mail_);
    EXPECT_THAT(requests(), ElementsAre("bundle \"second\" format 0 scale 2"));

    requests().clear();
    makeClass("NewController", "NSObject");
    simulator::addMethod<"applicationWithBundleIdentifier:">(objc_getClass("NewController"), &lookUpByBundle);
    replaceController("NewController");
    answerIdentifiers({text("first"), text("second"), text("noIdentifier")});
    icon(mail_);
    EXPECT_THAT(requests(), ElementsAre("by bundle \"noIdentifier\"", "icon for application", "format 2"));

    requests().clear();
    answerIdentifiers({text("first"), text("noIdentifier")});
    EXPECT_EQ(icon(mail_), static_cast<SBAwayBulletinListItem*>(mail_.get())->iconImage());
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ListItems, EachCallMakesAnIconObjectOfItsOwnAndLetsItGo)
{
    static int made = 0;
    static int gone = 0;
    static NSObject* (*init)(NSObject*, SEL, NSObject*);
    static void (*dealloc)(NSObject*, SEL);
    const Class cls = objc_getClass("SBApplicationIcon");
    init = simulator::replaceMethod<"initWithApplication:">(
        cls, +[](NSObject* self, SEL message, NSObject* given) {
            ++made;
            return init(self, message, given);
        });
    dealloc = reinterpret_cast<void (*)(NSObject*, SEL)>(class_getMethodImplementation(cls, selector<"dealloc">()));
    simulator::addMethod<"dealloc">(
        cls, +[](NSObject* self, SEL message) {
            ++gone;
            dealloc(self, message);
        });
    const auto item = notification("com.apple.mobilemail");
    {
        const AutoreleasePool pool;
        for (int i = 0; i < 3; ++i)
            icon(item);
    }
    EXPECT_EQ(made, 3);
    EXPECT_EQ(gone, 3);
}

// Classes looked up by name

TEST_F(ListItems, EachClassIsLookedUpOnce)
{
    for (int i = 0; i < 3; ++i) {
        for (const auto& item : {notification("com.apple.mobilemail"), simulator::cardItem(text("pass.1"), nullptr),
                                 simulator::systemAlertItem(text("Low Battery"), nullptr), simulator::unknownItem()}) {
            identifier(item);
            icon(item);
        }
    }
    for (const char* name : kinds)
        EXPECT_EQ(lookupsOf(name), 1) << name;
    EXPECT_EQ(lookupsOf("SBApplicationController"), 1);
    EXPECT_EQ(lookupsOf("SBApplicationIcon"), 1);
}

TEST_F(ListItems, NoClassIsLookedUpBeforeItIsNeeded)
{
    identifier(notification("com.apple.mobilemail"));
    EXPECT_EQ(lookupsOf("SBAwayBulletinListItem"), 1);
    for (const char* name : {"SBAwayCardListItem", "SBAwaySystemAlertItem", "SBApplicationController", "SBApplicationIcon"})
        EXPECT_EQ(lookupsOf(name), 0) << name;
}

TEST_F(ListItems, AMissingKindIsLookedUpAgainAtEachUse)
{
    const auto item = notification("com.apple.mobilemail");
    hideClass("SBAwayBulletinListItem");
    EXPECT_EQ(identifier(item), "noIdentifier");
    EXPECT_EQ(identifier(item), "noIdentifier");
    EXPECT_EQ(lookupsOf("SBAwayBulletinListItem"), 2);
    icon(item);
    EXPECT_EQ(lookupsOf("SBAwayBulletinListItem"), 3);

    showClass("SBAwayBulletinListItem");
    EXPECT_EQ(identifier(item), "com.apple.mobilemail");
    EXPECT_EQ(identifier(item), "com.apple.mobilemail");
    EXPECT_EQ(lookupsOf("SBAwayBulletinListItem"), 4);
}

TEST_F(ListItems, MissingClassesForApplicationsAreLookedUpAgain)
{
    const auto item = notification("com.apple.mobilemail");
    hideClass("SBApplicationController");
    hideClass("SBApplicationIcon");
    EXPECT_EQ(icon(item), nullptr);
    EXPECT_EQ(icon(item), nullptr);
    EXPECT_EQ(lookupsOf("SBApplicationController"), 2);
    EXPECT_EQ(lookupsOf("SBApplicationIcon"), 2);

    showClass("SBApplicationController");
    showClass("SBApplicationIcon");
    EXPECT_NE(icon(item), nullptr);
    EXPECT_NE(icon(item), nullptr);
    EXPECT_EQ(lookupsOf("SBApplicationController"), 3);
    EXPECT_EQ(lookupsOf("SBApplicationIcon"), 3);
}
