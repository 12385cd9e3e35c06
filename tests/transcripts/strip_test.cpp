#include <gtest/gtest.h>

#include "platform/SpringBoard/SBApplication.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/objects.hpp"
#include "tests/support/strip.hpp"
#include "tests/transcripts/strip_tables.hpp"

/// The strip of icons with badges.

namespace {

using namespace tables;

class StripTranscript : public testing::Test {
protected:
    StripTranscript() : strip_(strip::make()) { transcript_.name("strip", strip_).name("icons", strip::icons(strip_)); }

    /// The items of the list; the first is called "item", the second "item 2" and so on.
    void setItems(const std::vector<NSObject*>& items)
    {
        const Owned<NSMutableArray> list = arrayOf(items);
        for (std::size_t i = 0; i < items.size(); ++i)
            transcript_.name(i == 0 ? "item" : "item " + std::to_string(i + 1), items[i]);
        transcript_.name("items", list);
        strip::setItems(strip_, list);
    }

    void expectIdentifier(NSObject* item, const Rows& rows)
    {
        transcript_.name("item", item).expect([&] { strip::identifier(strip_, item); }, rows);
    }

    void expectIcon(NSObject* item, const Rows& rows)
    {
        transcript_.name("item", item).expect([&] { strip::icon(strip_, item); }, rows);
    }

    InjectedMorningPhone phone_;
    Owned<UIScrollView> strip_;
    Transcript transcript_;
};

const std::string messages = "com.apple.MobileSMS";

} // namespace

TEST_F(StripTranscript, OfMakingOne)
{
    const Owned<UIView> made = adopt(send<"alloc", UIView*>(objc_getClass("SVAppsView")));
    Transcript()
        .name("strip", made)
        .expect([&] { made->initWithFrame(CGRect::make(76, 100, 168, 100)); }, tables::stripConstruction("(76 100 168 100)"));
}

TEST_F(StripTranscript, OfMakingOneThatItsSuperclassRefuses)
{
    const Owned<UIView> made = adopt(send<"alloc", UIView*>(objc_getClass("SVAppsView")));
    simulator::replaceMethod<"initWithFrame:">(
        objc_getClass("UIScrollView"), +[](UIView*, SEL, CGRect) -> UIView* { return nullptr; });
    Transcript()
        .name("strip", made)
        .expect([&] { made->initWithFrame(CGRect::make(0, 0, 1, 1)); }, {"strip super initWithFrame: (0 0 1 1)"});
}

// Identifiers

TEST_F(StripTranscript, OfTheIdentifierOfANotification)
{
    const auto item = notification(messages);
    expectIdentifier(item, identifier("item", Kind::bulletin, true));
    expectIdentifier(item, identifier("item", Kind::bulletin));
}

TEST_F(StripTranscript, OfTheIdentifierOfACard)
{
    const auto item = simulator::cardItem(text("pass"), text("Boarding pass"));
    expectIdentifier(item, identifier("item", Kind::card, true));
    expectIdentifier(item, identifier("item", Kind::card));
}

TEST_F(StripTranscript, OfTheIdentifierOfAnAlert)
{
    const auto item = simulator::systemAlertItem(text("Low battery"), text("10%"));
    expectIdentifier(item, identifier("item", Kind::alert, true));
}

TEST_F(StripTranscript, OfTheIdentifierOfAnUnknownItem)
{
    const auto item = simulator::unknownItem();
    expectIdentifier(item, identifier("item", Kind::unknown, true));
    expectIdentifier(item, identifier("item", Kind::unknown));
}

TEST_F(StripTranscript, OfTheIdentifierWithoutTheItemsClasses)
{
    for (const std::string_view name : itemClasses)
        hideClass(std::string(name));
    const auto item = notification(messages);
    Rows rows;
    for (const std::string_view name : itemClasses)
        rows = rows + Rows{"objc_getClass " + std::string(name), "item isKindOfClass: nil"};
    expectIdentifier(item, rows);
    expectIdentifier(item, rows);
}

// Icons

TEST_F(StripTranscript, OfTheIconOfANotification)
{
    const auto item = notification(messages);
    expectIcon(item, applicationIcon({.identifier = "'" + messages + "'", .isFirst = true}));
    expectIcon(item, applicationIcon({.identifier = "'" + messages + "'"}));
}

TEST_F(StripTranscript, OfTheIconOfAnApplicationThatIsNotThere)
{
    expectIcon(notification("org.nobody"), applicationIcon({.identifier = "'org.nobody'", .isFirst = true, .isFound = false}));
}

TEST_F(StripTranscript, OfTheIconOfTheCalendarsNotification)
{
    const std::string identifier = "'com.apple.mobilecal'";
    expectIcon(notification("com.apple.mobilecal"),
               kindOf("item", Kind::bulletin, true) + askingForIdentifier("strip", "item", Kind::bulletin) +
                   Rows{identifier + " isEqualToString: 'com.apple.mobilecal'"} +
                   askingForIdentifier("strip", "item", Kind::bulletin) + screenScale() +
                   Rows{"UIImage _applicationIconImageForBundleIdentifier: " + identifier + " format: 0 scale: 2 = image"});
}

