#include "simulator/uikit/UITextField.hpp"

#include <utility>

#include "platform/UIKit/UILabel.hpp"
#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/uikit/UIKeyboard.hpp"
#include "simulator/uikit/uikit.hpp"

/// A line of text. A touch begins its editing, which brings the keyboard; the text is told when the editing ends.

namespace simulator {

namespace {

struct TextFieldState {
    Owned<UILabel> label;
    Owned<NSString> text = constantString<"">();
    Owned<NSString> placeholder;
    UITextAutocapitalizationType autocapitalizationType = UITextAutocapitalizationTypeNone;
    UITextAutocorrectionType autocorrectionType = UITextAutocorrectionTypeDefault;
};

Owned<UITextField>& edited()
{
    static auto& field = *new Owned<UITextField>;
    return field;
}

void textChanged(NSObject* self)
{
    static_cast<UITextField*>(self)->setNeedsLayout();
}

UITextField* initWithFrame(UITextField* self, SEL, CGRect frame)
{
    superOf<TextFieldState, "initWithFrame:", UITextField*>(self, frame);
    auto& label = ivarsOf<TextFieldState>(self).label;
    label = adopt(UILabel::alloc()->initWithFrame(self->bounds()));
    self->addSubview(label);
    return self;
}

/// No text is the empty one.
void setText(UITextField* self, SEL, NSString* text)
{
    ivarsOf<TextFieldState>(self).text = adopt(send<"copy", NSString*>(text == nullptr ? constantString<"">() : text));
    self->setNeedsLayout();
}

void layoutSubviews(UITextField* self, SEL)
{
    const auto& field = ivarsOf<TextFieldState>(self);
    const bool isEmpty = field.text->length() == 0;
    field.label->setFrame(self->bounds());
    field.label->setText(isEmpty ? field.placeholder.get() : field.text.get());
    field.label->setTextColor(isEmpty ? UIColor::colorWithWhite_alpha(0.78, 1) : UIColor::blackColor());
}

BOOL becomeFirstResponder(UITextField* self, SEL)
{
    if (edited() != self) {
        edited()->resignFirstResponder();
        edited() = self;
        showKeyboard();
    }
    return YES;
}

BOOL resignFirstResponder(UITextField* self, SEL)
{
    if (edited() != self)
        return NO;
    const Owned<UITextField> kept = std::exchange(edited(), nullptr);
    hideKeyboard();
    self->sendActionsForControlEvents(UIControlEventEditingDidEnd);
    return YES;
}

void insertText(UITextField* self, SEL, NSString* text)
{
    self->setText(send<"stringByAppendingString:", NSString*>(self->text(), text));
}

void deleteBackward(UITextField* self, SEL)
{
    NSString* const text = self->text();
    if (text->length() == 0)
        return;
    // What the user sees as one letter may be more than one character.
    const auto last = send<"rangeOfComposedCharacterSequenceAtIndex:", NSRange>(text, text->length() - 1);
    self->setText(send<"substringToIndex:", NSString*>(text, last.location));
}

void touchesEnded_withEvent(UITextField* self, SEL, NSSet* touches, UIEvent* event)
{
    superOf<TextFieldState, "touchesEnded:withEvent:">(self, touches, event);
    self->becomeFirstResponder();
}

bool isWithin(UIView* view, UIView* ancestor)
{
    while (view != nullptr && view != ancestor)
        view = view->superview();
    return view != nullptr;
}

BOOL endEditing(UIView* self, SEL, BOOL)
{
    const Owned<UITextField> field = edited();
    return field != nullptr && isWithin(field, self) && field->resignFirstResponder();
}

} // namespace

UITextField* editedField()
{
    return edited();
}

void registerUITextField()
{
    SimulatedClass<TextFieldState>("UITextField", "UIControl")
        .method<"initWithFrame:">(initWithFrame)
        .readOnly<&TextFieldState::text>("text")
        .method<"setText:">(setText)
        .property<&TextFieldState::placeholder, textChanged>("placeholder")
        .property<&TextFieldState::autocapitalizationType>("autocapitalizationType")
        .property<&TextFieldState::autocorrectionType>("autocorrectionType")
        .method<"layoutSubviews">(layoutSubviews)
        .method<"becomeFirstResponder">(becomeFirstResponder)
        .method<"resignFirstResponder">(resignFirstResponder)
        .method<"insertText:">(insertText)
        .method<"deleteBackward">(deleteBackward)
        .method<"touchesEnded:withEvent:">(touchesEnded_withEvent)
        .registerClass();
    addMethod<"endEditing:">(classNamed<"UIView">(), &endEditing);
}

} // namespace simulator
