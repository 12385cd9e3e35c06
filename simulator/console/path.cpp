#include "simulator/console/path.hpp"

#include <algorithm>
#include <optional>
#include <string_view>

#include "platform/Foundation/NSArray.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/console/BadLine.hpp"
#include "simulator/console/invoke.hpp"
#include "simulator/files/numbers.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/loader/injection.hpp"
#include "simulator/springboard/SpringBoard.hpp"

namespace simulator {

namespace {

struct FixedName {
    const char* name;
    id (*object)();
};

template <auto Function>
id objectOf()
{
    return reinterpret_cast<id>(Function());
}

constexpr FixedName fixedNames[] = {
    {"window", objectOf<springBoardWindow>},
    {"lockScreenView", objectOf<lockScreenView>},
    {"controller", objectOf<listController>},
    {"listView", objectOf<listView>},
};

/// An exported symbol does not tell its type, so the functions that can be called are listed here.
struct CallableFunction {
    const char* name;
    Value (*call)(void* address);
};

template <class Result>
Value callFunction(void* address)
{
    const Result result = reinterpret_cast<Result (*)()>(address)();
    if constexpr (std::is_same_v<Result, id>)
        return objectValue(result);
    else
        return static_cast<long long>(result);
}

constexpr CallableFunction callableFunctions[] = {
    {"getTempString", callFunction<id>},
    {"dateStatusString", callFunction<id>},
    {"dateStatus", callFunction<NSInteger>},
};

std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}

/// The length of the identifier that the text begins with; 0 when it begins with none.
std::size_t identifierLength(std::string_view text)
{
    constexpr std::string_view digits = "0123456789";
    constexpr std::string_view parts = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
    if (text.empty() || digits.find(text.front()) != std::string_view::npos)
        return 0;
    return std::min(text.find_first_not_of(parts), text.size());
}

/// Reads a path from its start to its end.
class PathReader {
public:
    explicit PathReader(const std::string& path) : path_(path), rest_(path_) {}

    bool atEnd() const { return rest_.empty(); }

    bool skip(std::string_view mark)
    {
        if (!rest_.starts_with(mark))
            return false;
        rest_.remove_prefix(mark.size());
        return true;
    }

    std::string readIdentifier()
    {
        const std::size_t length = identifierLength(rest_);
        if (length == 0)
            fail("a name is missing");
        return take(length);
    }

    /// What stands between brackets, the first of which has been read. Quotes around it are no part of it.
    std::string readSubscript()
    {
        std::string text;
        if (skip("\""))
            text = readQuoted();
        else
            text = take(std::min(rest_.find(']'), rest_.size()));
        if (!skip("]"))
            fail("a bracket is not closed");
        return text;
    }

    [[noreturn]] void fail(const std::string& what) const
    {
        const std::size_t position = path_.size() - rest_.size();
        throw BadLine(what + " in the path " + quoted(path_) + " at character " + std::to_string(position + 1));
    }

private:
    std::string take(std::size_t count)
    {
        const std::string taken(rest_.substr(0, count));
        rest_.remove_prefix(count);
        return taken;
    }

    std::string readQuoted()
    {
        std::string text;
        while (!skip("\"")) {
            skip("\\");
            if (rest_.empty())
                fail("a quote is not closed");
            text += take(1);
        }
        return text;
    }

    const std::string& path_;
    std::string_view rest_;
};

bool isFixedName(const std::string& name)
{
    return std::ranges::any_of(fixedNames, [&](const FixedName& fixed) { return name == fixed.name; });
}

Value calledFunction(const std::string& name)
{
    const auto function = std::ranges::find_if(callableFunctions, [&](const CallableFunction& row) { return name == row.name; });
    if (function == std::end(callableFunctions))
        throw BadLine(quoted(name) + " is not a function that can be called");
    const auto symbol = exportedSymbol(name);
    if (!symbol || symbol->kind != ExportedSymbol::Kind::function)
        throw BadLine("no injected library exports the function " + quoted(name));
    return function->call(symbol->address);
}

Value exportedValue(const ExportedSymbol& symbol)
{
    if (symbol.kind == ExportedSymbol::Kind::function)
        throw BadLine(quoted(symbol.name) + " is a function: write " + quoted(symbol.name + "()"));
    return objectValue(*static_cast<id*>(symbol.address));
}

Value namedRoot(const std::string& name, const KeptObjects& kept)
{
    for (const FixedName& fixed : fixedNames) {
        if (name == fixed.name)
            return fixed.object();
    }
    if (const auto found = kept.find(name); found != kept.end())
        return objectValue(found->second);
    if (const auto symbol = exportedSymbol(name))
        return exportedValue(*symbol);
    if (const Class cls = objc_getClass(name.c_str()))
        return cls;
    throw BadLine("there is no " + quoted(name) + ": not a kept object, an exported variable or a class");
}

/// None when the object has no instance variable of that name.
std::optional<Value> instanceVariableValue(id object, const std::string& name)
{
    const Ivar ivar = class_getInstanceVariable(object_getClass(object), name.c_str());
    if (ivar == nullptr)
        return std::nullopt;
    return valueType(ivar_getTypeEncoding(ivar)).read(reinterpret_cast<const char*>(object) + ivar_getOffset(ivar));
}

Value namedStep(const Value& value, const std::string& name)
{
    const id object = objectIn(value, "what " + quoted('.' + name) + " is asked of");
    if (object == nullptr)
        return object;
    if (std::holds_alternative<id>(value)) {
        if (const auto variable = instanceVariableValue(object, name))
            return *variable;
    }
    if (!object->respondsToSelector(sel_registerName(name.c_str())))
        throw BadLine(nameOf(object) + " has no instance variable and no method " + quoted(name));
    return invoke(object, name);
}

Value element(NSArray* array, const std::string& subscript)
{
    const auto index = parseNumber<NSUInteger>(subscript);
    if (!index)
        throw BadLine("an array is indexed by a number, not by " + quoted(subscript));
    if (*index >= array->count())
        throw BadLine("index " + subscript + " is out of range: the array has " + std::to_string(array->count()) + " elements");
    return objectValue(array->objectAtIndex(*index));
}

Value subscriptStep(const Value& value, const std::string& subscript)
{
    const id object = objectIn(value, "what [" + subscript + "] is asked of");
    if (object == nullptr)
        return object;
    if (object->isKindOfClass(classNamed<"NSArray">()))
        return element(static_cast<NSArray*>(object), subscript);
    if (object->isKindOfClass(classNamed<"NSDictionary">()))
        return objectValue(static_cast<NSDictionary*>(object)->objectForKey(toNSString(subscript)));
    throw BadLine(nameOf(object) + " is neither an array nor a dictionary: it has no [" + subscript + "]");
}

} // namespace

Value valueAtPath(const std::string& path, const KeptObjects& kept)
{
    PathReader reader(path);
    const std::string root = reader.readIdentifier();
    Value value = reader.skip("()") ? calledFunction(root) : namedRoot(root, kept);
    while (!reader.atEnd()) {
        if (reader.skip("."))
            value = namedStep(value, reader.readIdentifier());
        else if (reader.skip("["))
            value = subscriptStep(value, reader.readSubscript());
        else
            reader.fail("a \".\" or \"[\" is missing");
    }
    return value;
}

id objectAtPath(const std::string& path, const KeptObjects& kept)
{
    return objectIn(valueAtPath(path, kept), quoted(path));
}

bool canBeKeptAs(const std::string& name)
{
    return !name.empty() && identifierLength(name) == name.size() && !isFixedName(name);
}

} // namespace simulator
