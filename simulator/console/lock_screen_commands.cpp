#include "simulator/console/Command.hpp"

#include "platform/UIKit/UIScreen.hpp"
#include "platform/UIKit/UITableView.hpp"
#include "simulator/console/BadLine.hpp"
#include "simulator/console/arguments.hpp"
#include "simulator/console/geometry_report.hpp"
#include "simulator/console/report.hpp"
#include "simulator/files/numbers.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/services/event_store.hpp"
#include "simulator/springboard/SBLockScreenView.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "simulator/springboard/bulletins.hpp"

/// The lock screen, what stands in its list, and what SpringBoard does to both.

namespace simulator {

namespace {

void lock(Console&, Words)
{
    lockScreen();
}

void tellGeometry(Console&, Words)
{
    report(reportOf(geometry(), UIScreen::mainScreen()->bounds().size));
}

void layOut(Console&, Words)
{
    listView()->setNeedsLayout();
    listView()->layoutIfNeeded();
}

void notify(Console&, Words arguments)
{
    receiveBulletin(newBulletin({toNSString(arguments[0]), optionalText(arguments, 1), optionalText(arguments, 2), nullptr}));
}

void notifyFromPerson(Console&, Words arguments)
{
    receiveBulletin(newBulletin(
        {toNSString(arguments[1]), optionalText(arguments, 2), optionalText(arguments, 3), toNSString(arguments[0])}));
}

NSObject* listItemAt(const std::string& place)
{
    const auto items = send<"count", NSUInteger>(listController());
    const auto index = parseNumber<NSUInteger>(place);
    if (!index || *index >= items)
        throw BadLine("there is no item " + place + " in the list, which has " + std::to_string(items));
    return send<"listItemAtIndexPath:", NSObject*>(listController(),
                                                   NSIndexPath::indexPathForRow_inSection(static_cast<NSInteger>(*index), 0));
}

void modify(Console&, Words arguments)
{
    if (!modifyListItem(listItemAt(arguments[0]), toNSString(arguments[1]), optionalText(arguments, 2)))
        throw BadLine("item " + arguments[0] + " has no texts");
}

void removeItem(Console&, Words arguments)
{
    removeListItem(listItemAt(arguments[0]));
}

void addCard(Console&, Words arguments)
{
    receiveCard(toNSString(arguments[0]), optionalText(arguments, 1));
}

void addAlert(Console&, Words arguments)
{
    receiveAlert(toNSString(arguments[0]), optionalText(arguments, 1));
}

void addUnknown(Console&, Words)
{
    addListItem(unknownItem());
}

void addCalendarEvent(Console&, Words arguments)
{
    const double start = momentIn(arguments[1]);
    const double end = momentIn(arguments[2]);
    if (end < start)
        throw BadLine("the event ends before it starts");
    addEvent(arguments[0], start, end);
}

void clearItems(Console&, Words)
{
    listController()->clearItemsForNotificationCenter();
}

void tearDown(Console&, Words)
{
    listController()->prepareForTeardown();
}

void switchScreen(Console&, Words arguments)
{
    listController()->setInScreenOffMode(chosen<bool>(arguments[0], {{"off", true}, {"on", false}}));
}

void showArt(Console&, Words)
{
    const Class artClass = classNamed<"_NowPlayingArtView">();
    if (artClass == nullptr)
        throw BadLine("there is no class _NowPlayingArtView: the library that defines it is not loaded");
    const CGFloat width = UIScreen::mainScreen()->bounds().size.width;
    UIView* const allocated = send<"alloc", UIView*>(artClass);
    const auto art = adopt(allocated->initWithFrame(CGRect::make(0, 0, width, width)));
    lockScreenView()->insertSubview_atIndex(art, 0);
}

void switchPasscodePage(Console&, Words arguments)
{
    showPasscodePage(lockScreenView(), chosen<bool>(arguments[0], {{"on", true}, {"off", false}}));
}

void addUnderlay(Console&, Words)
{
    lockScreenView()->_addLockContentUnderlayWithRequester(listController());
}

} // namespace

std::span<const Command> lockScreenCommands()
{
    static constexpr Command commands[] = {
        {"lock", "", 0, 0, false, lock},
        {"geometry", "", 0, 0, false, tellGeometry},
        {"layout", "", 0, 0, true, layOut},
        {"notify", "BUNDLE-ID [TITLE [MESSAGE]]", 1, 3, true, notify},
        {"notify --person", "NAME BUNDLE-ID [TITLE [MESSAGE]]", 2, 4, true, notifyFromPerson},
        {"card", "ID [TITLE]", 1, 2, true, addCard},
        {"alert", "TITLE [MESSAGE]", 1, 2, true, addAlert},
        {"unknown", "", 0, 0, true, addUnknown},
        {"modify", "PLACE TITLE [MESSAGE]", 2, 3, true, modify},
        {"remove", "PLACE", 1, 1, true, removeItem},
        {"event", "TITLE START END", 3, 3, false, addCalendarEvent},
        {"clear", "", 0, 0, true, clearItems},
        {"teardown", "", 0, 0, true, tearDown},
        {"screen", "off | on", 1, 1, true, switchScreen},
        {"art", "", 0, 0, true, showArt},
        {"underlay", "", 0, 0, true, addUnderlay},
        {"passcode", "on | off", 1, 1, true, switchPasscodePage},
    };
    return commands;
}

} // namespace simulator
