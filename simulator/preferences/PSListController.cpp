#include "simulator/preferences/PSListController.hpp"

#include "platform/UIKit/UIAlertView.hpp"
#include "platform/UIKit/UIScreen.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/preferences/preferences.hpp"

/// A page of cells that its specifiers describe. A button that asks first has an alert do that.

namespace simulator {

namespace {

struct ListControllerIvars {
    Strong<NSMutableDictionary> _cells;
    Strong<UIScrollView> _table;
    Strong<NSArray> _specifiers;
    Strong<UIAlertView> _alertView;
};

NSBundle* bundle(PSListController* self, SEL)
{
    return send<"bundleForClass:", NSBundle*>(classNamed<"NSBundle">(), object_getClass(self));
}

NSArray* specifiers(PSListController* self, SEL)
{
    return ivarsOf<ListControllerIvars>(self)._specifiers;
}

void setSpecifiers(PSListController* self, SEL, NSArray* specifiers)
{
    ivarsOf<ListControllerIvars>(self)._specifiers = specifiers;
}

NSArray* loadSpecifiersFromPlistName_target(PSListController* self, SEL, NSString* name, PSListController* target)
{
    NSBundle* const bundle = self->bundle();
    const std::filesystem::path file = std::filesystem::path(toUTF8(bundle->bundlePath())) / (toUTF8(name) + ".plist");
    NSDictionary* const page = readPropertyList(file);
    return specifiersOfItems(valueOfClass<NSArray>(page, constantString<"items">()), target, bundle);
}

/// The page lies under the bar with its title.
void loadView(PSListController* self, SEL)
{
    auto& ivars = ivarsOf<ListControllerIvars>(self);
    ivars._table = adopt(UIScrollView::alloc()->initWithFrame(UIScreen::mainScreen()->bounds()));
    ivars._table->setBackgroundColor(UIColor::colorWithRed_green_blue_alpha(0.937, 0.937, 0.957, 1));
    ivars._cells = adopt(NSMutableDictionary::alloc()->init());
    self->setView(ivars._table);
    layOutPage(self, ivars._table, ivars._cells);
}

void reloadSpecifierID(PSListController* self, SEL, NSString* identifier)
{
    if (PSTableCell* const cell = cellOf(self, identifier))
        refreshValue(cell);
}

BOOL performActionForSpecifier(PSListController*, SEL, PSSpecifier* specifier)
{
    const auto& state = ivarsOf<SpecifierState>(specifier);
    if (state.action == nullptr)
        return NO;
    state.target->performSelector_withObject(state.action, specifier);
    return YES;
}

void showConfirmationViewForSpecifier(PSListController* self, SEL, PSSpecifier* specifier)
{
    auto* const question = propertyOf<NSDictionary, "confirmation">(specifier);
    auto& alert = ivarsOf<ListControllerIvars>(self)._alertView;
    alert = adopt(UIAlertView::alloc()->init());
    alert->setTitle(valueOfClass<NSString>(question, constantString<"title">()));
    alert->setMessage(valueOfClass<NSString>(question, constantString<"prompt">()));
    alert->setDelegate(self);
    alert->addButtonWithTitle(valueOfClass<NSString>(question, constantString<"cancelTitle">()));
    alert->addButtonWithTitle(valueOfClass<NSString>(question, constantString<"okTitle">()));
    alert->setTag(
        static_cast<NSInteger>(send<"indexOfObjectIdenticalTo:", NSUInteger>(self->specifiers(), static_cast<id>(specifier))));
    alert->show();
}

BOOL performButtonActionForSpecifier(PSListController* self, SEL, PSSpecifier* specifier)
{
    if (propertyOf<NSDictionary, "confirmation">(specifier) == nullptr)
        return send<"performActionForSpecifier:", BOOL>(self, specifier);
    send<"showConfirmationViewForSpecifier:">(self, specifier);
    return YES;
}

/// The first button is the one that keeps things as they are.
void alertView_clickedButtonAtIndex(PSListController* self, SEL, UIAlertView* alert, NSInteger button)
{
    if (button != 0)
        send<"performActionForSpecifier:", BOOL>(
            self, self->specifiers()->objectAtIndex<PSSpecifier>(static_cast<NSUInteger>(alert->tag())));
}

} // namespace

PSTableCell* cellOf(PSListController* page, NSString* identifier)
{
    return ivarsOf<ListControllerIvars>(page)._cells->objectForKey<PSTableCell>(identifier);
}

void registerPSListController()
{
    ClassBuilder<ListControllerIvars>("PSListController", "PSViewController")
        .ivar<&ListControllerIvars::_cells>("_cells")
        .ivar<&ListControllerIvars::_table>("_table")
        .ivar<&ListControllerIvars::_specifiers>("_specifiers")
        .ivar<&ListControllerIvars::_alertView>("_alertView")
        .method<"bundle">(bundle)
        .method<"specifiers">(specifiers)
        .method<"setSpecifiers:">(setSpecifiers)
        .method<"loadSpecifiersFromPlistName:target:">(loadSpecifiersFromPlistName_target)
        .method<"loadView">(loadView)
        .method<"reloadSpecifierID:">(reloadSpecifierID)
        .method<"performActionForSpecifier:">(performActionForSpecifier)
        .method<"performButtonActionForSpecifier:">(performButtonActionForSpecifier)
        .method<"showConfirmationViewForSpecifier:">(showConfirmationViewForSpecifier)
        .method<"alertView:clickedButtonAtIndex:">(alertView_clickedButtonAtIndex)
        .registerClass();
}

void registerPreferences()
{
    registerPSSpecifier();
    registerPSTableCell();
    registerPSViewController();
    registerPSListController();
}

} // namespace simulator
