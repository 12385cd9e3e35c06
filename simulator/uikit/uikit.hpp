#pragma once

namespace simulator {

/// Registers UIKit's classes, superclasses first. To be called once, after those of Core Animation.
void registerUIKit();

void registerUIColor();
void registerUIFont();
void registerUIImage();
void registerUIScreen();
void registerUIApplication();
void registerUIResponder();
void registerUITouch();
void registerUIView();
void registerUIWindow();
void registerUILabel();
void registerUIImageView();
void registerUIControl();
void registerUIButton();
void registerUITextField();
void registerUIKeyboard();
void registerUIAlertView();
void registerUIGestureRecognizer();
void registerUITapGestureRecognizer();
void registerUISwipeGestureRecognizer();
void registerUIPanGestureRecognizer();
void registerUIBezierPath();
void registerUIBackdropView();
void registerUIScrollViewPanGestureRecognizer();
void registerUIScrollView();
void registerUITableViewCell();
void registerUITableView();
void registerUIViewController();
void addStringDrawing();

} // namespace simulator
