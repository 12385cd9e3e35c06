#pragma once

#include <new>
#include <string>
#include <type_traits>

#include "platform/runtime/ClassBuilder.hpp"
#include "simulator/runtime/argument_classes.hpp"

namespace simulator {

// Plugins of the simulator have classes of this kind too.

/// For the property "name": its setter "setName:", and the getter "isName" of a BOOL.
[[gnu::visibility("default")]] std::string setterName(const char* property);
[[gnu::visibility("default")]] std::string flagName(const char* property);
/// The variable that holds the state of a class's objects, under a name that no phone has. Each class has its own: GNU's runtime
/// refuses a second variable of one name along the superclasses.
[[gnu::visibility("default")]] std::string stateName(const char* className);

/// A class of the simulated platform whose objects each hold one C++ `State`. The state is constructed when the object is
/// allocated and destroyed with it, so that a class needs no dealloc for what its state owns.
template <class State>
class SimulatedClass : public ClassBuilder<State> {
public:
    SimulatedClass(const char* name, const char* superclass) : ClassBuilder<State>(name, superclass)
    {
        if constexpr (!std::is_empty_v<State>) {
            stateName_ = stateName(name);
            this->addIvarBlock(stateName_.c_str(), sizeof(State), alignof(State), "?");
            this->template method<".cxx_construct">(&construct);
            this->template method<".cxx_destruct">(&destroy);
        }
    }

    template <FixedString Name, class Result, class Self, class... Arguments>
    SimulatedClass& method(Result (*implementation)(Self*, SEL, Arguments...))
    {
        ClassBuilder<State>::template method<Name>(implementation);
        noteArgumentClasses<Arguments...>(reinterpret_cast<IMP>(implementation));
        return *this;
    }

    template <FixedString Name, class Result, class... Arguments>
    SimulatedClass& classMethod(Result (*implementation)(Class, SEL, Arguments...))
    {
        ClassBuilder<State>::template classMethod<Name>(implementation);
        noteArgumentClasses<Arguments...>(reinterpret_cast<IMP>(implementation));
        return *this;
    }

    /// A property over a member of the state: the getter `name` and the setter `setName:`, which calls `Changed` afterwards.
    template <auto Member, auto Changed = nullptr>
    SimulatedClass& property(const char* name)
    {
        addProperty<Member, Changed>(name, Member);
        return *this;
    }

    /// The same, with the getter `isName` of a BOOL property.
    template <auto Member, auto Changed = nullptr>
    SimulatedClass& flag(const char* name)
    {
        addAccessors(flagName(name).c_str(), &getFlag<Member>, name, &setFlag<Member, Changed>);
        return *this;
    }

    /// A property that can only be read.
    template <auto Member>
    SimulatedClass& readOnly(const char* name)
    {
        addReadOnly<Member>(name, Member);
        return *this;
    }

    /// The same, with the getter `isName` of a BOOL property.
    template <auto Member>
    SimulatedClass& readOnlyFlag(const char* name)
    {
        addNamed(flagName(name).c_str(), &getFlag<Member>);
        return *this;
    }

private:
    template <class Getter, class Setter>
    void addAccessors(const char* getterName, Getter getter, const char* name, Setter setter)
    {
        addNamed(getterName, getter);
        addNamed(setterName(name).c_str(), setter);
    }

    template <class Result, class... Arguments>
    void addNamed(const char* name, Result (*implementation)(NSObject*, SEL, Arguments...))
    {
        class_addMethod(this->cls(), sel_registerName(name), reinterpret_cast<IMP>(implementation),
                        methodEncoding<Result, Arguments...>.text);
        noteArgumentClasses<Arguments...>(reinterpret_cast<IMP>(implementation));
    }

    template <auto Member, auto Changed, class T>
    void addProperty(const char* name, Owned<T> State::*)
    {
        addAccessors(name, &getObject<Member, T>, name, &setObject<Member, Changed, T>);
    }
    template <auto Member, auto Changed, class T>
    void addProperty(const char* name, T State::*)
    {
        addAccessors(name, &getValue<Member, T>, name, &setValue<Member, Changed, T>);
    }
    template <auto Member, class T>
    void addReadOnly(const char* name, Owned<T> State::*)
    {
        addNamed(name, &getObject<Member, T>);
    }
    template <auto Member, class T>
    void addReadOnly(const char* name, T State::*)
    {
        addNamed(name, &getValue<Member, T>);
    }

    template <auto Changed>
    static void tellChanged(NSObject* self)
    {
        if constexpr (!std::is_null_pointer_v<decltype(Changed)>)
            Changed(self);
    }

    template <auto Member, class T>
    static T* getObject(NSObject* self, SEL)
    {
        return ivarsOf<State>(self).*Member;
    }
    template <auto Member, auto Changed, class T>
    static void setObject(NSObject* self, SEL, T* object)
    {
        ivarsOf<State>(self).*Member = object;
        tellChanged<Changed>(self);
    }
    /// What is a bool in the state is a BOOL in a message.
    template <class T>
    using InMessage = std::conditional_t<std::is_same_v<T, bool>, BOOL, T>;

    template <auto Member, class T>
    static InMessage<T> getValue(NSObject* self, SEL)
    {
        return InMessage<T>{ivarsOf<State>(self).*Member};
    }
    template <auto Member, auto Changed, class T>
    static void setValue(NSObject* self, SEL, InMessage<T> value)
    {
        ivarsOf<State>(self).*Member = static_cast<T>(value);
        tellChanged<Changed>(self);
    }
    template <auto Member>
    static BOOL getFlag(NSObject* self, SEL)
    {
        return ivarsOf<State>(self).*Member;
    }
    template <auto Member, auto Changed>
    static void setFlag(NSObject* self, SEL, BOOL value)
    {
        ivarsOf<State>(self).*Member = value != NO;
        tellChanged<Changed>(self);
    }

    static id construct(NSObject* self, SEL)
    {
        new (&ivarsOf<State>(self)) State();
        return self;
    }
    static void destroy(NSObject* self, SEL) { ivarsOf<State>(self).~State(); }

    std::string stateName_;
};

/// Replaces the implementation of a method that a class of the platform already has, one that it inherits in that class alone;
/// class methods too, through the class's own class. Gives the previous implementation.
template <FixedString Name, class Result, class Self, class... Arguments>
inline auto replaceMethod(Class cls, Result (*implementation)(Self*, SEL, Arguments...))
{
    const Method method = class_getInstanceMethod(cls, selector<Name>());
    const auto replacement = reinterpret_cast<IMP>(implementation);
    IMP previous = method_getImplementation(method);
    if (class_addMethod(cls, selector<Name>(), replacement, method_getTypeEncoding(method)) == NO) {
        // GNU's runtime gives a class that has had no message yet a table of methods that others share; this gives it its own.
        class_respondsToSelector(cls, selector<Name>());
        previous = method_setImplementation(method, replacement);
    }
    return reinterpret_cast<Result (*)(Self*, SEL, Arguments...)>(previous);
}

/// Adds a method to a class of the platform that lacks it.
template <FixedString Name, class Result, class Self, class... Arguments>
inline void addMethod(Class cls, Result (*implementation)(Self, SEL, Arguments...))
{
    class_addMethod(cls, selector<Name>(), reinterpret_cast<IMP>(implementation), methodEncoding<Result, Arguments...>.text);
}

/// The class that holds a class's own methods.
inline Class metaclassOf(Class cls)
{
    return object_getClass(reinterpret_cast<id>(cls));
}

} // namespace simulator
