#include "platform/UIKit/UIButton.hpp"

#include <map>

#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/uikit.hpp"

/// A control with a title over all of its bounds, whose text and colour follow its state.

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

void setTitle_forState(UIButton* self, SEL, NSString* title, UIControlState state)
{
    ivarsOf<ButtonState>(self).titles[state] = adopt(send<"copy", NSString*>(title));
    self->setNeedsLayout();
}

void setTitleColor_forState(UIButton* self, SEL, UIColor* color, UIControlState state)
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

NSString* currentTitle(UIButton* self, SEL)
{
    return self->titleForState(self->state());
}

UIColor* currentTitleColor(UIButton* self, SEL)
{
    return self->titleColorForState(self->state());
}

void layoutSubviews(UIButton* self, SEL)
{
    UILabel* const label = self->titleLabel();
    label->setFrame(self->bounds());
    label->setText(self->currentTitle());
    label->setTextColor(self->currentTitleColor());
}

} // namespace

void registerUIButton()
{
    SimulatedClass<ButtonState>("UIButton", "UIControl")
        .classMethod<"buttonWithType:">(buttonWithType)
        .method<"titleLabel">(titleLabel)
        .method<"setTitle:forState:">(setTitle_forState)
        .method<"setTitleColor:forState:">(setTitleColor_forState)
        .method<"titleForState:">(titleForState)
        .method<"titleColorForState:">(titleColorForState)
        .method<"currentTitle">(currentTitle)
        .method<"currentTitleColor">(currentTitleColor)
        .method<"layoutSubviews">(layoutSubviews)
        .registerClass();
}

} // namespace simulator
