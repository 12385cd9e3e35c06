#include "lockscreen/now_playing_art_view.hpp"

#include "lockscreen/panel.hpp"

_NowPlayingArtView* (*previousInitNowPlayingArtViewWithFrame)(_NowPlayingArtView*, SEL, CGRect) = nullptr;

_NowPlayingArtView* initNowPlayingArtViewWithFrame(_NowPlayingArtView* self, SEL selector, CGRect frame)
{
    _NowPlayingArtView* const view = previousInitNowPlayingArtViewWithFrame(self, selector, frame);
    nowPlayingArtView = view;
    view->setHidden(true);
    return view;
}