TEST_F(StripTranscript, OfTheIconOfANotificationThatNamesNoApplication)
{
    expectIcon(notification("noIdentifier"), kindOf("item", Kind::bulletin, true) +
                                                 askingForIdentifier("strip", "item", Kind::bulletin) +
                                                 Rows{"'noIdentifier' isEqualToString: 'com.apple.mobilecal'"} +
                                                 askingForIdentifier("strip", "item", Kind::bulletin) +
                                                 Rows{"'noIdentifier' isEqualToString: 'noIdentifier'", "item iconImage"});
}

TEST_F(StripTranscript, OfTheIconOfANotificationWithoutAnIdentifier)
{
    expectIcon(simulator::bulletinItem(nullptr, nullptr, nullptr),
               applicationIcon({.identifier = "nil", .isFirst = true, .isFound = false}));
}

TEST_F(StripTranscript, OfTheIconsOfTheOtherKinds)
{
    const auto card = simulator::cardItem(text("pass"), text("Boarding pass"));
    expectIcon(card, kindOf("item", Kind::card, true) + Rows{"item cardThumbnail"});
    const auto alert = simulator::systemAlertItem(text("Low battery"), text("10%"));
    Rows rows = kindOf("item", Kind::card) +
                Rows{"objc_getClass SBAwaySystemAlertItem", "item isKindOfClass: SBAwaySystemAlertItem", "item iconImage"};
    expectIcon(alert, rows);
    expectIcon(simulator::unknownItem(), genericIcon("item"));
}

namespace {

/// Whether the application controller answers the selector.
std::set<std::string>& unanswered()
{
    static auto& names = *new std::set<std::string>;
    return names;
}

BOOL (*respondsToSelector)(NSObject*, SEL, SEL);

/// An application controller without those methods.
void withoutMethods(std::set<std::string> names)
{
    unanswered() = std::move(names);
    respondsToSelector = simulator::replaceMethod<"respondsToSelector:">(
        objc_getClass("NSObject"), +[](NSObject* self, SEL message, SEL name) {
            const bool isController = std::string(class_getName(object_getClass(self))) == "SBApplicationController";
            return isController && unanswered().contains(sel_getName(name)) ? NO : respondsToSelector(self, message, name);
        });
}

} // namespace

TEST_F(StripTranscript, OfTheIconWithTheEarlierApplicationController)
{
    withoutMethods({"applicationWithBundleIdentifier:"});
    simulator::addMethod<"applicationWithDisplayIdentifier:">(
        objc_getClass("SBApplicationController"), +[](SBApplicationController* self, SEL, NSString* identifier) {
            return self->applicationWithBundleIdentifier(identifier);
        });
    expectIcon(
        notification(messages),
        applicationIcon({.identifier = "'" + messages + "'", .isFirst = true, .lookup = "applicationWithDisplayIdentifier:"}));
}

TEST_F(StripTranscript, OfTheIconWithAnApplicationControllerThatFindsNothing)
{
    withoutMethods({"applicationWithBundleIdentifier:", "applicationWithDisplayIdentifier:"});
    expectIcon(notification(messages), applicationIcon({.identifier = "'" + messages + "'", .isFirst = true, .lookup = ""}));
}

TEST_F(StripTranscript, OfTheIconWithoutAnApplicationController)
{
    hideClass("SBApplicationController");
    hideClass("SBApplicationIcon");
    const std::string equals = "'" + messages + "' isEqualToString: ";
    const Rows rest = askingForIdentifier("strip", "item", Kind::bulletin) + Rows{equals + "'com.apple.mobilecal'"} +
                      askingForIdentifier("strip", "item", Kind::bulletin) +
                      Rows{equals + "'noIdentifier'", "objc_getClass SBApplicationController", "objc_getClass SBApplicationIcon"};
    const auto item = notification(messages);
    expectIcon(item, kindOf("item", Kind::bulletin, true) + rest);
    expectIcon(item, kindOf("item", Kind::bulletin) + rest);
}

// Adding an item

namespace {

const std::string walking = "items countByEnumeratingWithState: room objects: room count: 16";

/// Counting an item in the list; all of them are notifications.
Rows counted(const std::string& item, const std::string& identifier, const std::string& key)
{
    return askingForIdentifier("strip", item, Kind::bulletin) + Rows{identifier + " isEqualToString: " + key};
}

} // namespace

TEST_F(StripTranscript, OfTheFirstItemOfAnApplication)
{
    const auto item = notification(messages);
    setItems({item});
    strip::icon(strip_, item);
    const std::string key = "'" + messages + "'";
    transcript_.expect([&] { strip::add(strip_, item); },
                       askingForIdentifier("strip", "item", Kind::bulletin) + Rows{"strip items", walking} +
                           counted("item", key, key) + Rows{walking} +
                           iconWithBadge({.identifier = key, .icon = applicationIcon({.identifier = key}), .count = "1"}));
}

