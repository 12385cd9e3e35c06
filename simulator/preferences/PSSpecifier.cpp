#include "simulator/preferences/PSSpecifier.hpp"

#include <map>
#include <string>

#include "platform/runtime/each.hpp"
#include "simulator/foundation/property_lists.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/preferences/preferences.hpp"
#include "simulator/uikit/UIImage.hpp"

/// What a cell or a group is described by: what the page's property list says, and to whom its value and its action belong.

namespace simulator {

namespace {

NSObject* propertyForKey(PSSpecifier* self, SEL, NSString* key)
{
    return ivarsOf<SpecifierState>(self).properties->objectForKey(key);
}

void setProperty_forKey(PSSpecifier* self, SEL, NSObject* value, NSString* key)
{
    ivarsOf<SpecifierState>(self).properties->setObject_forKey(value, key);
}

/// Kinds that are not listed show their label alone.
CellKind kindNamed(NSString* name)
{
    static const auto& kinds = *new std::map<std::string, CellKind>{
        {"PSGroupCell", CellKind::group},       {"PSLinkCell", CellKind::link},     {"PSTitleValueCell", CellKind::titleValue},
        {"PSEditTextCell", CellKind::editText}, {"PSButtonCell", CellKind::button},
    };
    const auto found = kinds.find(toUTF8(name));
    return found == kinds.end() ? CellKind::titleValue : found->second;
}

SEL selectorIn(NSDictionary* item, NSString* key)
{
    auto* const name = valueOfClass<NSString>(item, key);
    return name == nullptr ? nullptr : sel_registerName(name->UTF8String());
}

Owned<UIImage> pictureIn(NSBundle* bundle, NSString* name)
{
    return bundle == nullptr || name == nullptr ? nullptr
                                                : imageInFile(std::filesystem::path(toUTF8(bundle->bundlePath())) / toUTF8(name));
}

Owned<PSSpecifier> specifierOf(NSDictionary* item, PSListController* target, NSBundle* bundle)
{
    Owned<PSSpecifier> specifier = adopt(send<"new", PSSpecifier*>(classNamed<"PSSpecifier">()));
    auto& state = ivarsOf<SpecifierState>(specifier.get());
    state.properties->setDictionary(item);
    state.name = valueOfClass<NSString>(item, constantString<"label">());
    state.cellType = static_cast<NSInteger>(kindNamed(valueOfClass<NSString>(item, constantString<"cell">())));
    state.target = target;
    // A specifier that names none has its value read and written by the page.
    state.getter = selectorIn(item, constantString<"get">());
    if (state.getter == nullptr)
        state.getter = selector<"readPreferenceValue:">();
    state.setter = selectorIn(item, constantString<"set">());
    if (state.setter == nullptr)
        state.setter = selector<"setPreferenceValue:specifier:">();
    state.action = selectorIn(item, constantString<"action">());
    state.icon = pictureIn(bundle, valueOfClass<NSString>(item, constantString<"icon">()));
    for (NSString* const key : {constantString<"id">(), constantString<"key">(), constantString<"label">()}) {
        if (state.identifier == nullptr)
            state.identifier = valueOfClass<NSString>(item, key);
    }
    return specifier;
}

} // namespace

NSArray* specifiersOfItems(NSArray* items, PSListController* target, NSBundle* bundle)
{
    const auto specifiers = adopt(NSMutableArray::alloc()->init());
    for (NSObject* item : each<NSObject>(items)) {
        if (item->isKindOfClass(classNamed<"NSDictionary">()))
            specifiers->addObject(specifierOf(static_cast<NSDictionary*>(item), target, bundle));
    }
    return Owned<NSArray>(specifiers.get()).autorelease();
}

NSObject* valueOf(PSSpecifier* specifier)
{
    const auto& state = ivarsOf<SpecifierState>(specifier);
    return send<"performSelector:withObject:", NSObject*>(state.target, state.getter, static_cast<id>(specifier));
}

void setValueOf(PSSpecifier* specifier, NSObject* value)
{
    const auto& state = ivarsOf<SpecifierState>(specifier);
    send<"performSelector:withObject:withObject:", id>(state.target, state.setter, value, static_cast<id>(specifier));
}

void registerPSSpecifier()
{
    SimulatedClass<SpecifierState>("PSSpecifier", "NSObject")
        .property<&SpecifierState::name>("name")
        .property<&SpecifierState::identifier>("identifier")
        .property<&SpecifierState::cellType>("cellType")
        .method<"propertyForKey:">(propertyForKey)
        .method<"setProperty:forKey:">(setProperty_forKey)
        .registerClass();
}

} // namespace simulator
