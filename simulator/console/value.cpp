#include "simulator/console/value.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>

#include "simulator/console/BadLine.hpp"
#include "simulator/files/numbers.hpp"
#include "simulator/foundation/strings.hpp"

extern "C" BOOL class_isMetaClass(Class cls);

namespace simulator {

namespace {

template <class T>
T load(const void* storage)
{
    T value;
    std::memcpy(&value, storage, sizeof value);
    return value;
}

template <class T>
bool store(T value, void* storage)
{
    std::memcpy(storage, &value, sizeof value);
    return true;
}

Value readNothing(const void*)
{
    return Nothing();
}

bool writeNothing(const std::string&, void*, const ObjectAtPath&)
{
    return false;
}

Value readObject(const void* storage)
{
    return objectValue(load<id>(storage));
}

bool writeObject(const std::string& text, void* storage, const ObjectAtPath& objectAtPath)
{
    if (text.starts_with('@'))
        return store(objectAtPath(text.substr(1)), storage);
    return store(text == "nil" ? nullptr : toNSString(text), storage);
}

Value readClass(const void* storage)
{
    return load<Class>(storage);
}

bool writeClass(const std::string& text, void* storage, const ObjectAtPath& objectAtPath)
{
    if (text.starts_with('@')) {
        const id object = objectAtPath(text.substr(1));
        return (object == nullptr || isClass(object)) && store(object, storage);
    }
    const Class cls = objc_getClass(text.c_str());
    return (cls != nullptr || text == "nil") && store(cls, storage);
}

Value readSelector(const void* storage)
{
    const SEL selector = load<SEL>(storage);
    return selector == nullptr ? static_cast<const char*>(nullptr) : sel_getName(selector);
}

bool writeSelector(const std::string& text, void* storage, const ObjectAtPath&)
{
    return store(sel_registerName(text.c_str()), storage);
}

Value readText(const void* storage)
{
    return load<const char*>(storage);
}

bool writeText(const std::string& text, void* storage, const ObjectAtPath&)
{
    return store(text.c_str(), storage);
}

template <class T>
Value readNumber(const void* storage)
{
    const T number = load<T>(storage);
    if constexpr (std::is_same_v<T, float>)
        return shortestDouble(number);
    else if constexpr (std::is_same_v<T, double>)
        return number;
    else if constexpr (std::is_signed_v<T>)
        return static_cast<long long>(number);
    else
        return static_cast<unsigned long long>(number);
}

template <class T>
bool writeNumber(const std::string& text, void* storage, const ObjectAtPath&)
{
    const auto number = parseNumber<T>(text);
    return number && store(*number, storage);
}

/// A byte is a truth value: BOOL is one, of a type that differs from platform to platform.
template <class T>
Value readTruth(const void* storage)
{
    return load<T>(storage) != T{0};
}

template <class T>
bool writeTruth(const std::string& text, void* storage, const ObjectAtPath&)
{
    if (text == "YES" || text == "true")
        return store(T{1}, storage);
    if (text == "NO" || text == "false")
        return store(T{0}, storage);
    const auto number = parseNumber<int>(text);
    if (!number || *number < int{std::numeric_limits<T>::min()} || *number > int{std::numeric_limits<T>::max()})
        return false;
    return store(static_cast<T>(*number), storage);
}

template <class T>
Value readStruct(const void* storage)
{
    return load<T>(storage);
}

/// A struct is a row of numbers of one type, written with commas between them.
template <class T, class Number>
bool writeStruct(const std::string& text, void* storage, const ObjectAtPath&)
{
    const auto numbers = parseNumbers<Number, sizeof(T) / sizeof(Number)>(text);
    return numbers && store(*numbers, storage);
}

template <class T>
ValueType wholeNumber(std::string_view encoding)
{
    using Limits = std::numeric_limits<T>;
    return {encoding, sizeof(T), "a whole number from " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max()),
            readNumber<T>, writeNumber<T>};
}

template <class T>
ValueType truth(std::string_view encoding)
{
    return {encoding, sizeof(T), "YES or NO", readTruth<T>, writeTruth<T>};
}

const std::array<ValueType, 22>& valueTypes()
{
    static const std::array<ValueType, 22> types{{
        {"v", 0, "nothing", readNothing, writeNothing},
        {"@", sizeof(id), "text, @PATH or nil", readObject, writeObject},
        {"#", sizeof(Class), "a class name, @PATH or nil", readClass, writeClass},
        {":", sizeof(SEL), "a selector", readSelector, writeSelector},
        {"*", sizeof(const char*), "text", readText, writeText},
        truth<bool>("B"),
        truth<signed char>("c"),
        truth<unsigned char>("C"),
        wholeNumber<short>("s"),
        wholeNumber<unsigned short>("S"),
        wholeNumber<int>("i"),
        wholeNumber<unsigned int>("I"),
        wholeNumber<long>("l"),
        wholeNumber<unsigned long>("L"),
        wholeNumber<long long>("q"),
        wholeNumber<unsigned long long>("Q"),
        {"f", sizeof(float), "a number", readNumber<float>, writeNumber<float>},
        {"d", sizeof(double), "a number", readNumber<double>, writeNumber<double>},
        {"{CGRect=", sizeof(CGRect), "x,y,width,height", readStruct<CGRect>, writeStruct<CGRect, CGFloat>},
        {"{CGPoint=", sizeof(CGPoint), "x,y", readStruct<CGPoint>, writeStruct<CGPoint, CGFloat>},
        {"{CGSize=", sizeof(CGSize), "width,height", readStruct<CGSize>, writeStruct<CGSize, CGFloat>},
        {"{_NSRange=", sizeof(NSRange), "location,length", readStruct<NSRange>, writeStruct<NSRange, NSUInteger>},
    }};
    return types;
}

} // namespace

double shortestDouble(float value)
{
    std::array<char, 32> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value);
    double number = value;
    std::from_chars(text.data(), written.ptr, number);
    return number;
}

bool isClass(id object)
{
    return object != nullptr && class_isMetaClass(object_getClass(object)) != NO;
}

Value objectValue(id object)
{
    return isClass(object) ? Value(reinterpret_cast<Class>(object)) : Value(object);
}

id objectIn(const Value& value, std::string_view source)
{
    if (const id* const object = std::get_if<id>(&value))
        return *object;
    if (const Class* const cls = std::get_if<Class>(&value))
        return reinterpret_cast<id>(*cls);
    throw BadLine(std::string(source) + " is not an object");
}

const ValueType& valueType(const char* encoding)
{
    constexpr std::string_view qualifiers = "rnNoORVA";
    std::string_view bare = encoding;
    bare.remove_prefix(std::min(bare.find_first_not_of(qualifiers), bare.size()));

    const auto isMeant = [bare](const ValueType& type) { return bare.starts_with(type.encoding); };
    const auto found = std::ranges::find_if(valueTypes(), isMeant);
    if (found == valueTypes().end())
        throw BadLine("values of the type \"" + std::string(encoding) + "\" cannot be shown or written");
    return *found;
}

} // namespace simulator
