#include "lockscreen/panel.hpp"

#include "text/greeting.hpp"
#include "text/weather_sentence.hpp"

constinit Strong<UILabel> headlineLabel;
constinit Strong<UILabel> subtitleLabel;
constinit Strong<UIImageView> calendarIconView;
constinit Strong<UIImageView> notificationIconView;
constinit Strong<UIView> tabView;
constinit Strong<UIView> calendarPaneView;
constinit Strong<_UIBackdropView> calendarPaneBackdrop;
constinit Strong<SVWidget> widgetView;
constinit Strong<UIView> notificationPaneView;
constinit Strong<_UIBackdropView> notificationPaneBackdrop;
constinit Strong<SVAppsView> appsView;
constinit Strong<_NowPlayingArtView> nowPlayingArtView;

void showGreeting()
{
    NSString* const greeting = dateStatusString();
    headlineLabel->setText(greeting);
}

void showWeather()
{
    NSString* const sentence = getTempString();
    subtitleLabel->setText(sentence);
}
