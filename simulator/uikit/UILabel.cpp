#include "platform/UIKit/UILabel.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/UIKit/UIScreen.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/graphics/contexts.hpp"
#include "simulator/graphics/text.hpp"
#include "simulator/quartzcore/CGColor.hpp"
#include "simulator/uikit/UIFont.hpp"
#include "simulator/uikit/UIView.hpp"
#include "simulator/uikit/uikit.hpp"

/// A view that draws its text in the middle of its height, and shrinks it where that is allowed. Its sizes are whole pixels.

namespace simulator {

namespace {

struct LabelState {
    Owned<NSString> text;
    Owned<UIFont> font = UIFont::systemFontOfSize(17);
    Owned<UIColor> textColor = UIColor::blackColor();
    NSTextAlignment textAlignment = NSTextAlignmentLeft;
    NSInteger numberOfLines = 1;
    bool adjustsFontSizeToFitWidth = false;
    CGFloat minimumScaleFactor = 0;
    UIBaselineAdjustment baselineAdjustment = UIBaselineAdjustmentAlignBaselines;
};

constexpr double endless = std::numeric_limits<double>::infinity();

UILabel* initWithFrame(UILabel* self, SEL, CGRect frame)
{
    superOf<LabelState, "initWithFrame:", UILabel*>(self, frame);
    self->setUserInteractionEnabled(false);
    return self;
}

void setText(UILabel* self, SEL, NSString* text)
{
    ivarsOf<LabelState>(self).text = adopt(send<"copy", NSString*>(text));
    self->setNeedsDisplay();
}

PangoAlignment pangoAlignment(NSTextAlignment alignment)
{
    switch (alignment) {
    case NSTextAlignmentCenter:
        return PANGO_ALIGN_CENTER;
    case NSTextAlignmentRight:
        return PANGO_ALIGN_RIGHT;
    case NSTextAlignmentLeft:
        break;
    }
    return PANGO_ALIGN_LEFT;
}

TextSetting settingOf(const LabelState& label)
{
    TextSetting setting{.text = toUTF8(label.text),
                        .alignment = pangoAlignment(label.textAlignment),
                        .lineLimit = static_cast<int>(label.numberOfLines)};
    if (label.font != nullptr) {
        setting.face = ivarsOf<FontState>(label.font.get()).face;
        setting.fontSize = label.font->pointSize();
    }
    return setting;
}

/// The size at which one line fits the width: the font's own, or less, down to its smallest share if it has one.
double fittingSize(const LabelState& label, const TextSetting& setting, double width)
{
    if (!label.adjustsFontSizeToFitWidth || label.numberOfLines != 1 || label.minimumScaleFactor <= 0)
        return setting.fontSize;
    const double natural = measureText(setting, endless).width;
    if (natural <= width)
        return setting.fontSize;
    // What is as wide as its place but for the rounding of a letter would lose its end to an ellipsis.
    const double mostRounding = static_cast<double>(setting.text.size()) / PANGO_SCALE;
    return setting.fontSize * std::max<double>(label.minimumScaleFactor, (width - mostRounding) / natural);
}

/// How far below the middle a line stands for each point that it was shrunk by, for its baseline, its middle or its top to be
/// where those of its full size are.
double dropPerPoint(UIBaselineAdjustment adjustment, const LineMetrics& lines)
{
    switch (adjustment) {
    case UIBaselineAdjustmentAlignBaselines:
        return lines.ascender - lines.height() / 2;
    case UIBaselineAdjustmentAlignCenters:
        return 0;
    case UIBaselineAdjustmentNone:
        break;
    }
    return -lines.height() / 2;
}

/// The lines of the full size stand in the middle of the height.
void drawRect(UILabel* self, SEL, CGRect rect)
{
    const auto& label = ivarsOf<LabelState>(self);
    TextSetting setting = settingOf(label);
    if (setting.text.empty() || rect.size.width <= 0)
        return;
    const double fullSize = setting.fontSize;
    setting.fontSize = fittingSize(label, setting, rect.size.width);
    rect.origin.y +=
        static_cast<CGFloat>(dropPerPoint(label.baselineAdjustment, setting.face.lines) * (fullSize - setting.fontSize));
    drawTextInMiddle(currentGraphicsContext()->cairo, setting, rect, colourOf(label.textColor->CGColor()));
}

/// The smallest number of whole pixels that is no shorter, in points.
CGFloat inWholePixels(CGFloat length)
{
    // A margin for sums that are whole numbers but for their rounding.
    constexpr double margin = 1e-4;
    const double scale = UIScreen::mainScreen()->scale();
    return static_cast<CGFloat>(std::ceil(length * scale - margin) / scale);
}

CGSize sizeThatFits(UILabel* self, SEL, CGSize size)
{
    const auto& label = ivarsOf<LabelState>(self);
    if (label.text->length() == 0)
        return {};
    const TextSetting setting = settingOf(label);
    const bool wraps = label.numberOfLines != 1 && size.width > 0;
    const CGSize measured = measureText(setting, wraps ? size.width : endless);
    return {inWholePixels(measured.width), inWholePixels(measured.height)};
}

} // namespace

void registerUILabel()
{
    SimulatedClass<LabelState>("UILabel", "UIView")
        .method<"initWithFrame:">(initWithFrame)
        .readOnly<&LabelState::text>("text")
        .method<"setText:">(setText)
        .property<&LabelState::font, redraw>("font")
        .property<&LabelState::textColor, redraw>("textColor")
        .property<&LabelState::textAlignment, redraw>("textAlignment")
        .property<&LabelState::numberOfLines, redraw>("numberOfLines")
        .property<&LabelState::adjustsFontSizeToFitWidth, redraw>("adjustsFontSizeToFitWidth")
        .property<&LabelState::minimumScaleFactor, redraw>("minimumScaleFactor")
        .property<&LabelState::baselineAdjustment, redraw>("baselineAdjustment")
        .method<"drawRect:">(drawRect)
        .method<"sizeThatFits:">(sizeThatFits)
        .registerClass();
}

} // namespace simulator
