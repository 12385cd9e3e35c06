#include "platform/UIKit/_UIBackdropView.hpp"

#include "simulator/quartzcore/LayerState.hpp"
#include "simulator/quartzcore/colours.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/uikit/ViewState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

struct BackdropSettingsState {
    Owned<UIColor> colorTint;
    CGFloat colorTintAlpha = 0;
    /// The view whose settings they are; it owns them.
    _UIBackdropView* view = nullptr;
};

struct BackdropState {
    NSInteger style = 0;
    Owned<_UIBackdropViewSettings> inputSettings;
    bool blurRadiusSetOnce = false;
    CGFloat blurRadius = 0;
    NSInteger blurHardEdges = 0;
    bool blursWithHardEdges = false;
    Owned<NSString> blurQuality;

    ~BackdropState()
    {
        if (inputSettings != nullptr)
            ivarsOf<BackdropSettingsState>(inputSettings.get()).view = nullptr;
    }
};

/// Hands what was set to the layer, where the compositor finds it.
void apply(NSObject* self)
{
    auto* const view = static_cast<_UIBackdropView*>(self);
    const auto& backdrop = ivarsOf<BackdropState>(view);
    const auto& settings = ivarsOf<BackdropSettingsState>(backdrop.inputSettings.get());
    Colour tint = colourOf(settings.colorTint->CGColor());
    tint.alpha = settings.colorTintAlpha;
    stateOf(view->layer()).backdrop = LayerBackdrop{backdrop.blurRadius, tint};
    damageScreen();
}

void applySettings(NSObject* self)
{
    if (_UIBackdropView* const view = ivarsOf<BackdropSettingsState>(self).view)
        apply(view);
}

_UIBackdropView* initWithStyle(_UIBackdropView* self, SEL, NSInteger style)
{
    send<"initWithFrame:", UIView*>(self, CGRectZero);
    auto& backdrop = ivarsOf<BackdropState>(self);
    backdrop.style = style;
    backdrop.inputSettings = adopt(send<"new", _UIBackdropViewSettings*>(classNamed<"_UIBackdropViewSettings">()));
    ivarsOf<BackdropSettingsState>(backdrop.inputSettings.get()).view = self;
    self->setUserInteractionEnabled(false);
    send<"setAutoresizingMask:">(self, flexibleSize);
    apply(self);
    return self;
}

void didMoveToSuperview(_UIBackdropView* self, SEL)
{
    if (self->superview() != nullptr)
        self->setFrame(self->superview()->bounds());
}

} // namespace

void registerUIBackdropView()
{
    SimulatedClass<BackdropSettingsState>("_UIBackdropViewSettings", "NSObject")
        .property<&BackdropSettingsState::colorTint, applySettings>("colorTint")
        .property<&BackdropSettingsState::colorTintAlpha, applySettings>("colorTintAlpha")
        .registerClass();
    SimulatedClass<BackdropState>("_UIBackdropView", "UIView")
        .method<"initWithStyle:">(initWithStyle)
        .method<"didMoveToSuperview">(didMoveToSuperview)
        .readOnly<&BackdropState::style>("style")
        .readOnly<&BackdropState::inputSettings>("inputSettings")
        .property<&BackdropState::blurRadiusSetOnce>("blurRadiusSetOnce")
        .property<&BackdropState::blurRadius, apply>("blurRadius")
        .property<&BackdropState::blurHardEdges>("blurHardEdges")
        .property<&BackdropState::blursWithHardEdges>("blursWithHardEdges")
        .property<&BackdropState::blurQuality>("blurQuality")
        .registerClass();
}

} // namespace simulator
