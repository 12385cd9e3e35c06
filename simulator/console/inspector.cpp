#include "simulator/console/inspector.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>
#include <map>
#include <unordered_map>
#include <vector>

#include "platform/Foundation/NSDate.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/UIKit/UIFont.hpp"
#include "platform/UIKit/UIImage.hpp"
#include "platform/runtime/each.hpp"
#include "simulator/console/BadLine.hpp"
#include "simulator/console/json_values.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/loader/injection.hpp"

namespace simulator {

namespace {

class NSNumber : public NSObject {
public:
    const char* objCType() { return send<"objCType", const char*>(this); }
    bool boolValue() { return send<"boolValue", BOOL>(this) != NO; }
    float floatValue() { return send<"floatValue", float>(this); }
    double doubleValue() { return send<"doubleValue", double>(this); }
    long long longLongValue() { return send<"longLongValue", long long>(this); }
    unsigned long long unsignedLongLongValue() { return send<"unsignedLongLongValue", unsigned long long>(this); }
};

/// The names of the exported variables, by the objects that they hold.
using ObjectNames = std::unordered_map<const void*, std::string>;

std::string className(id object)
{
    return class_getName(object_getClass(object));
}

/// One walk through an object and all that it contains.
class Walk {
public:
    /// Notes that the object is shown. Throws BadLine when there is no end of them: containers may share what they contain.
    void step()
    {
        constexpr std::size_t mostShown = 1'000'000;
        if (++shown_ > mostShown)
            throw BadLine("there is more than can be shown");
    }

    /// What `inspect` makes of the inside of a container; its class alone within itself, where there would be no end.
    template <class Inspect>
    Json inside(id container, Inspect inspect)
    {
        constexpr std::size_t deepest = 1000;
        if (open_.size() == deepest || std::ranges::find(open_, container) != open_.end())
            return {{"class", className(container)}};
        open_.push_back(container);
        Json json = inspect();
        open_.pop_back();
        return json;
    }

private:
    std::size_t shown_ = 0;
    std::vector<id> open_;
};

Json inspectObject(id object, Walk& walk);

bool isKind(id object, const char* name)
{
    const Class cls = objc_getClass(name);
    return cls != nullptr && object->isKindOfClass(cls);
}

Json imageSize(UIImage* image)
{
    if (image == nullptr)
        return nullptr;
    return {{"size", size(image->size())}, {"scale", number(image->scale())}};
}

/// All of a view but its subviews.
Json viewItself(UIView* view, const ObjectNames& names, Walk& walk)
{
    Json json = {{"class", className(view)}};
    if (const auto name = names.find(view); name != names.end())
        json["name"] = name->second;
    json["frame"] = rectangle(view->frame());
    json["bounds"] = rectangle(view->bounds());
    json["hidden"] = view->isHidden();
    json["alpha"] = number(view->alpha());
    if (view->respondsToSelector(selector<"text">()))
        json["text"] = inspectObject(send<"text", NSObject*>(view), walk);
    else if (view->respondsToSelector(selector<"currentTitle">()))
        json["text"] = inspectObject(send<"currentTitle", NSObject*>(view), walk);
    if (view->respondsToSelector(selector<"image">()))
        json["image"] = imageSize(send<"image", UIImage*>(view));
    if (view->tag() != 0 || isKind(view, "UIControl"))
        json["tag"] = view->tag();
    if (view->respondsToSelector(selector<"isEnabled">()))
        json["enabled"] = send<"isEnabled", BOOL>(view) != NO;
    return json;
}

Json inspectView(id object, Walk& walk)
{
    auto* const view = static_cast<UIView*>(object);
    Json json = viewItself(view, {}, walk);
    json["subviews"] = view->subviews()->count();
    return json;
}

Json inspectImage(id object, Walk&)
{
    auto* const image = static_cast<UIImage*>(object);
    return {{"class", "UIImage"}, {"size", size(image->size())}, {"scale", number(image->scale())}};
}

Json inspectColor(id object, Walk&)
{
    if (!object->respondsToSelector(selector<"getRed:green:blue:alpha:">()))
        return {{"class", className(object)}};
    CGFloat red = 0;
    CGFloat green = 0;
    CGFloat blue = 0;
    CGFloat alpha = 0;
    static_cast<UIColor*>(object)->getRed_green_blue_alpha(&red, &green, &blue, &alpha);
    return {{"class", "UIColor"}, {"rgba", {number(red), number(green), number(blue), number(alpha)}}};
}

Json inspectFont(id object, Walk&)
{
    auto* const font = static_cast<UIFont*>(object);
    return {{"class", "UIFont"}, {"name", toUTF8(font->fontName())}, {"size", number(font->pointSize())}};
}

Json inspectLayer(id object, Walk&)
{
    auto* const layer = static_cast<CALayer*>(object);
    return {{"class", className(layer)},
            {"frame", rectangle(layer->frame())},
            {"bounds", rectangle(layer->bounds())},
            {"hidden", layer->isHidden()},
            {"opacity", number(shortestDouble(layer->opacity()))},
            {"sublayers", layer->sublayers()->count()}};
}

Json inspectString(id object, Walk&)
{
    return toUTF8(static_cast<NSString*>(object));
}

Json inspectNumber(id object, Walk&)
{
    auto* const boxed = static_cast<NSNumber*>(object);
    switch (*boxed->objCType()) {
    case 'c':
    case 'C':
    case 'B':
        return boxed->boolValue();
    case 'f':
        return number(shortestDouble(boxed->floatValue()));
    case 'd':
        return number(boxed->doubleValue());
    case 'Q':
        return boxed->unsignedLongLongValue();
    default:
        return boxed->longLongValue();
    }
}

Json inspectArray(id object, Walk& walk)
{
    const auto elements = [&] {
        Json json = Json::array();
        for (NSObject* element : each<NSObject>(object))
            json.push_back(inspectObject(element, walk));
        return json;
    };
    return walk.inside(object, elements);
}

/// Sorted by the keys, since a dictionary has no order of its own.
Json inspectDictionary(id object, Walk& walk)
{
    const auto values = [&] {
        std::map<std::string, Json> entries;
        for (NSObject* key : each<NSObject>(object))
            entries[toUTF8(key->description())] = inspectObject(static_cast<NSDictionary*>(object)->objectForKey(key), walk);
        return entries.empty() ? Json::object() : Json(entries);
    };
    return walk.inside(object, values);
}

/// ISO 8601, in universal time, whole seconds.
Json inspectDate(id object, Walk&)
{
    const double seconds = std::floor(static_cast<NSDate*>(object)->timeIntervalSince1970());
    constexpr double farthest = 1e15;
    if (!(std::abs(seconds) < farthest))
        return nullptr;
    const auto moment = static_cast<time_t>(seconds);
    std::tm time{};
    gmtime_r(&moment, &time);
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &time));
}

