#include "simulator/runtime/SimulatedClass.hpp"
#include "simulator/springboard/list_items.hpp"
#include "simulator/springboard/springboard_classes.hpp"
#include "simulator/springboard/views.hpp"

/// One row of the stock list: icon, title, message and a hairline below.

namespace simulator {

namespace {

struct BulletinCellState {
    Owned<UIImageView> icon;
    Owned<UILabel> title;
    Owned<UILabel> message;
    Owned<UIView> hairline;
};

constexpr CGFloat margin = 15;
constexpr CGFloat iconSide = 29;
constexpr CGFloat textLeft = margin + iconSide + 12;
constexpr CGFloat textSize = 15;

UITableViewCell* initWithFrame(UITableViewCell* self, SEL, CGRect frame)
{
    superOf<BulletinCellState, "initWithFrame:", UITableViewCell*>(self, frame);
    auto& cell = ivarsOf<BulletinCellState>(self);
    cell.icon = adopt(UIImageView::alloc()->initWithFrame({}));
    cell.title = whiteLabel({}, UIFont::boldSystemFontOfSize(textSize));
    cell.message = whiteLabel({}, UIFont::systemFontOfSize(textSize));
    cell.message->setNumberOfLines(2);
    cell.hairline = adopt(UIView::alloc()->initWithFrame({}));
    cell.hairline->setBackgroundColor(UIColor::colorWithWhite_alpha(1, 0.22));
    for (UIView* view : {static_cast<UIView*>(cell.icon), static_cast<UIView*>(cell.title), static_cast<UIView*>(cell.message),
                         cell.hairline.get()})
        self->addSubview(view);
    return self;
}

/// The message keeps to the top under its title, whether it takes one line or two.
void layoutSubviews(UITableViewCell* self, SEL)
{
    auto& cell = ivarsOf<BulletinCellState>(self);
    const CGSize size = self->bounds().size;
    const CGFloat textWidth = size.width - textLeft - margin;
    constexpr CGFloat titleTop = 9;
    constexpr CGFloat titleHeight = 19;
    constexpr CGFloat hairlineHeight = 0.5;
    cell.icon->setFrame(CGRect::make(margin, 11, iconSide, iconSide));
    cell.title->setFrame(CGRect::make(textLeft, titleTop, textWidth, titleHeight));
    const CGFloat messageHeight = cell.message->sizeThatFits({textWidth, 0}).height;
    cell.message->setFrame(CGRect::make(textLeft, titleTop + titleHeight, textWidth, messageHeight));
    cell.hairline->setFrame(CGRect::make(textLeft, size.height - hairlineHeight, size.width - textLeft, hairlineHeight));
}

} // namespace

void showInCell(UITableViewCell* cell, const ListItemRow& row)
{
    const auto& parts = ivarsOf<BulletinCellState>(cell);
    parts.icon->setImage(row.image);
    parts.title->setText(row.title);
    parts.message->setText(row.message);
    cell->setNeedsLayout();
}

void registerSBLockScreenBulletinCell()
{
    SimulatedClass<BulletinCellState>("SBLockScreenBulletinCell", "UITableViewCell")
        .method<"initWithFrame:">(initWithFrame)
        .method<"layoutSubviews">(layoutSubviews)
        .registerClass();
}

} // namespace simulator
