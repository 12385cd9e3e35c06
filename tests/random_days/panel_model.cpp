#include <algorithm>
#include <utility>

#include "tests/random_days/PhoneModel.hpp"
#include "tests/random_days/state_text.hpp"

/// What taps, messages and items do to the panel, and what the panel looks like then.

namespace {

constexpr const char* face = " .HelveticaNeueInterface-UltraLightP2 ";

std::string text(const Rect& rect)
{
    return numbers({rect.x, rect.y, rect.width, rect.height});
}

std::string hiddenIf(bool isHidden)
{
    return isHidden ? " hidden" : "";
}

bool isApplication(const std::string& identifier)
{
    constexpr const char* installed[] = {"com.apple.mobilecal", "com.apple.mobilemail",  "com.apple.MobileSMS",
                                         "com.apple.Music",     "com.apple.mobilephone", "org.solvane.ferry",
                                         "org.solvane.larder"};
    return std::ranges::find(installed, identifier) != std::end(installed);
}

} // namespace

// The taps

Rect PhoneModel::iconFrame(bool notification) const
{
    return {notification ? screen_.width - 54.0 : 22.0, 87, 32, 32};
}

void PhoneModel::closePanes()
{
    panel_->calendarPaneIsHidden = true;
    panel_->notificationPaneIsHidden = true;
    panel_->tabIsHidden = true;
    panel_->tab = {};
    panel_->topPocketAlpha = 0;
}

void PhoneModel::cutTab()
{
    panel_->mask = numbers({0, 0, panel_->tab.width, panel_->tab.height}) + " corners 3 radii 5,5";
}

void PhoneModel::openCalendar()
{
    closePanes();
    panel_->calendarPaneIsHidden = false;
    panel_->tabIsHidden = false;
    panel_->tab = {12, 77, 52, 150};
    panel_->topPocketAlpha = 1;
    cutTab();
}

void PhoneModel::openNotifications()
{
    closePanes();
    panel_->notificationPaneIsHidden = false;
    panel_->tabIsHidden = false;
    panel_->tab = {screen_.width - 64.0, 77, 52, 150};
    panel_->topPocketAlpha = 1;
    panel_->subtitle = sentence();
    emptyStrip();
    cutTab();
}

void PhoneModel::send(const std::string& panelMessage)
{
    if (panel_ == nullptr)
        return;
    message("listView " + panelMessage);
    if (panelMessage == "imgCalenderTapped")
        openCalendar();
    else if (panelMessage == "imgNotificationsTapped")
        openNotifications();
    else if (panelMessage == "normalizePrevTap")
        closePanes();
    else
        cutTab();
}

// The strip

std::string PhoneModel::iconSource(const Item& item) const
{
    switch (item.kind) {
    case Item::Kind::bulletin:
        if (item.identifier == "com.apple.mobilecal")
            return "29,29 [icon of bundle " + quoted(item.identifier) + " 0 at " + number(screen_.scale) + ']';
        if (item.identifier == "noIdentifier")
            return "29,29 [iconImage of a bulletin]";
        return isApplication(item.identifier) ? "60,60 [icon of application " + quoted(item.identifier) + " 2]"
                                              : "none [icon of application none 2]";
    case Item::Kind::card:
        return "29,29 [thumbnail of a card]";
    case Item::Kind::alert:
        return "29,29 [iconImage of an alert]";
    default:
        return "29,29 [icon of bundle none 0 at " + number(screen_.scale) + ']';
    }
}

void PhoneModel::addIcon(const Item& item, long count)
{
    count += std::ranges::count(panel_->items, item.identifier, &Item::identifier);

    const double height = panel_->strip.height;
    const double side = height / 2;
    const double badge = height / 4;
    StripIcon& icon = panel_->icons[item.identifier];
    icon = {.side = side,
            .image = iconSource(item),
            .badge = numbers({side - badge / 2, -badge / 2, badge, badge}) + " image 35,35 [Badge.png in 0,0,35,35] [" +
                     quoted(std::to_string(count)) + " in 12.5,7.5,35,35 bold 16 1,1,1,1]"};
}

/// The icons stand in the dictionary's own order, so each may stand at any place of the row.
void PhoneModel::layOutRow()
{
    const double side = panel_->strip.height / 2;
    const double length = static_cast<double>(panel_->icons.size()) * (side + 10);
    panel_->stripContent = {0, 0, length, panel_->strip.height};
    panel_->row.clear();
    double x = std::max(0.0, (panel_->strip.width - length) / 2);
    for (auto& [identifier, icon] : panel_->icons) {
        icon.y = 22;
        icon.side = side;
        icon.isInStrip = true;
        panel_->row += ' ' + number(x);
        x += side + 10;
    }
}

