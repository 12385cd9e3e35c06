#include <algorithm>
#include <cstdlib>
#include <gmock/gmock.h>
#include <map>
#include <set>

#include "platform/runtime/dlopen.hpp"
#include "tests/platform/RecordedInterface.hpp"
#include "tests/support/MorningPhone.hpp"
#include "tests/support/SettingsPage.hpp"
#include "tests/support/list_items.hpp"
#include "tests/support/panel.hpp"
#include "tests/support/runtime_calls.hpp"

/// Whether the desk's classes are the phone's: what they have, the phone's have too, with the same types.

extern "C" {
Method* class_copyMethodList(Class cls, unsigned* count);
Ivar* class_copyIvarList(Class cls, unsigned* count);
SEL method_getName(Method method);
const char* ivar_getName(Ivar variable);
}

namespace {

using simulator::System;
using testing::IsEmpty;
using Cell = RecordedInterface::Cell;

/// What a class table says of a type of words of 32 bits, which other words are longer than.
std::string narrowed(std::string types)
{
    constexpr std::string_view wide = "qQdB";
    constexpr std::string_view narrow = "iIfc";
    for (char& type : types) {
        if (const auto at = wide.find(type); at != std::string_view::npos)
            type = narrow[at];
    }
    return types;
}

/// An encoding as this machine's compiler writes it: the runtime has no Core Foundation, whose objects are objects like others
/// here, and no blocks.
std::string asObjects(const std::string& types)
{
    std::string text;
    for (std::size_t i = 0; i < types.size(); ++i) {
        if (types.compare(i, 2, "^{") == 0) {
            i = types.find('}', i);
            text += '@';
        } else if (types[i] != '?') {
            text += types[i];
        }
    }
    return text;
}

bool isOfType(const Cell& cell, const std::string& types)
{
    const std::string recorded = asObjects(cell.type);
    const std::string here = asObjects(types);
    return cell.isOfThisWidth ? recorded == here : narrowed(recorded) == narrowed(here);
}

/// A variable's type is that of a value, or the name of its class.
bool isOfVariableType(const Cell& cell, const std::string& type)
{
    const bool isObject = cell.type.size() > 1 && std::isalpha(static_cast<unsigned char>(cell.type[0])) != 0;
    return isObject || cell.type.starts_with('@') ? type == "@" : isOfType(cell, type);
}

/// The desk's own, which no phone answers, or what every class may have.
bool isOfNoInterest(const std::string& name)
{
    return name.starts_with("simulator_") || name == ".cxx_construct" || name == ".cxx_destruct" || name == "dealloc";
}

struct Unrecorded {
    const char* cls;
    const char* reason;
    std::vector<const char*> names;
};

/// What classes have that are recorded in part: by those of their names alone that the library meets.
const std::vector<Unrecorded>& unrecordedNames()
{
    constexpr const char* documented = "documented in the class's public reference";
    constexpr const char* property = "the getter of a property whose setter is recorded";
    static const auto& names = *new std::vector<Unrecorded>{
        {"CAGradientLayer", documented, {"colors"}},
        {"CALayer",
         documented,
         {"drawInContext:", "delegate", "masksToBounds", "isHidden", "opacity", "cornerRadius", "borderWidth", "borderColor",
          "backgroundColor", "mask", "superlayer"}},
        {"CAShapeLayer", documented, {"fillColor", "setFillColor:", "path"}},
        {"City", "named in the class's table", {"isDataCelsius"}},
        {"EKEvent", documented, {"isAllDay"}},
        {"SBLockScreenView",
         "names that are public; nothing tells which other variables there are",
         {"_dateView", "_slideToUnlockView", "_contentUnderlayRequesters", "_removeLockContentUnderlayWithRequester:"}},
        {"UIButton", documented, {"currentTitle", "currentTitleColor", "titleForState:", "titleColorForState:"}},
        {"UIColor", documented, {"getRed:green:blue:alpha:", "initWithRed:green:blue:alpha:", "blueColor", "redColor"}},
        {"UIControl",
         documented,
         {"actionsForTarget:forControlEvent:", "state", "setSelected:", "isSelected", "setHighlighted:", "isTracking",
          "isTouchInside"}},
        {"UIFont", documented, {"ascender", "descender", "leading"}},
        {"UIGestureRecognizer",
         "documented in the class's public reference and in that of its subclasses' interface",
         {"reset", "touchesBegan:withEvent:", "touchesMoved:withEvent:", "touchesEnded:withEvent:", "setEnabled:",
          "initWithTarget:action:"}},
        {"UILabel",
         documented,
         {"minimumScaleFactor", "adjustsFontSizeToFitWidth", "numberOfLines", "textAlignment", "textColor", "baselineAdjustment",
          "setBaselineAdjustment:"}},
        {"UIPanGestureRecognizer", documented, {"velocityInView:"}},
        {"UIScrollView",
         documented,
         {"panGestureRecognizer", "showsHorizontalScrollIndicator", "showsVerticalScrollIndicator", "isScrollEnabled", "bounces",
          "setBounces:", "alwaysBounceHorizontal", "setAlwaysBounceHorizontal:", "alwaysBounceVertical",
          "setAlwaysBounceVertical:", "decelerationRate", "setDecelerationRate:", "isDragging", "isDecelerating"}},
        {"UITableView", documented, {"dataSource", "delegate", "setDelegate:"}},
        {"UITableViewCell", documented, {"isSelected", "isHighlighted"}},
        {"UITouch", documented, {"window"}},
        {"UIView",
         documented,
         {"drawRect:", "drawLayer:inContext:", "clipsToBounds", "backgroundColor", "didMoveToSuperview",
          "pointInside:withEvent:", "autoresizingMask", "setAutoresizingMask:", "layerClass", "endEditing:"}},
        {"WeatherLocationManager", property, {"isLocationTrackingActive"}},
        {"WeatherPreferences", property, {"isLocalWeatherEnabled"}},
        {"_UIBackdropView", property, {"blurQuality", "blursWithHardEdges", "blurHardEdges", "blurRadius", "blurRadiusSetOnce"}},
        {"_UIBackdropView", "what initWithStyle: sets, which is recorded", {"style"}},
        {"_UIBackdropViewSettings", property, {"colorTint", "colorTintAlpha"}},
    };
    return names;
}

bool isExcused(const std::string& cls, const std::string& name)
{
    return std::ranges::any_of(unrecordedNames(), [&](const Unrecorded& excuse) {
        return cls == excuse.cls && std::ranges::find(excuse.names, name) != excuse.names.end();
    });
}

/// What the classes of a phone without extensions have and the recorded ones do not, a line for each.
class Comparison {
public:
    explicit Comparison(System system) : system_(system) {}

