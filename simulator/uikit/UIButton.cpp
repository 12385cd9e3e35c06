#include "platform/UIKit/UIButton.hpp"

#include <map>

#include "simulator/uikit/ControlState.hpp"
#include "simulator/uikit/ViewState.hpp"
#include "simulator/uikit/uikit.hpp"

namespace simulator {

namespace {

struct ButtonState {
    Owned<UILabel> titleLabel;
    /// By control state.
    std::map<NSUInteger, Owned<NSString>> titles;
    std::map<NSUInteger, Owned<UIColor>> titleColors;
};

UIButton* buttonWithType(Class cls, SEL, UIButtonType)
{
    return adopt(send<"new", UIButton*>(cls)).autorelease();
}

/// What was set for the control's state, or else for the normal one; nil when neither was.
template <class T>
T* forState(const std::map<NSUInteger, Owned<T>>& values, NSUInteger state)
{
    auto found = values.find(state);
    if (found == values.end())
        found = values.find(UIControlStateNormal);
    return found == values.end() ? nullptr : found->second.get();
}

/// The label is made when it is first asked for.
UILabel* titleLabel(UIButton* self, SEL)
{
    auto& label = ivarsOf<ButtonState>(self).titleLabel;
    if (label == nullptr) {
        label = adopt(UILabel::alloc()->initWithFrame(self->bounds()));
        label->setTextAlignment(NSTextAlignmentCenter);
        label->setTextColor(UIColor::whiteColor());
        self->addSubview(label);
    }
    return label;
}

void setTitle(UIButton* self, SEL, NSString* title, UIControlState state)
{
    ivarsOf<ButtonState>(self).titles[state] = adopt(send<"copy", NSString*>(title));
    self->setNeedsLayout();
}

void setTitleColor(UIButton* self, SEL, UIColor* color, UIControlState state)
{
    ivarsOf<ButtonState>(self).titleColors[state] = color;
    self->setNeedsLayout();
}

NSString* titleForState(UIButton* self, SEL, UIControlState state)
{
    return forState(ivarsOf<ButtonState>(self).titles, state);
}

UIColor* titleColorForState(UIButton* self, SEL, UIControlState state)
{
    UIColor* const color = forState(ivarsOf<ButtonState>(self).titleColors, state);
    return color == nullptr ? UIColor::whiteColor() : color;
}

UIControlState stateOfControl(UIButton* self)
{
    return send<"state", UIControlState>(self);
}

NSString* currentTitle(UIButton* self, SEL)
{
    return send<"titleForState:", NSString*>(self, stateOfControl(self));
}

UIColor* currentTitleColor(UIButton* self, SEL)
{
    return send<"titleColorForState:", UIColor*>(self, stateOfControl(self));
}

void layoutSubviews(UIButton* self, SEL)
{
    UILabel* const label = self->titleLabel();
    label->setFrame(self->bounds());
    label->setText(send<"currentTitle", NSString*>(self));
    label->setTextColor(send<"currentTitleColor", UIColor*>(self));
}

} // namespace

void registerUIButton()
{
    SimulatedClass<ButtonState>("UIButton", "UIControl")
        .classMethod<"buttonWithType:">(buttonWithType)
        .method<"titleLabel">(titleLabel)
        .method<"setTitle:forState:">(setTitle)
        .method<"setTitleColor:forState:">(setTitleColor)
        .method<"titleForState:">(titleForState)
        .method<"titleColorForState:">(titleColorForState)
        .method<"currentTitle">(currentTitle)
        .method<"currentTitleColor">(currentTitleColor)
        .method<"layoutSubviews">(layoutSubviews)
        .registerClass();
}

} // namespace simulator
