#pragma once

#include "platform/runtime/Encoding.hpp"
#include "platform/runtime/Strong.hpp"
#include "platform/runtime/Weak.hpp"
#include "platform/runtime/send.hpp"

/// What is known of a class of ours once it is registered. `Ivars` is the struct of its instance variables, one type per class.
template <class Ivars>
struct ClassRecord {
    /// An instance variable that the class's dealloc lets go of, and the one declared before it.
    struct OwnedIvar {
        std::ptrdiff_t offset;
        bool isWeak;
        const OwnedIvar* previous;
    };

    static inline constinit Class superclass = nullptr;
    static inline constinit std::ptrdiff_t ivarsOffset = 0;
    static inline constinit const OwnedIvar* lastOwned = nullptr;
};

/// The instance variables of an object whose class declared them as `Ivars`.
template <class Ivars, class Receiver>
inline Ivars& ivarsOf(Receiver* self)
{
    return *reinterpret_cast<Ivars*>(reinterpret_cast<char*>(self) + ClassRecord<Ivars>::ivarsOffset);
}

/// Describes a class of ours to the runtime, once, from top to bottom: name, superclass, instance variables by name in the
/// order of the struct, methods by selector. The class gets a dealloc that lets go of its strong and weak instance
/// variables in the reverse of their order, so a class that declares such variables has no dealloc of its own.
template <class Ivars>
class ClassBuilder {
public:
    using Record = ClassRecord<Ivars>;

    /// A superclass that is not loaded gives a root class, which is of no use: ask for it first.
    ClassBuilder(const char* name, const char* superclass)
    {
        Record::superclass = objc_getClass(superclass);
        cls_ = objc_allocateClassPair(Record::superclass, name, 0);
    }

    /// An instance variable. They must come in the order of the struct, all of them, and the first must be as strictly
    /// aligned as any other: then the struct lies over them in every object.
    template <auto Member>
    ClassBuilder& ivar(const char* name)
    {
        addIvar<Member>(name, Member);
        return *this;
    }

    /// A non-atomic property over the instance variable of its name with an underscore in front, strong or weak as the
    /// variable is, with its getter and setter. `Type` is a class, or a protocol in angle brackets.
    template <auto Member, FixedString Name, FixedString Type>
    ClassBuilder& property()
    {
        static constexpr FixedString type = FixedString("@\"") + Type + FixedString("\"");
        static constexpr FixedString variable = FixedString("_") + Name;
        const objc_property_attribute_t attributes[] = {
            {"T", type.text}, {isWeak<Member> ? "W" : "&", ""}, {"N", ""}, {"V", variable.text}};
        class_addProperty(cls_, Name.text, attributes, sizeof attributes / sizeof *attributes);
        method<Name>(&getProperty<Member>);
        return method<FixedString("set") + capitalised(Name) + FixedString(":")>(&setProperty<Member>);
    }

    template <FixedString Name, class Result, class Self, class... Arguments>
    ClassBuilder& method(Result (*implementation)(Self*, SEL, Arguments...))
    {
        class_addMethod(cls_, selector<Name>(), reinterpret_cast<IMP>(implementation), methodEncoding<Result, Arguments...>.text);
        return *this;
    }

    template <FixedString Name, class Result, class... Arguments>
    ClassBuilder& classMethod(Result (*implementation)(Class, SEL, Arguments...))
    {
        class_addMethod(object_getClass(reinterpret_cast<id>(cls_)), selector<Name>(), reinterpret_cast<IMP>(implementation),
                        methodEncoding<Result, Arguments...>.text);
        return *this;
    }

    ClassBuilder& adopts(const char* protocol)
    {
        class_addProtocol(cls_, objc_getProtocol(protocol));
        return *this;
    }

    /// Makes the class known to the runtime.
    Class registerClass()
    {
        if (Record::lastOwned != nullptr)
            method<"dealloc">(&dealloc);
        objc_registerClassPair(cls_);
        if (firstIvar_ != nullptr)
            Record::ivarsOffset = ivar_getOffset(class_getInstanceVariable(cls_, firstIvar_));
        return cls_;
    }

protected:
    Class cls() const { return cls_; }

    void addIvarBlock(const char* name, std::size_t size, std::size_t alignment, const char* types)
    {
        class_addIvar(cls_, name, size, static_cast<std::uint8_t>(__builtin_ctzl(alignment)), types);
        if (firstIvar_ == nullptr)
            firstIvar_ = name;
    }

private:
    template <auto Member, class T>
    void addIvar(const char* name, T Ivars::* member)
    {
        addIvarBlock(name, sizeof(T), alignof(T), encode<T>().text);
        own<Member>(member);
    }

    template <auto Member, class T>
    void own(Strong<T> Ivars::* member)
    {
        own<Member>(offsetOf(member), false);
    }
    template <auto Member, class T>
    void own(Weak<T> Ivars::* member)
    {
        own<Member>(offsetOf(member), true);
    }
    template <auto Member, class T>
    void own(T Ivars::*)
    {
    }
    template <auto Member>
    void own(std::ptrdiff_t offset, bool isWeak)
    {
        static constinit typename Record::OwnedIvar ivar{};
        ivar = {offset, isWeak, Record::lastOwned};
        Record::lastOwned = &ivar;
    }

    template <class T>
    static std::ptrdiff_t offsetOf(T Ivars::* member)
    {
        const Ivars probe{};
        return reinterpret_cast<const char*>(&(probe.*member)) - reinterpret_cast<const char*>(&probe);
    }

    template <auto Member>
    static constexpr bool isWeak = requires(Ivars& ivars) { (ivars.*Member).load(); };

    template <auto Member>
    static auto getProperty(NSObject* self, SEL)
    {
        auto& variable = ivarsOf<Ivars>(self).*Member;
        if constexpr (isWeak<Member>)
            return variable.load().autorelease();
        else
            return variable.get();
    }
    template <auto Member>
    static void setProperty(NSObject* self, SEL, decltype(getProperty<Member>(nullptr, nullptr)) object)
    {
        ivarsOf<Ivars>(self).*Member = object;
    }

    static void dealloc(NSObject* self, SEL)
    {
        char* const ivars = reinterpret_cast<char*>(&ivarsOf<Ivars>(self));
        for (const auto* owned = Record::lastOwned; owned != nullptr; owned = owned->previous) {
            const auto slot = reinterpret_cast<id*>(ivars + owned->offset);
            if (owned->isWeak)
                objc_destroyWeak(slot);
            else
                objc_release(*slot);
        }
        sendSuper<"dealloc">(Record::superclass, self);
    }

    Class cls_;
    const char* firstIvar_ = nullptr;
};

/// Sends a message to `super` from a method of the class that declared `Ivars`.
template <class Ivars, FixedString Name, class Result = void, class Receiver, class... Arguments>
inline Result superOf(Receiver* self, Arguments... arguments)
{
    return sendSuper<Name, Result>(ClassRecord<Ivars>::superclass, self, arguments...);
}
