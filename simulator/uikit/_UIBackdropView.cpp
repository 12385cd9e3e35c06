#include "platform/UIKit/_UIBackdropView.hpp"

#include <algorithm>

#include "simulator/quartzcore/CALayer.hpp"
#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/quartzcore/damage.hpp"
#include "simulator/uikit/UIView.hpp"
#include "simulator/uikit/uikit.hpp"

/// A view that shows what lies behind it blurred, in the colours of its style, and tinted: it hands its settings to its layer.

namespace simulator {

namespace {

/// What a style does to what has been blurred. The figures are those of the public effects of the same names.
struct BackdropStyle {
    double saturation;
    Colour veil;
};

constexpr BackdropStyle light{1.8, {1, 1, 1, 0.3}};
constexpr BackdropStyle dark{1.8, {0.11, 0.11, 0.11, 0.73}};
constexpr BackdropStyle blurAlone{1, {}};

struct NumberedStyle {
    NSInteger number;
    const BackdropStyle& style;
};

constexpr NumberedStyle styles[] = {{0, light}, {1, dark}, {1001, dark}, {1100, dark}, {2030, dark}, {2, blurAlone}};

/// A number that is none of theirs blurs alone.
const BackdropStyle& styleOf(NSInteger number)
{
    const auto* const found = std::ranges::find(styles, number, &NumberedStyle::number);
    return found == std::end(styles) ? blurAlone : found->style;
}

struct BackdropViewSettingsState {
    Owned<UIColor> colorTint;
    CGFloat colorTintAlpha = 0;
    /// The view whose settings they are; it owns them.
    _UIBackdropView* view = nullptr;
};

struct BackdropViewState {
    NSInteger style = 0;
    Owned<_UIBackdropViewSettings> inputSettings;
    bool blurRadiusSetOnce = false;
    CGFloat blurRadius = 0;
    NSInteger blurHardEdges = 0;
    bool blursWithHardEdges = false;
    Owned<NSString> blurQuality;

    ~BackdropViewState()
    {
        if (inputSettings != nullptr)
            ivarsOf<BackdropViewSettingsState>(inputSettings.get()).view = nullptr;
    }
};

/// Hands what was set to the layer, where the compositor finds it.
void apply(NSObject* self)
{
    auto* const view = static_cast<_UIBackdropView*>(self);
    const auto& backdrop = ivarsOf<BackdropViewState>(view);
    const auto& settings = ivarsOf<BackdropViewSettingsState>(backdrop.inputSettings.get());
    Colour tint = colourOf(settings.colorTint->CGColor());
    tint.alpha = settings.colorTintAlpha;
    const BackdropStyle& style = styleOf(backdrop.style);
    ivarsOf<LayerState>(view->layer()).backdrop = LayerBackdrop{backdrop.blurRadius, style.saturation, tint.over(style.veil)};
    damageScreen();
}

void applySettings(NSObject* self)
{
    if (_UIBackdropView* const view = ivarsOf<BackdropViewSettingsState>(self).view)
        apply(view);
}

_UIBackdropView* initWithStyle(_UIBackdropView* self, SEL, NSInteger style)
{
    self->initWithFrame(CGRectZero);
    auto& backdrop = ivarsOf<BackdropViewState>(self);
    backdrop.style = style;
    backdrop.inputSettings = adopt(send<"new", _UIBackdropViewSettings*>(classNamed<"_UIBackdropViewSettings">()));
    ivarsOf<BackdropViewSettingsState>(backdrop.inputSettings.get()).view = self;
    self->setUserInteractionEnabled(false);
    self->setAutoresizingMask(flexibleSize);
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
    SimulatedClass<BackdropViewSettingsState>("_UIBackdropViewSettings", "NSObject")
        .property<&BackdropViewSettingsState::colorTint, applySettings>("colorTint")
        .property<&BackdropViewSettingsState::colorTintAlpha, applySettings>("colorTintAlpha")
        .registerClass();
    SimulatedClass<BackdropViewState>("_UIBackdropView", "UIView")
        .method<"initWithStyle:">(initWithStyle)
        .method<"didMoveToSuperview">(didMoveToSuperview)
        .readOnly<&BackdropViewState::style>("style")
        .readOnly<&BackdropViewState::inputSettings>("inputSettings")
        .property<&BackdropViewState::blurRadiusSetOnce>("blurRadiusSetOnce")
        .property<&BackdropViewState::blurRadius, apply>("blurRadius")
        .property<&BackdropViewState::blurHardEdges>("blurHardEdges")
        .property<&BackdropViewState::blursWithHardEdges>("blursWithHardEdges")
        .property<&BackdropViewState::blurQuality>("blurQuality")
        .registerClass();
}

} // namespace simulator