void PhoneModel::emptyStrip()
{
    panel_->icons.clear();
    layOutRow();
}

void PhoneModel::addToStrip(std::size_t index, long count)
{
    if (panel_ == nullptr || panel_->items.empty())
        return;
    index %= panel_->items.size();
    message("appsView addIconFor:andBadgeCount: @controller._listItems[" + std::to_string(index) + "] " + std::to_string(count));
    addIcon(panel_->items[index], count);
    // Not in the strip before the row is shown.
    command("show appsView.subviews.count");
    answer(std::to_string(std::ranges::count_if(panel_->icons, [](const auto& each) { return each.second.isInStrip; })));
    showStrip();
}

void PhoneModel::clearStrip()
{
    if (panel_ == nullptr)
        return;
    message("appsView clearAll");
    emptyStrip();
}

void PhoneModel::showStrip()
{
    if (panel_ == nullptr)
        return;
    message("appsView showIcons");
    layOutRow();
}

void PhoneModel::setStripHeight(int height)
{
    if (panel_ == nullptr)
        return;
    panel_->strip.height = height;
    message("appsView setFrame: " + text(panel_->strip));
}

// The widget

void PhoneModel::setWidgetFrame(Rect frame)
{
    if (panel_ == nullptr)
        return;
    message("widgetView setFrame: " + text(frame));
    panel_->widget = frame;
}

void PhoneModel::sendToWidget(const std::string& widgetMessage)
{
    // Each weather card stays in the widget, so there are never many.
    constexpr std::size_t mostCards = 3;
    if (panel_ == nullptr || (widgetMessage == "loadWeather" && panel_->cards.size() == mostCards))
        return;
    message("widgetView " + widgetMessage);
    const Rect bounds{0, 0, panel_->widget.width, panel_->widget.height};
    Card* const card = panel_->cards.empty() ? nullptr : &panel_->cards.back();
    if (widgetMessage == "loadWeather") {
        panel_->cards.push_back({bounds});
    } else if (widgetMessage == "showWeather" && card != nullptr) {
        *card = {bounds, false};
    } else if (widgetMessage == "showCalendar") {
        MonthModel& month = *panel_->month;
        month.frame.x = panel_->widget.x + panel_->widget.width / 2 - month.frame.width / 2;
        month.frame.y = panel_->widget.y + panel_->widget.height / 2 - 25 - month.frame.height / 2;
        month.hidden = false;
    } else if (widgetMessage == "hideALL") {
        panel_->month->hidden = true;
        if (card != nullptr)
            card->hidden = true;
    }
}

// What it looks like

std::string PhoneModel::takeState()
{
    std::string state;
    for (const std::string& each : greetings_)
        state += "greeting: " + quoted(each) + '\n';
    state += "userName: " + quoted(userName_) + '\n';
    state += "settings: " + (!hasSettings_ ? "none" : "Name " + (settingsName_ ? quoted(*settingsName_) : "none")) + '\n';
    state += describePanel();
    state += spare_ == nullptr ? "spare: none\n" : spare_->describe("spare");
    for (const std::string& each : std::exchange(heard_, {}))
        state += "delegate: " + each + '\n';
    return state;
}

