#include "simulator/preferences/PSTableCell.hpp"

#include "simulator/foundation/strings.hpp"
#include "simulator/preferences/preferences.hpp"

/// A row of a page: its icon and label, and the value, the field or the button of its kind.

namespace simulator {

namespace {

struct PSTableCellState {
    Owned<PSSpecifier> specifier;
    /// Not retained: it has the cell.
    PSListController* page = nullptr;
    Owned<UILabel> value;
    Owned<UITextField> field;
};

Owned<UILabel> labelIn(UIView* cell, NSString* text, CGRect frame)
{
    Owned<UILabel> label = adopt(UILabel::alloc()->initWithFrame(frame));
    label->setText(text);
    cell->addSubview(label);
    return label;
}

void addValue(PSTableCell* self, CGRect frame)
{
    auto& value = ivarsOf<PSTableCellState>(self).value;
    value = labelIn(self, nullptr, frame);
    value->setTextAlignment(NSTextAlignmentRight);
    value->setTextColor(UIColor::colorWithRed_green_blue_alpha(0.557, 0.557, 0.576, 1));
}

bool isTrue(NSObject* flag)
{
    return flag->respondsToSelector(selector<"boolValue">()) && send<"boolValue", BOOL>(flag) != NO;
}

void addField(PSTableCell* self, CGRect frame)
{
    auto& cell = ivarsOf<PSTableCellState>(self);
    cell.field = adopt(UITextField::alloc()->initWithFrame(frame));
    cell.field->setPlaceholder(propertyOf<NSString, "placeholder">(cell.specifier));
    if (toUTF8(propertyOf<NSString, "autoCaps">(cell.specifier)) == "words")
        cell.field->setAutocapitalizationType(UITextAutocapitalizationTypeWords);
    if (isTrue(cell.specifier->propertyForKey(constantString<"noAutoCorrect">())))
        cell.field->setAutocorrectionType(UITextAutocorrectionTypeNo);
    cell.field->addTarget_action_forControlEvents(self, selector<"simulator_endEditing:">(), UIControlEventEditingDidEnd);
    self->addSubview(cell.field);
}

void endEditing(PSTableCell* self, SEL, UITextField* field)
{
    setValueOf(ivarsOf<PSTableCellState>(self).specifier, field->text());
}

void touchesBegan_withEvent(PSTableCell* self, SEL, NSSet*, UIEvent*)
{
    self->setHighlighted(true);
}

void touchesCancelled_withEvent(PSTableCell* self, SEL, NSSet*, UIEvent*)
{
    self->setHighlighted(false);
}

void touchesEnded_withEvent(PSTableCell* self, SEL, NSSet*, UIEvent*)
{
    self->setHighlighted(false);
    pressCell(self);
}

} // namespace

Owned<PSTableCell> cellFor(PSSpecifier* specifier, PSListController* page, CGRect frame)
{
    Owned<PSTableCell> made =
        adopt(static_cast<PSTableCell*>(send<"alloc", UIView*>(classNamed<"PSTableCell">())->initWithFrame(frame)));
    auto& cell = ivarsOf<PSTableCellState>(made.get());
    cell.specifier = specifier;
    cell.page = page;

    const auto& described = ivarsOf<SpecifierState>(specifier);
    CGFloat x = pageMargin;
    if (described.icon != nullptr) {
        const CGSize size = described.icon->size();
        const auto picture =
            adopt(UIImageView::alloc()->initWithFrame(CGRect::make(x, (cellHeight - size.height) / 2, size.width, size.height)));
        picture->setImage(described.icon);
        made->addSubview(picture);
        x += size.width + pageMargin;
    }
    constexpr CGFloat labelWidth = 84;
    const auto kind = static_cast<CellKind>(described.cellType);
    const CGFloat left = kind == CellKind::button ? frame.size.width - 2 * pageMargin : labelWidth;
    const auto label = labelIn(made, described.name, CGRect::make(x, 0, left, cellHeight));
    const CGFloat middle = x + labelWidth;
    const CGRect right = CGRect::make(middle, 0, frame.size.width - middle - pageMargin, cellHeight);
    switch (kind) {
    case CellKind::editText:
        addField(made, right);
        break;
    case CellKind::titleValue:
        addValue(made, right);
        break;
    case CellKind::button:
        label->setTextColor(UIColor::colorWithRed_green_blue_alpha(0, 0.478, 1, 1));
        break;
    case CellKind::group:
    case CellKind::link:
        break;
    }
    refreshValue(made);
    return made;
}

void refreshValue(PSTableCell* self)
{
    const auto& cell = ivarsOf<PSTableCellState>(self);
    if (cell.value == nullptr && cell.field == nullptr)
        return;
    NSString* const text = valueOf(cell.specifier)->description();
    cell.value->setText(text);
    cell.field->setText(text);
}

std::string shownValue(PSTableCell* self)
{
    const auto& cell = ivarsOf<PSTableCellState>(self);
    return toUTF8(cell.field == nullptr ? cell.value->text() : cell.field->text());
}

void pressCell(PSTableCell* self)
{
    const auto& cell = ivarsOf<PSTableCellState>(self);
    send<"performButtonActionForSpecifier:", BOOL>(cell.page, cell.specifier.get());
}

UITextField* fieldOf(PSTableCell* cell)
{
    return ivarsOf<PSTableCellState>(cell).field;
}

void registerPSTableCell()
{
    SimulatedClass<PSTableCellState>("PSTableCell", "UITableViewCell")
        .method<"touchesBegan:withEvent:">(touchesBegan_withEvent)
        .method<"touchesCancelled:withEvent:">(touchesCancelled_withEvent)
        .method<"touchesEnded:withEvent:">(touchesEnded_withEvent)
        .method<"simulator_endEditing:">(endEditing)
        .registerClass();
}

} // namespace simulator