TEST_F(StripTranscript, OfTheSecondItemOfAnApplicationAmongOthers)
{
    const auto first = notification(messages);
    const auto other = notification("com.apple.mobilemail");
    const auto second = notification(messages);
    setItems({first});
    strip::add(strip_, first);
    transcript_.name("earlier", strip::iconOf(strip_, messages));
    setItems({second, other, first});
    const std::string key = "'" + messages + "'";
    transcript_.expect(
        [&] { strip::add(strip_, second, 5); },
        askingForIdentifier("strip", "item", Kind::bulletin) + Rows{"strip items", walking} + counted("item", key, key) +
            counted("item 2", "'com.apple.mobilemail'", key) + counted("item 3", key, key) + Rows{walking} +
            iconWithBadge({.identifier = key, .icon = applicationIcon({.identifier = key}), .count = "7", .earlier = "earlier"}));
}

TEST_F(StripTranscript, OfAnItemWithoutAList)
{
    const auto item = notification(messages);
    strip::icon(strip_, item);
    transcript_.name("item", item);
    const std::string key = "'" + messages + "'";
    transcript_.expect([&] { strip::add(strip_, item); },
                       askingForIdentifier("strip", "item", Kind::bulletin) + Rows{"strip items"} +
                           iconWithBadge({.identifier = key, .icon = applicationIcon({.identifier = key}), .count = "0"}));
}

TEST_F(StripTranscript, OfAnItemWithoutAnIdentifier)
{
    const auto item = simulator::bulletinItem(nullptr, nullptr, nullptr);
    strip::icon(strip_, item);
    setItems({item});
    const Rows asked = askingForIdentifier("strip", "item", Kind::bulletin);
    Rows rows = asked + Rows{"strip items", walking} + asked + Rows{walking} +
                iconWithBadge({.identifier = "nil",
                               .icon = applicationIcon({.identifier = "nil", .isFound = false}),
                               .count = "0",
                               .image = "nil"});
    // There is nothing to keep the icon under.
    rows.resize(rows.size() - 2);
    transcript_.expect([&] { strip::add(strip_, item); }, rows);
}

TEST_F(StripTranscript, OfACard)
{
    const auto item = simulator::cardItem(text("pass"), text("Boarding pass"));
    strip::icon(strip_, item);
    setItems({item});
    const Rows asked = askingForIdentifier("strip", "item", Kind::card);
    transcript_.expect(
        [&] { strip::add(strip_, item); },
        asked + Rows{"strip items", walking} + asked + Rows{"'pass' isEqualToString: 'pass'", walking} +
            iconWithBadge(
                {.identifier = "'pass'", .icon = kindOf("item", Kind::card) + Rows{"item cardThumbnail = image"}, .count = "1"}));
}

TEST_F(StripTranscript, OfAnAlert)
{
    const auto item = simulator::systemAlertItem(text("Low battery"), text("10%"));
    strip::icon(strip_, item);
    setItems({item});
    const Rows asked = askingForIdentifier("strip", "item", Kind::alert);
    transcript_.expect([&] { strip::add(strip_, item); },
                       asked + Rows{"strip items", walking} + asked +
                           Rows{"'Low battery' isEqualToString: 'Low battery'", walking} +
                           iconWithBadge({.identifier = "'Low battery'",
                                          .icon = kindOf("item", Kind::alert) + Rows{"item iconImage = image"},
                                          .count = "1"}));
}

TEST_F(StripTranscript, OfAnItemOfAnUnknownKind)
{
    const auto item = simulator::unknownItem();
    strip::icon(strip_, item);
    setItems({item});
    transcript_.expect([&] { strip::add(strip_, item); }, unknownItemAdded("strip"));
}

// The row

namespace {

class RowTranscript : public StripTranscript, public testing::WithParamInterface<std::size_t> {
protected:
    RowTranscript()
    {
        for (std::size_t i = 0; i < GetParam(); ++i)
            strip::add(strip_, notification("org.example.app" + std::to_string(i)));
        NSArray* const views = strip::icons(strip_)->allValues();
        for (std::size_t i = 0; i < GetParam(); ++i)
            transcript_.name(iconNames()[i], views->objectAtIndex(static_cast<NSUInteger>(i)));
    }

    static std::vector<std::string> iconNames()
    {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < GetParam(); ++i)
            names.push_back("icon " + std::to_string(i));
        return names;
    }
};

} // namespace

TEST_P(RowTranscript, IsLaidOut)
{
    transcript_.expect([&] { strip::show(strip_); }, stripRow("strip", iconNames()));
}

TEST_P(RowTranscript, IsCleared)
{
    Rows rows = stripClearing("strip", iconNames());
    rows.erase(rows.begin());
    transcript_.expect([&] { strip::clear(strip_); }, rows);
}

INSTANTIATE_TEST_SUITE_P(OfSomeIcons, RowTranscript, testing::Values(0, 1, 2, 3));

TEST_F(StripTranscript, OfItsProperties)
{
    setItems({});
    transcript_.expect([&] { strip::items(strip_); }, {});
    transcript_.expect([&] { strip::setItems(strip_, nullptr); }, {});
    transcript_.expect([&] { strip::icons(strip_); }, {});
}