std::string PhoneModel::describePanel() const
{
    if (panel_ == nullptr)
        return "lock screen: none\nlist items: 0\nlistView: none\n_containerView: none\n_tableView: none\n_topPocketView: none\n"
               "_bottomPocketView: in none\nheadlineLabel: none\nsubtitleLabel: none\ncalendarIconView: none\n"
               "notificationIconView: none\ncalendarPaneView: none\ncalendarPaneBackdrop: none\nnotificationPaneView: none\n"
               "notificationPaneBackdrop: none\ntabView: none\nappsView: none\nnowPlayingArtView: none\nbackmost on the lock "
               "screen: none\nwidgetView: none\n";

    const Panel& panel = *panel_;
    const double width = screen_.width;
    const double height = screen_.height;
    const std::string whole = numbers({0, 0, width, height});
    const std::string pane = numbers({0, 130, width, height - 130});
    std::string state;
    const auto line = [&](const std::string& name, const std::string& content) { state += name + ": " + content + '\n'; };
    const auto label = [&](const std::string& name, const Rect& frame, const std::string& content, double size) {
        line(name, "UILabel " + text(frame) + " untouchable alpha 1 " + content + face + number(size) + " scale " +
                       number(16 / size) + " lines 1 alignment 1 adjusts 1,1,1,1 on 0,0,0,0");
    };
    const auto icon = [&](const std::string& name, bool notification, const std::string& file, const std::string& content) {
        line(name, "UIImageView " + text(iconFrame(notification)) + " alpha 1 image 40,40 [" + file + " in 0,0,40,40] [" +
                       quoted(content) + " in 10,11,40,40 bold 16 1,1,1,1] filter \"plusL\" recognizers 2");
    };
    const std::string backdrop = "_UIBackdropView style 1 tint 0,0,0,1 at 0.4 once radius 4 edges 2 hard quality \"default\"";

    line("lock screen",
         "SBLockScreenView " + whole + hiddenIf(panel.screenIsOff) + " alpha 1 subviews " + std::to_string(3 + panel.artViews));
    line("list items", std::to_string(panel.items.size()));
    line("listView", "SBLockScreenNotificationListView " + whole + " alpha 1 holds _containerView");
    line("_containerView", "UIView " + whole +
                               " alpha 1 holds appsView tabView notificationPaneView calendarPaneView _topPocketView "
                               "headlineLabel subtitleLabel calendarIconView notificationIconView");
    line("_tableView", "SBLockScreenNotificationTableView " + numbers({0, 0, width, height - 130}) + " alpha 1");
    line("_topPocketView",
         "UIView " + numbers({0, 130, width, 0.5}) + " untouchable alpha " + number(panel.topPocketAlpha) + " holds");
    line("_bottomPocketView", "in none");
    label("headlineLabel", {0, 0, width, 100}, panel.headline ? quoted(*panel.headline) : "none", 37.5);
    label("subtitleLabel", {0, 65, width, 50}, quoted(panel.subtitle), 17.5);
    icon("calendarIconView", false, "Calendar.png", std::to_string(panel.dayOfIcon));
    icon("notificationIconView", true, "Notification.png", "");
    line("calendarPaneView",
         "UIView " + pane + hiddenIf(panel.calendarPaneIsHidden) + " alpha 1 holds calendarPaneBackdrop widgetView");
    line("calendarPaneBackdrop", backdrop);
    line("notificationPaneView",
         "UIView " + pane + hiddenIf(panel.notificationPaneIsHidden) + " alpha 1 holds notificationPaneBackdrop _tableView");
    line("notificationPaneBackdrop", backdrop);
    line("tabView", "UIView " + text(panel.tab) + hiddenIf(panel.tabIsHidden) + " alpha 1 holds _UIBackdropView");
    line("tabBackdrop", backdrop);
    line("tabMask", panel.mask == "none" ? "none" : "CAShapeLayer " + panel.mask);
    state += describeStrip();
    line("nowPlayingArtView", hasArt_ ? "_NowPlayingArtView " + numbers({0, 0, width, width}) + " hidden alpha 1 holds" : "none");

    line("backmost on the lock screen", panel.artViews > 0 ? "nowPlayingArtView" : "UIImageView");
    std::string cards;
    std::string held;
    for (const Card& card : panel.cards) {
        held += " UIView";
        cards += std::string(&card == &panel.cards.back() ? "card" : "old card") + ": UIView " + text(card.frame) +
                 hiddenIf(card.hidden) + " alpha 1 on 0,1,0,1 holds UILabel\n";
        cards += std::string("card's label: UILabel 0,65,50,50 untouchable alpha 1 \"Now\"") + face +
                 "17.5 scale 0 lines 1 alignment 1 1,1,1,1 on 0,0,0,0\n";
    }
    line("widgetView", "SVWidget " + text(panel.widget) + " alpha 1 holds APLCalendar" + held);
    return state + cards + panel.month->describe("calendar");
}

std::string PhoneModel::describeStrip() const
{
    const Panel& panel = *panel_;
    const auto shown = std::ranges::count_if(panel.icons, [](const auto& each) { return each.second.isInStrip; });
    std::string state = "appsView: SVAppsView " + text(panel.strip) + " alpha 1 scrolls content " +
                        numbers({panel.stripContent.width, panel.stripContent.height}) + " items " +
                        (panel.stripHasItems ? "the list's" : "none") + " subviews " + std::to_string(shown) + '\n';
    state += "row: " + panel.row + '\n';
    std::vector<std::string> icons;
    for (const auto& [identifier, icon] : panel.icons)
        icons.push_back(quoted(identifier) + ' ' + numbers({icon.y, icon.side, icon.side}) +
                        (icon.isInStrip ? " in the strip" : "") + " image " + icon.image + " badge " + icon.badge);
    std::ranges::sort(icons);
    for (const std::string& icon : icons)
        state += "icon: " + icon + '\n';
    return state;
}
