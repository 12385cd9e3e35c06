#include "platform/Foundation/NSDictionary.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/preferences/PSListController.hpp"

/// How a page's specifiers become groups of white rows, each with a text above and one below.

namespace simulator {

namespace {

constexpr CGFloat gapBetweenGroups = 35;
constexpr CGFloat gapAroundText = 7;
constexpr CGFloat hairline = 0.5;

void addHairline(UIView* view, CGFloat x, CGFloat y)
{
    const auto line = adopt(UIView::alloc()->initWithFrame(CGRect::make(x, y, view->bounds().size.width - x, hairline)));
    line->setBackgroundColor(UIColor::colorWithRed_green_blue_alpha(0.784, 0.78, 0.8, 1));
    line->setUserInteractionEnabled(false);
    view->addSubview(line);
}

/// Adds a text of a group below `y` and gives where it ends; without a text, nothing is added.
CGFloat addGroupText(UIView* view, NSString* text, CGFloat y)
{
    if (text->length() == 0)
        return y;
    const auto label = adopt(UILabel::alloc()->initWithFrame(CGRect::make(0, 0, 0, 0)));
    label->setFont(UIFont::systemFontOfSize(13));
    label->setTextColor(UIColor::colorWithRed_green_blue_alpha(0.427, 0.427, 0.447, 1));
    label->setNumberOfLines(0);
    label->setText(text);
    const CGFloat width = view->bounds().size.width - 2 * pageMargin;
    const CGFloat height = label->sizeThatFits({width, 0}).height;
    label->setFrame(CGRect::make(pageMargin, y + gapAroundText, width, height));
    view->addSubview(label);
    return y + height + 2 * gapAroundText;
}

/// The page from top to bottom.
class Layout {
public:
    Layout(PSListController* page, UIScrollView* view, NSMutableDictionary* cells) : page_(page), view_(view), cells_(cells) {}

    void add(PSSpecifier* specifier)
    {
        if (static_cast<CellKind>(ivarsOf<SpecifierState>(specifier).cellType) == CellKind::group)
            beginGroup(specifier);
        else
            addCell(specifier);
    }

    void endGroup()
    {
        if (rows_ > 0)
            addHairline(view_, 0, y_ - hairline);
        y_ = addGroupText(view_, footer_, y_);
        footer_ = nullptr;
        rows_ = 0;
        view_->setContentSize({view_->bounds().size.width, y_ + gapBetweenGroups});
    }

private:
    void beginGroup(PSSpecifier* group)
    {
        endGroup();
        y_ = addGroupText(view_, group->name(), y_ + gapBetweenGroups);
        footer_ = propertyOf<NSString, "footerText">(group);
    }

    void addCell(PSSpecifier* specifier)
    {
        const CGRect frame = CGRect::make(0, y_, view_->bounds().size.width, cellHeight);
        const auto row = adopt(UIView::alloc()->initWithFrame(frame));
        row->setBackgroundColor(UIColor::whiteColor());
        const Owned<PSTableCell> cell = cellFor(specifier, page_, row->bounds());
        row->addSubview(cell);
        view_->addSubview(row);
        addHairline(view_, rows_ == 0 ? 0 : pageMargin, y_);
        if (specifier->identifier() != nullptr)
            cells_->setObject_forKey(cell, specifier->identifier());
        y_ += cellHeight;
        ++rows_;
    }

    PSListController* page_;
    UIScrollView* view_;
    NSMutableDictionary* cells_;
    CGFloat y_ = 0;
    int rows_ = 0;
    NSString* footer_ = nullptr;
};

} // namespace

void layOutPage(PSListController* page, UIScrollView* view, NSMutableDictionary* cells)
{
    Layout layout(page, view, cells);
    for (PSSpecifier* specifier : each<PSSpecifier>(page->specifiers()))
        layout.add(specifier);
    layout.endGroup();
}

} // namespace simulator
