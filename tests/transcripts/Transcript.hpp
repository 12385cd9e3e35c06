#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/Foundation/NSObject.hpp"

/// What the library says to the platform while something happens, complete and in order: each message that it sends to an
/// object, and each call of a C function that does something. A transcript is compared with a table, one row for each.
///
///     list setAlpha: 1
///     headlineLabel setFrame: (0 0 320 100)
///     [UILabel alloc] init = label              the result is called "label" from here on
///     label setTextColor: [UIColor whiteColor]  a result that has no name is called by what gave it
///     strip super initWithFrame: (0 0 9 9)      a message to super
///     list previous layoutSubviews              a call of the implementation that a hook replaced
///     lroundf 70.52                             a function
///
/// A text reads 'so', a class and a selector as they are called, a structure's numbers stand in brackets.
///
/// An object's allocation has no row of its own: it is read in its initialiser's. Left out is what an Objective-C compiler would
/// not compile into a message: a message to nil, which reaches nobody; retain, release and autorelease, which are functions;
/// looking up classes and selectors of the platform itself; making constant texts and describing the library's own classes.
class Transcript {
public:
    /// What an object is called in the rows.
    Transcript& name(const std::string& role, const void* object);
    /// What the variables that the library exports hold is called by their names, from here on.
    Transcript& nameExported();

    /// A function that the library exports is called by its name.
    Transcript& nameCode(const std::string& name);

    /// Runs `action` and fails the test where what the library says differs from the rows.
    void expect(const std::function<void()>& action, const std::vector<std::string>& rows) const;

    /// The rows of what the library says.
    std::vector<std::string> of(const std::function<void()>& action, const std::vector<std::string>& table = {}) const;

private:
    struct Role {
        const void* object;
        std::string name;
    };
    std::vector<Role> roles_;
};

using Rows = std::vector<std::string>;

/// The rows of each part, one behind the other.
Rows operator+(Rows first, const Rows& second);

/// A number as rows have it.
std::string number(double value);

/// From now on the library does not find that class.
void hideClass(const std::string& name);
