#include "lockscreen/now_playing_art_view.hpp"

_NowPlayingArtView* (*previousInitNowPlayingArtViewWithFrame)(_NowPlayingArtView*, SEL, CGRect) = nullptr;

_NowPlayingArtView* initNowPlayingArtViewWithFrame(_NowPlayingArtView* self, SEL selector, CGRect frame)
{
    return previousInitNowPlayingArtViewWithFrame(self, selector, frame);
}
