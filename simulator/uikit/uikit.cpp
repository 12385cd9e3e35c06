#include "simulator/uikit/uikit.hpp"

namespace simulator {

void registerUIKit()
{
    registerUIColor();
    registerUIFont();
    registerUIImage();
    registerUIScreen();
    registerUIResponder();
    registerUIApplication();
    registerUITouch();
    registerUIView();
    registerUIWindow();
    registerUILabel();
    registerUIImageView();
    registerUIControl();
    registerUIButton();
    registerUITextField();
    registerUIKeyboard();
    registerUIAlertView();
    registerUIGestureRecognizer();
    registerUITapGestureRecognizer();
    registerUISwipeGestureRecognizer();
    registerUIPanGestureRecognizer();
    registerUIBezierPath();
    registerUIBackdropView();
    registerUIScrollViewPanGestureRecognizer();
    registerUIScrollView();
    registerUITableViewCell();
    registerUITableView();
    registerUIViewController();
    addStringDrawing();
}

} // namespace simulator
