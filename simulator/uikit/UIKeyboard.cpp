#include "simulator/uikit/UIKeyboard.hpp"

#include <string>
#include <vector>

#include "platform/UIKit/UIButton.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/uikit/UITextField.hpp"
#include "simulator/uikit/UIView.hpp"
#include "simulator/uikit/UIWindow.hpp"
#include "simulator/uikit/uikit.hpp"

/// Three rows of letters and one of longer keys. A letter comes as a capital at the beginning of a word where the field asks for
/// that.

namespace simulator {

namespace {

constexpr CGFloat keyboardHeight = 216;

struct Key {
    std::string text;
    /// In shares of the keyboard's width.
    CGFloat width;
};

struct KeyboardState {
    std::vector<Owned<UIButton>> keys;
};

const std::vector<std::vector<Key>>& rowsOfKeys()
{
    static const auto& rows = *new auto([] {
        std::vector<std::vector<Key>> made;
        for (const std::string_view letters : {"qwertyuiop", "asdfghjkl", "zxcvbnm"}) {
            auto& row = made.emplace_back();
            for (const char letter : letters)
                row.push_back({std::string(1, letter), 0.1});
        }
        made.back().push_back({"delete", 0.2});
        made.push_back({{"space", 0.75}, {"return", 0.25}});
        return made;
    }());
    return rows;
}

bool startsWord(NSString* text)
{
    return text->length() == 0 || text->characterAtIndex(text->length() - 1) == u' ';
}

void press(UIView*, SEL, UIButton* key)
{
    UITextField* const field = editedField();
    const std::string text = toUTF8(key->currentTitle());
    if (text == "return")
        field->resignFirstResponder();
    else if (text == "delete")
        field->deleteBackward();
    else if (text == "space")
        field->insertText(constantString<" ">());
    else if (field->autocapitalizationType() == UITextAutocapitalizationTypeWords && startsWord(field->text()))
        field->insertText(send<"uppercaseString", NSString*>(key->currentTitle()));
    else
        field->insertText(key->currentTitle());
}

Owned<UIButton> keyWith(const std::string& text, UIView* keyboard)
{
    Owned<UIButton> key = UIButton::buttonWithType(UIButtonTypeCustom);
    key->setTitle_forState(toNSString(text), UIControlStateNormal);
    key->setTitleColor_forState(UIColor::blackColor(), UIControlStateNormal);
    key->titleLabel()->setFont(UIFont::systemFontOfSize(text.size() == 1 ? 22 : 16));
    key->setBackgroundColor(UIColor::whiteColor());
    key->layer()->setCornerRadius(4);
    key->addTarget_action_forControlEvents(keyboard, selector<"simulator_press:">(), UIControlEventTouchUpInside);
    return key;
}

UIView* initWithFrame(UIView* self, SEL, CGRect frame)
{
    superOf<KeyboardState, "initWithFrame:", UIView*>(self, frame);
    self->setBackgroundColor(UIColor::colorWithRed_green_blue_alpha(0.82, 0.835, 0.86, 1));
    for (const auto& row : rowsOfKeys()) {
        for (const Key& key : row) {
            auto& made = ivarsOf<KeyboardState>(self).keys.emplace_back(keyWith(key.text, self));
            self->addSubview(made);
        }
    }
    return self;
}

/// Each row stands in the middle.
void layoutSubviews(UIView* self, SEL)
{
    constexpr CGFloat gap = 3;
    const CGSize size = self->bounds().size;
    const CGFloat height = size.height / static_cast<CGFloat>(rowsOfKeys().size());
    auto key = ivarsOf<KeyboardState>(self).keys.begin();
    CGFloat y = 0;
    for (const auto& row : rowsOfKeys()) {
        CGFloat shares = 0;
        for (const Key& one : row)
            shares += one.width;
        CGFloat x = (1 - shares) / 2 * size.width;
        for (const Key& one : row) {
            const CGFloat width = one.width * size.width;
            (*key++)->setFrame(CGRect::make(x + gap, y + 2 * gap, width - 2 * gap, height - 4 * gap));
            x += width;
        }
        y += height;
    }
}

Owned<UIView>& keyboard()
{
    static auto& shown = *new Owned<UIView>;
    return shown;
}

} // namespace

void showKeyboard()
{
    const CGSize size = keyWindow()->bounds().size;
    keyboard() = adopt(send<"alloc", UIView*>(classNamed<"UIKeyboard">())
                           ->initWithFrame(CGRect::make(0, size.height - keyboardHeight, size.width, keyboardHeight)));
    keyWindow()->addSubview(keyboard());
}

void hideKeyboard()
{
    keyboard()->removeFromSuperview();
    keyboard() = nullptr;
}

UIView* keyBearing(std::string_view text)
{
    if (keyboard() == nullptr)
        return nullptr;
    for (UIButton* key : ivarsOf<KeyboardState>(keyboard().get()).keys) {
        if (toUTF8(key->currentTitle()) == text)
            return key;
    }
    return nullptr;
}

void registerUIKeyboard()
{
    SimulatedClass<KeyboardState>("UIKeyboard", "UIView")
        .method<"initWithFrame:">(initWithFrame)
        .method<"layoutSubviews">(layoutSubviews)
        .method<"simulator_press:">(press)
        .registerClass();
}

} // namespace simulator
