#include "simulator/uikit/UIAlertView.hpp"

#include <algorithm>

#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/UIWindow.hpp"
#include "simulator/uikit/uikit.hpp"

/// A white panel in the middle of a darkened screen: a title, a message, and its buttons in a row.

namespace simulator {

namespace {

constexpr CGFloat panelWidth = 270;
constexpr CGFloat margin = 18;
constexpr CGFloat buttonHeight = 44;

struct AlertViewState {
    Owned<NSString> title;
    Owned<NSString> message;
    /// Not retained.
    NSObject* delegate = nullptr;
    std::vector<Owned<UIButton>> buttons;
    Owned<UIView> panel;
};

std::vector<Owned<UIAlertView>>& alerts()
{
    static auto& shown = *new std::vector<Owned<UIAlertView>>;
    return shown;
}

NSInteger addButtonWithTitle(UIAlertView* self, SEL, NSString* title)
{
    auto& buttons = ivarsOf<AlertViewState>(self).buttons;
    auto& button = buttons.emplace_back(UIButton::buttonWithType(UIButtonTypeCustom));
    button->setTitle_forState(title, UIControlStateNormal);
    button->setTitleColor_forState(UIColor::colorWithRed_green_blue_alpha(0, 0.478, 1, 1), UIControlStateNormal);
    button->addTarget_action_forControlEvents(self, selector<"simulator_press:">(), UIControlEventTouchUpInside);
    return std::ssize(buttons) - 1;
}

/// Adds a text in the middle of the panel, below `y`, and gives where it ends.
CGFloat addText(UIView* panel, NSString* text, UIFont* font, CGFloat y)
{
    const auto label = adopt(UILabel::alloc()->initWithFrame(CGRect::make(0, 0, 0, 0)));
    label->setFont(font);
    label->setText(text);
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setNumberOfLines(0);
    const CGFloat width = panelWidth - 2 * margin;
    const CGFloat height = label->sizeThatFits({width, 0}).height;
    label->setFrame(CGRect::make(margin, y, width, height));
    panel->addSubview(label);
    return y + height;
}

void addButtons(UIView* panel, const std::vector<Owned<UIButton>>& buttons, CGFloat y)
{
    const CGFloat width = panelWidth / static_cast<CGFloat>(buttons.size());
    CGFloat x = 0;
    for (UIButton* button : buttons) {
        const auto edge =
            adopt(UIView::alloc()->initWithFrame(CGRect::make(x, y, x == 0 ? panelWidth : 0.5, x == 0 ? 0.5 : buttonHeight)));
        edge->setBackgroundColor(UIColor::colorWithWhite_alpha(0.78, 1));
        button->setFrame(CGRect::make(x, y, width, buttonHeight));
        panel->addSubview(button);
        panel->addSubview(edge);
        x += width;
    }
}

void show(UIAlertView* self, SEL)
{
    auto& alert = ivarsOf<AlertViewState>(self);
    const CGRect screen = keyWindow()->bounds();
    self->setFrame(screen);
    self->setBackgroundColor(UIColor::colorWithWhite_alpha(0, 0.4));
    alert.panel = adopt(UIView::alloc()->initWithFrame(CGRect::make(0, 0, panelWidth, 0)));
    alert.panel->setBackgroundColor(UIColor::colorWithWhite_alpha(0.97, 1));
    alert.panel->layer()->setCornerRadius(7);
    CGFloat y = addText(alert.panel, alert.title, UIFont::boldSystemFontOfSize(17), margin);
    y = addText(alert.panel, alert.message, UIFont::systemFontOfSize(14), y + 4) + margin;
    addButtons(alert.panel, alert.buttons, y);
    alert.panel->setFrame(CGRect::make((screen.size.width - panelWidth) / 2, (screen.size.height - y - buttonHeight) / 2,
                                       panelWidth, y + buttonHeight));
    self->addSubview(alert.panel);
    keyWindow()->addSubview(self);
    alerts().emplace_back(self);
}

/// The delegate is told of the button by its index once the alert is gone.
void press(UIAlertView* self, SEL, UIButton* button)
{
    const Owned<UIAlertView> kept(self);
    const auto& alert = ivarsOf<AlertViewState>(self);
    const NSInteger index = std::ranges::find(alert.buttons, button, &Owned<UIButton>::get) - alert.buttons.begin();
    self->removeFromSuperview();
    std::erase_if(alerts(), [&](const Owned<UIAlertView>& shown) { return shown.get() == self; });
    if (alert.delegate->respondsToSelector(selector<"alertView:clickedButtonAtIndex:">()))
        send<"alertView:clickedButtonAtIndex:">(alert.delegate, self, index);
}

} // namespace

const std::vector<Owned<UIAlertView>>& shownAlerts()
{
    return alerts();
}

const std::vector<Owned<UIButton>>& buttonsOf(UIAlertView* alert)
{
    return ivarsOf<AlertViewState>(alert).buttons;
}

void registerUIAlertView()
{
    SimulatedClass<AlertViewState>("UIAlertView", "UIView")
        .property<&AlertViewState::title>("title")
        .property<&AlertViewState::message>("message")
        .property<&AlertViewState::delegate>("delegate")
        .method<"addButtonWithTitle:">(addButtonWithTitle)
        .method<"show">(show)
        .method<"simulator_press:">(press)
        .registerClass();
}

} // namespace simulator
