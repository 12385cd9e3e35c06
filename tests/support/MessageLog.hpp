#pragma once

#include <sstream>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/runtime/send.hpp"

/// Notes messages, in the order in which they come.
class MessageLog {
public:
    /// The messages so far, each as "receiver selector argument ...".
    static std::vector<std::string>& messages()
    {
        static auto& noted = *new std::vector<std::string>;
        return noted;
    }

    /// The name by which an object stands in the log.
    static void name(const void* object, const std::string& name) { names()[object] = name; }

    static std::string describe(const void* object)
    {
        if (object == nullptr)
            return "nil";
        const auto found = names().find(object);
        return found == names().end() ? "?" : found->second;
    }
    static std::string describe(BOOL value) { return value != NO ? "YES" : "NO"; }
    static std::string describe(NSInteger value) { return std::to_string(value); }
    static std::string describe(NSUInteger value) { return std::to_string(value); }
    static std::string describe(CGFloat value)
    {
        std::ostringstream text;
        text << value;
        return text.str();
    }
    static std::string describe(CGPoint value) { return describe(value.x) + ',' + describe(value.y); }
    static std::string describe(CGSize value) { return describe(value.width) + ',' + describe(value.height); }
    static std::string describe(CGRect value)
    {
        const auto number = [](CGFloat length) { return std::to_string(static_cast<long>(length)); };
        return number(value.origin.x) + ',' + number(value.origin.y) + ',' + number(value.size.width) + ',' +
               number(value.size.height);
    }

    template <class... Arguments>
    static void note(const void* receiver, SEL selector, Arguments... arguments)
    {
        messages().push_back((describe(receiver) + ' ' + sel_getName(selector) + ... + (' ' + describe(arguments))));
    }

private:
    static std::unordered_map<const void*, std::string>& names()
    {
        static auto& known = *new std::unordered_map<const void*, std::string>;
        return known;
    }
};

/// Stands in front of one method of one class: notes each message, then does what the method did. A method that the class
/// inherits is noted in that class alone.
template <FixedString ClassName, FixedString Selector, class Result, class... Arguments>
class Noted {
public:
    static void install()
    {
        MSHookMessageEx(objc_getClass(ClassName.text), selector<Selector>(), reinterpret_cast<IMP>(&called),
                        reinterpret_cast<IMP*>(&previous));
    }

private:
    using Implementation = Result (*)(id, SEL, Arguments...);

    static Result called(id self, SEL selector, Arguments... arguments)
    {
        MessageLog::note(self, selector, arguments...);
        return previous(self, selector, arguments...);
    }

    static inline Implementation previous = nullptr;
};
