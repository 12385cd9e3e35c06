#pragma once

#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Preferences/PSListController.hpp"
#include "platform/UIKit/UIImage.hpp"
#include "simulator/runtime/SimulatedClass.hpp"

namespace simulator {

/// What kind of cell stands for a specifier: the kinds that pages here are made of.
enum class CellKind : NSInteger { group = 0, link = 1, titleValue = 4, editText = 8, button = 13 };

/// What one specifier holds ("PSSpecifier", Preferences).
struct SpecifierState {
    Owned<NSString> name;
    Owned<NSString> identifier;
    Owned<NSMutableDictionary> properties = adopt(NSMutableDictionary::alloc()->init());
    Owned<UIImage> icon;
    /// Not retained.
    NSObject* target = nullptr;
    SEL getter = nullptr;
    SEL setter = nullptr;
    SEL action = nullptr;
    NSInteger cellType = 0;
};

/// The value that its cell shows, which its getter gives; nil without one.
NSObject* valueOf(PSSpecifier* specifier);
/// Has its setter take a value over.
void setValueOf(PSSpecifier* specifier, NSObject* value);

/// A property of that class; nil when it is missing or of another.
template <class T, FixedString Key>
T* propertyOf(PSSpecifier* specifier)
{
    NSObject* const value = specifier->propertyForKey(constantString<Key>());
    const Class expected = objc_getClass(std::string(typeName<T>()).c_str());
    return value->isKindOfClass(expected) ? static_cast<T*>(value) : nullptr;
}

} // namespace simulator
