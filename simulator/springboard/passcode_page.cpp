#include "simulator/springboard/views.hpp"

/// The page on which the passcode is typed: a line of text over ten round keys. It takes no digits.

namespace simulator {

namespace {

Owned<UIView> key(CGRect frame, NSString* digit)
{
    constexpr CGFloat fontSize = 34;
    constexpr CGFloat ring = 1.5;
    Owned<UIView> view = adopt(UIView::alloc()->initWithFrame(frame));
    view->layer()->setCornerRadius(frame.size.width / 2);
    view->layer()->setBorderWidth(ring);
    view->layer()->setBorderColor(UIColor::whiteColor()->CGColor());
    const Owned<UILabel> label =
        whiteLabel(view->bounds(), UIFont::fontWithName_size(constantString<"HelveticaNeue-Light">(), fontSize));
    label->setText(digit);
    label->setTextAlignment(NSTextAlignmentCenter);
    view->addSubview(label);
    return view;
}

} // namespace

Owned<UIView> passcodePage(CGRect frame)
{
    constexpr CGFloat side = 75;
    constexpr CGFloat columnWidth = 95;
    constexpr CGFloat rowHeight = 88;
    constexpr CGFloat lineHeight = 30;
    constexpr CGFloat lineFontSize = 20;
    constexpr CGFloat keypadHeight = 4 * rowHeight;
    constexpr int columns = 3;
    constexpr int zero = 10;

    Owned<UIView> page = adopt(UIView::alloc()->initWithFrame(frame));
    const CGFloat top = (frame.size.height - keypadHeight) / 2;
    const Owned<UILabel> line = whiteLabel(CGRect::make(0, top - 2 * lineHeight, frame.size.width, lineHeight),
                                           UIFont::fontWithName_size(constantString<"HelveticaNeue-Light">(), lineFontSize));
    line->setText(constantString<"Enter Passcode">());
    line->setTextAlignment(NSTextAlignmentCenter);
    page->addSubview(line);

    const CGFloat left = (frame.size.width - side) / 2 - columnWidth;
    for (int place = 0; place <= zero; ++place) {
        // The zero stands alone in the middle of the last row.
        if (place == zero - 1)
            continue;
        const int row = place / columns;
        const int column = place % columns;
        const CGRect at = CGRect::make(left + static_cast<CGFloat>(column) * columnWidth,
                                       top + static_cast<CGFloat>(row) * rowHeight, side, side);
        NSString* const digit = NSString::stringWithFormat(constantString<"%d">(), place == zero ? 0 : place + 1);
        page->addSubview(key(at, digit));
    }
    return page;
}

} // namespace simulator