    void compare(const std::string& name)
    {
        const Class cls = objc_getClass(name.c_str());
        compareSuperclass(name, cls);
        compareVariables(name, cls);
        compareMethods(name, cls, "-");
        compareMethods(name, object_getClass(reinterpret_cast<id>(cls)), "+");
    }

    std::vector<std::string> differences;
    RecordedInterface recorded;

private:
    void compareSuperclass(const std::string& name, Class cls)
    {
        const std::string superclass = class_getName(class_getSuperclass(cls));
        for (const Cell& cell : recorded.cells(system_, name, "class", "superclass")) {
            if (cell.type != superclass)
                differences.push_back(name + " is a " + superclass + ", recorded is " + cell.type);
        }
    }

    void compareVariables(const std::string& name, Class cls)
    {
        unsigned count = 0;
        Ivar* const variables = class_copyIvarList(cls, &count);
        for (unsigned i = 0; i < count; ++i) {
            const std::string variable = ivar_getName(variables[i]);
            if (!isOfNoInterest(variable) && !isExcused(name, variable))
                judge(name + '.' + variable, ivar_getTypeEncoding(variables[i]),
                      recorded.cells(system_, name, "variable", variable), isOfVariableType);
        }
        ::free(variables);
    }

    void compareMethods(const std::string& name, Class cls, const std::string& kind)
    {
        unsigned count = 0;
        Method* const methods = class_copyMethodList(cls, &count);
        for (unsigned i = 0; i < count; ++i) {
            const SEL selector = method_getName(methods[i]);
            if (isOfNoInterest(sel_getName(selector)))
                continue;
            const auto cells = recorded.cells(system_, name, kind, sel_getName(selector));
            // Of a class that is recorded in part, nobody knows which methods of its superclasses it has of its own.
            if (cells.empty() && !isWhole(name) && class_getInstanceMethod(class_getSuperclass(cls), selector) != nullptr)
                continue;
            if (cells.empty() && isExcused(name, sel_getName(selector)))
                continue;
            judge(kind + '[' + name + ' ' + sel_getName(selector) + ']', method_getTypeEncoding(methods[i]), cells, isOfType);
        }
        ::free(methods);
    }

