#include "lockscreen/hooks.hpp"
#include "lockscreen/panel.hpp"

namespace hooks {

constinit Replacement<_NowPlayingArtView*(_NowPlayingArtView*, CGRect)> initNowPlayingArtView{
    [](_NowPlayingArtView* self, SEL selector, CGRect frame) {
        _NowPlayingArtView* const view = initNowPlayingArtView.previous(self, selector, frame);
        nowPlayingArtView = view;
        view->setHidden(true);
        return view;
    }};

} // namespace hooks
