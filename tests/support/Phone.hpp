#pragma once

#include <gtest/gtest.h>
#include <string>

#include "platform/runtime/AutoreleasePool.hpp"
#include "simulator/springboard/SpringBoard.hpp"
#include "tests/support/PhoneTree.hpp"
#include "tests/support/objects.hpp"

/// A SpringBoard in this process. There is one at the most in a process; between its making and inject(), a test puts in
/// place what the library is to find.
/// It runs the system that SOLVANE_SYSTEM names, if it names one.
class Phone {
public:
    explicit Phone(const simulator::ScreenSize& screen = {});

    const PhoneTree& tree() const { return tree_; }

    /// Loads the libraries of the file tree, Solvane among them.
    void inject();

    /// Posts a Darwin notification and delivers it.
    void post(const std::string& name) const;

private:
    PhoneTree tree_;
    AutoreleasePool pool_;
};

/// A SpringBoard with the library in it.
class InjectedPhone : public Phone {
public:
    explicit InjectedPhone(const simulator::ScreenSize& screen = {}) : Phone(screen) { inject(); }
};

/// A test that has a phone of that kind from the start, its own.
template <class AnyPhone>
struct TestOn : testing::Test {
    AnyPhone phone;
};

/// The address of what the library exports under that name; fails the test when it exports no such thing.
void* exported(const std::string& name);

/// The variable of that name.
template <class T = NSObject>
T*& exportedVariable(const std::string& name)
{
    return *static_cast<T**>(exported(name));
}

/// The function of that name.
template <class Function>
Function* exportedFunction(const std::string& name)
{
    return reinterpret_cast<Function*>(exported(name));
}

/// Whether the code at that address lies in the library.
bool isInLibrary(const void* code);

/// Where the clock of the phone stands, in universal time: "2014-03-05T08:30:00".
void freezeClockAtUniversalTime(const std::string& time);
