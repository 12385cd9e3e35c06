#include "simulator/console/Command.hpp"

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/console/BadLine.hpp"
#include "simulator/console/arguments.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/services/event_store.hpp"
#include "simulator/springboard/SpringBoard.hpp"

/// The lock screen, what stands in its list, and what SpringBoard does to both.

namespace simulator {

namespace {

void lock(Console&, Words)
{
    lockScreen();
}

void layOut(Console&, Words)
{
    listView()->setNeedsLayout();
    listView()->layoutIfNeeded();
}

void addBulletin(Console&, Words arguments)
{
    addListItem(bulletinItem(toNSString(arguments[0]), optionalText(arguments, 1), optionalText(arguments, 2)));
}

void addCard(Console&, Words arguments)
{
    addListItem(cardItem(toNSString(arguments[0]), optionalText(arguments, 1)));
}

void addAlert(Console&, Words arguments)
{
    addListItem(systemAlertItem(toNSString(arguments[0]), optionalText(arguments, 1)));
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

void addUnderlay(Console&, Words)
{
    lockScreenView()->_addLockContentUnderlayWithRequester(listController());
}

} // namespace

std::span<const Command> lockScreenCommands()
{
    static constexpr Command commands[] = {
        {"lock", "", 0, 0, false, lock},
        {"layout", "", 0, 0, true, layOut},
        {"notify", "BUNDLE-ID [TITLE [MESSAGE]]", 1, 3, true, addBulletin},
        {"card", "ID [TITLE]", 1, 2, true, addCard},
        {"alert", "TITLE [MESSAGE]", 1, 2, true, addAlert},
        {"unknown", "", 0, 0, true, addUnknown},
        {"event", "TITLE START END", 3, 3, false, addCalendarEvent},
        {"clear", "", 0, 0, true, clearItems},
        {"teardown", "", 0, 0, true, tearDown},
        {"screen", "off | on", 1, 1, true, switchScreen},
        {"art", "", 0, 0, true, showArt},
        {"underlay", "", 0, 0, true, addUnderlay},
    };
    return commands;
}

} // namespace simulator
