#pragma once

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/UIKit/UIViewController.hpp"

/// What one cell or group of a page in the Settings is described by.
class PSSpecifier : public NSObject {
public:
    NSString* name() const { return send<"name", NSString*>(this); }
    NSString* identifier() const { return send<"identifier", NSString*>(this); }
    /// What the page's property list says of it.
    NSObject* propertyForKey(NSString* key) const { return send<"propertyForKey:", NSObject*>(this, key); }
};

/// A page in the Settings.
class PSViewController : public UIViewController {
public:
    /// The value that a cell shows, and what a cell that was changed is taken over by: the specifiers of a page's property list
    /// have these two unless it names others.
    NSObject* readPreferenceValue(PSSpecifier* specifier) { return send<"readPreferenceValue:", NSObject*>(this, specifier); }
    void setPreferenceValue_specifier(NSObject* value, PSSpecifier* specifier)
    {
        send<"setPreferenceValue:specifier:">(this, value, specifier);
    }
};

/// A page of groups of cells. What its specifiers are, a subclass answers in `specifiers`, and keeps them in `_specifiers`.
class PSListController : public PSViewController {
public:
    NSArray* specifiers() { return send<"specifiers", NSArray*>(this); }
    /// From a property list of that name in `bundle`; their actions go to `target`.
    NSArray* loadSpecifiersFromPlistName_target(NSString* name, NSObject* target)
    {
        return send<"loadSpecifiersFromPlistName:target:", NSArray*>(this, name, target);
    }
    NSBundle* bundle() { return send<"bundle", NSBundle*>(this); }
    /// The cell shows its value anew.
    void reloadSpecifierID(NSString* identifier) { send<"reloadSpecifierID:">(this, identifier); }
};