struct Form {
    const char* className;
    Json (*inspect)(id object, Walk& walk);
};

constexpr Form forms[] = {
    {"UIView", inspectView},     {"UIImage", inspectImage}, {"UIColor", inspectColor},
    {"UIFont", inspectFont},     {"CALayer", inspectLayer}, {"NSString", inspectString},
    {"NSNumber", inspectNumber}, {"NSArray", inspectArray}, {"NSDictionary", inspectDictionary},
    {"NSDate", inspectDate},
};

Json inspectObject(id object, Walk& walk)
{
    walk.step();
    if (object == nullptr)
        return nullptr;
    if (isClass(object))
        return class_getName(reinterpret_cast<Class>(object));
    for (const Form& form : forms) {
        if (isKind(object, form.className))
            return form.inspect(object, walk);
    }
    return {{"class", className(object)}};
}

struct Inspection {
    Json operator()(Nothing) const { return nullptr; }
    Json operator()(id object) const
    {
        Walk walk;
        return inspectObject(object, walk);
    }
    Json operator()(Class cls) const { return (*this)(reinterpret_cast<id>(cls)); }
    Json operator()(double value) const { return number(value); }
    Json operator()(const char* text) const { return text == nullptr ? Json(nullptr) : Json(text); }
    Json operator()(CGRect value) const { return rectangle(value); }
    Json operator()(CGPoint value) const { return point(value); }
    Json operator()(CGSize value) const { return size(value); }
    Json operator()(NSRange value) const { return {value.location, value.length}; }
    /// Whole numbers and truth values are JSON's own.
    template <class T>
    Json operator()(T value) const
    {
        return value;
    }
};

/// Pointers are compared and never followed: not every variable of that size holds an object.
ObjectNames namesOfObjects()
{
    ObjectNames names;
    for (const ExportedSymbol& variable : exportedVariables()) {
        const void* object;
        std::memcpy(&object, variable.address, sizeof object);
        if (object != nullptr)
            names.emplace(object, variable.name);
    }
    return names;
}

Json treeOf(UIView* view, const ObjectNames& names, Walk& walk)
{
    walk.step();
    Json json = viewItself(view, names, walk);
    Json& below = json["subviews"] = Json::array();
    for (UIView* subview : each<UIView>(view->subviews()))
        below.push_back(treeOf(subview, names, walk));
    return json;
}

} // namespace

Json inspect(const Value& value)
{
    return std::visit(Inspection(), value);
}

Json inspectTree(UIView* view)
{
    Walk walk;
    return view == nullptr ? Json(nullptr) : treeOf(view, namesOfObjects(), walk);
}

} // namespace simulator