    /// A class is recorded whole where its variables are.
    bool isWhole(const std::string& name) const { return recorded.hasVariables(name); }

    void judge(const std::string& what, const std::string& type, const std::vector<Cell>& cells,
               bool (*isOfType)(const Cell&, const std::string&))
    {
        if (std::ranges::all_of(cells, [](const Cell& cell) { return cell.type == "-"; }))
            differences.push_back(what + " is on no such phone");
        for (const Cell& cell : cells) {
            if (!cell.inheritedFrom.empty())
                differences.push_back(what + " is inherited from " + cell.inheritedFrom);
            else if (cell.type != "-" && !isOfType(cell, type))
                differences.push_back(what + " is " + type + ", recorded is " + cell.type);
        }
    }

    System system_;
};

class RecordedClasses : public TestOn<Phone> {
protected:
    RecordedClasses()
    {
        for (const auto& library : {phone.tree().artLibrary(), phone.tree().weatherFramework()})
            EXPECT_NE(::dlopen(library.c_str(), RTLD_NOW_MODE), nullptr);
    }

    Comparison comparison{simulator::phoneSystem()};
};

} // namespace

TEST_F(RecordedClasses, HaveAllThatTheDesksHave)
{
    std::size_t compared = 0;
    for (const std::string& name : comparison.recorded.classes()) {
        // Foundation is GNUstep's.
        if (objc_getClass(name.c_str()) == nullptr || name.starts_with("NS"))
            continue;
        comparison.compare(name);
        ++compared;
    }
    std::string lines;
    for (const std::string& difference : comparison.differences)
        lines += difference + '\n';
    EXPECT_THAT(comparison.differences, IsEmpty()) << lines;
    EXPECT_GT(compared, 40U);
}

TEST(RecordedClassesOfTheSettings, HaveAllThatTheDesksHave)
{
    const SettingsPage settings;
    Comparison comparison(simulator::phoneSystem());
    for (const char* name : {"PSSpecifier", "PSViewController", "PSListController"})
        comparison.compare(name);
    std::string lines;
    for (const std::string& difference : comparison.differences)
        lines += difference + '\n';
    EXPECT_THAT(comparison.differences, IsEmpty()) << lines;
}

namespace {

/// The class whose object the library looks into, for each of the variables that it reads.
const std::map<std::string, std::string> variablesRead{
    {"_containerView", "SBLockScreenNotificationListView"},   {"_tableView", "SBLockScreenNotificationListView"},
    {"_topPocketView", "SBLockScreenNotificationListView"},   {"_bottomPocketView", "SBLockScreenNotificationListView"},
    {"_listItems", "SBLockScreenNotificationListController"},
};

struct VariablesRead : TestOn<LockedPhone> {};

} // namespace

TEST_F(VariablesRead, AreThoseOfTheTable)
{
    simulator::addListItem(notification("com.apple.mobilemail"));
    simulator::listView()->layoutIfNeeded();
    std::set<std::string> known;
    for (const auto& [variable, cls] : variablesRead)
        known.insert(variable);
    std::set<std::string> read;
    for (const std::string& variable : instanceVariableLookups()) {
        // The library's own are looked up once, when their classes are made.
        const auto isOf = [&](const char* cls) {
            return class_getInstanceVariable(objc_getClass(cls), variable.c_str()) != nullptr;
        };
        if (!isOf("SVAppsView") && !isOf("SVWidget") && !isOf("APLCalendar"))
            read.insert(variable);
    }
    EXPECT_EQ(read, known);
}

TEST(VariablesReadByName, AreObjectsOnEverySystem)
{
    const RecordedInterface recorded;
    for (const auto& [variable, cls] : variablesRead) {
        for (const System system : {System::v7_0, System::v7_0_4, System::v7_1, System::v8_1, System::v8_4}) {
            const auto cells = recorded.cells(system, cls, "variable", variable);
            ASSERT_FALSE(cells.empty()) << variable;
            for (const Cell& cell : cells) {
                // 7.0 has no pockets.
                if (system == System::v7_0 && variable.ends_with("PocketView"))
                    EXPECT_EQ(cell.type, "-") << variable;
                else
                    EXPECT_TRUE(isOfVariableType(cell, "@")) << variable << " is " << cell.type;
            }
        }
    }
}
