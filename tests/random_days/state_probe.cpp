#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/CoreGraphics/CGColor.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/Substrate/MSHookMessageEx.hpp"
#include "platform/UIKit/NSStringDrawing.hpp"
#include "platform/UIKit/UIBezierPath.hpp"
#include "platform/UIKit/UIButton.hpp"
#include "platform/UIKit/UIImageView.hpp"
#include "platform/UIKit/UILabel.hpp"
#include "platform/UIKit/UIScrollView.hpp"
#include "platform/UIKit/UITableView.hpp"
#include "platform/runtime/ClassBuilder.hpp"
#include "platform/runtime/instance_variable.hpp"
#include "tests/random_days/state_text.hpp"

/// A library that is injected behind Solvane and tells the whole state of its lock screen as one text, a line for each
/// thing. It knows views, labels and images, and nothing of Solvane but the names of its variables. What cannot be asked for
/// afterwards it notes as it happens: what an image is made of, the outline in a mask, and what a calendar's delegate hears.

namespace {

std::string textOf(NSObject* object)
{
    return object == nullptr ? "none" : quoted(static_cast<NSString*>(object)->UTF8String());
}

std::string textOf(CGRect rect)
{
    return numbers({rect.origin.x, rect.origin.y, rect.size.width, rect.size.height});
}

std::string classOf(NSObject* object)
{
    return object == nullptr ? "none" : class_getName(object_getClass(object));
}

std::vector<NSObject*> elementsOf(NSArray* array)
{
    std::vector<NSObject*> elements;
    for (NSUInteger i = 0; i < array->count(); ++i)
        elements.push_back(array->objectAtIndex(i));
    return elements;
}

std::string textOf(UIColor* color)
{
    if (color == nullptr)
        return "none";
    CGFloat red = 0;
    CGFloat green = 0;
    CGFloat blue = 0;
    CGFloat alpha = 0;
    send<"getRed:green:blue:alpha:", BOOL>(color, &red, &green, &blue, &alpha);
    return numbers({red, green, blue, alpha});
}

std::string textOf(UIFont* font)
{
    const std::string name = font->fontName()->UTF8String();
    const auto* const bold = send<"boldSystemFontOfSize:", UIFont*>(objc_getClass("UIFont"), CGFloat{16});
    const bool isBold = name == const_cast<UIFont*>(bold)->fontName()->UTF8String();
    return (isBold ? "bold" : name) + ' ' + number(font->pointSize());
}

// What is noted as it happens

/// What was drawn, and which pictures were asked for, since some view last got its image.
std::vector<std::string> drawn;
std::string openedFile;
NSObject* iconsApplication = nullptr;
/// What a calendar's delegate has heard since the last state.
std::vector<std::string> heard;

using Notes = std::unordered_map<const void*, std::string>;
/// What the image of a view is made of.
Notes contents;
Notes colors;
/// Of paths, and of the layers that have them.
Notes outlines;
Notes shapes;

template <FixedString ClassName, FixedString Name, class Result, class... Arguments>
class Hook {
public:
    using Implementation = Result (*)(NSObject*, SEL, Arguments...);

    static void onInstances(Implementation replacement) { install(objc_getClass(ClassName.text), replacement); }
    static void onClass(Implementation replacement)
    {
        install(object_getClass(reinterpret_cast<id>(objc_getClass(ClassName.text))), replacement);
    }
    static Result previous(NSObject* self, Arguments... arguments)
    {
        return implementation(self, selector<Name>(), arguments...);
    }

private:
    static void install(Class cls, Implementation replacement)
    {
        MSHookMessageEx(cls, selector<Name>(), reinterpret_cast<IMP>(replacement), reinterpret_cast<IMP*>(&implementation));
    }

    static inline Implementation implementation = nullptr;
};

using ImageOfFile = Hook<"UIImage", "imageWithContentsOfFile:", UIImage*, NSString*>;
using ImageOfBundle =
    Hook<"UIImage", "_applicationIconImageForBundleIdentifier:format:scale:", UIImage*, NSString*, int, CGFloat>;
using DrawImage = Hook<"UIImage", "drawInRect:", void, CGRect>;
using DrawText = Hook<"NSString", "drawInRect:withAttributes:", void, CGRect, NSDictionary*>;
using InitIcon = Hook<"SBApplicationIcon", "initWithApplication:", NSObject*, NSObject*>;
using GenerateIcon = Hook<"SBApplicationIcon", "generateIconImage:", UIImage*, int>;
using BulletinIcon = Hook<"SBAwayBulletinListItem", "iconImage", UIImage*>;
using AlertIcon = Hook<"SBAwaySystemAlertItem", "iconImage", UIImage*>;
using CardThumbnail = Hook<"SBAwayCardListItem", "cardThumbnail", UIImage*>;
using SetImage = Hook<"UIImageView", "setImage:", void, UIImage*>;
using ColorOf = Hook<"UIColor", "CGColor", CGColorRef>;
using RoundedRect =
    Hook<"UIBezierPath", "bezierPathWithRoundedRect:byRoundingCorners:cornerRadii:", UIBezierPath*, CGRect, NSUInteger, CGSize>;
using SetPath = Hook<"CAShapeLayer", "setPath:", void, CGPathRef>;

std::string textOfAttribute(NSDictionary* attributes, NSString* name)
{
    NSObject* const value = attributes->objectForKey(name);
    return name == NSFontAttributeName ? textOf(static_cast<UIFont*>(value)) : textOf(static_cast<UIColor*>(value));
}

void noteWhatHappens()
{
    ImageOfFile::onClass([](NSObject* self, SEL, NSString* path) {
        const std::string file = path->UTF8String();
        openedFile = file.substr(file.rfind('/') + 1);
        return ImageOfFile::previous(self, path);
    });
    ImageOfBundle::onClass([](NSObject* self, SEL, NSString* identifier, int format, CGFloat scale) {
        drawn.push_back("icon of bundle " + textOf(identifier) + ' ' + std::to_string(format) + " at " + number(scale));
        return ImageOfBundle::previous(self, identifier, format, scale);
    });
    DrawImage::onInstances([](NSObject* self, SEL, CGRect rect) {
        drawn.push_back(openedFile + " in " + textOf(rect));
        DrawImage::previous(self, rect);
    });
    DrawText::onInstances([](NSObject* self, SEL, CGRect rect, NSDictionary* attributes) {
        drawn.push_back(textOf(self) + " in " + textOf(rect) + ' ' + textOfAttribute(attributes, NSFontAttributeName) + ' ' +
                        textOfAttribute(attributes, NSForegroundColorAttributeName));
        DrawText::previous(self, rect, attributes);
    });
    InitIcon::onInstances([](NSObject* self, SEL, NSObject* application) {
        iconsApplication = application;
        return InitIcon::previous(self, application);
    });
    GenerateIcon::onInstances([](NSObject* self, SEL, int format) {
        NSObject* const application = iconsApplication;
        drawn.push_back("icon of application " +
                        (application == nullptr ? "none" : textOf(send<"bundleIdentifier", NSObject*>(application))) + ' ' +
                        std::to_string(format));
        return GenerateIcon::previous(self, format);
    });
    BulletinIcon::onInstances([](NSObject* self, SEL) {
        drawn.emplace_back("iconImage of a bulletin");
        return BulletinIcon::previous(self);
    });
    AlertIcon::onInstances([](NSObject* self, SEL) {
        drawn.emplace_back("iconImage of an alert");
        return AlertIcon::previous(self);
    });
    CardThumbnail::onInstances([](NSObject* self, SEL) {
        drawn.emplace_back("thumbnail of a card");
        return CardThumbnail::previous(self);
    });
    SetImage::onInstances([](NSObject* self, SEL, UIImage* image) {
        std::string& made = contents[self];
        made.clear();
        for (const std::string& part : drawn)
            made += " [" + part + ']';
        drawn.clear();
        SetImage::previous(self, image);
    });
    ColorOf::onInstances([](NSObject* self, SEL) {
        // The colour itself may ask in order to answer.
        static bool isAsking = false;
        CGColorRef color = ColorOf::previous(self);
        if (!std::exchange(isAsking, true)) {
            colors[color] = textOf(static_cast<UIColor*>(self));
            isAsking = false;
        }
        return color;
    });
    RoundedRect::onClass([](NSObject* self, SEL, CGRect rect, NSUInteger corners, CGSize radii) {
        UIBezierPath* const path = RoundedRect::previous(self, rect, corners, radii);
        outlines[path->CGPath()] =
            textOf(rect) + " corners " + std::to_string(corners) + " radii " + numbers({radii.width, radii.height});
        return path;
    });
    SetPath::onInstances([](NSObject* self, SEL, CGPathRef path) {
        shapes[self] = outlines[path];
        SetPath::previous(self, path);
    });
}

// Delegates of a calendar, each with other methods

void heardDay(NSObject*, SEL, NSInteger day)
{
    heard.push_back("selected " + std::to_string(day));
}

void heardDate(NSObject*, SEL, NSString* date)
{
    heard.push_back("selected " + textOf(date));
}

void heardRelease(NSObject*, SEL, NSInteger day)
{
    heard.push_back("deselected " + std::to_string(day));
}

template <int Kind>
struct DelegateIvars {};

template <int Kind>
void registerDelegate(const char* name)
{
    ClassBuilder<DelegateIvars<Kind>> delegate(name, "NSObject");
    if constexpr ((Kind & 1) != 0)
        delegate.template method<"didSelectCalendarDay:">(heardDay);
    if constexpr ((Kind & 2) != 0)
        delegate.template method<"didSelectCalendarDate:">(heardDate);
    if constexpr ((Kind & 4) != 0)
        delegate.template method<"didDeselectCalendarDay:">(heardRelease);
    delegate.registerClass();
}

// The state

struct Role {
    std::string name;
    UIView* view;
};

class State {
public:
    explicit State(std::vector<Role> roles) : roles_(std::move(roles)) {}

    UIView* view(const std::string& name) const
    {
        const auto found = std::ranges::find(roles_, name, &Role::name);
        return found == roles_.end() ? nullptr : found->view;
    }
    /// The role of a view that has one, else its class.
    std::string nameOf(UIView* view) const
    {
        if (view == nullptr)
            return "none";
        const auto found = std::ranges::find(roles_, view, &Role::view);
        return found != roles_.end() ? found->name : classOf(view);
    }

    std::string holds(UIView* view) const
    {
        std::string text = " holds";
        for (NSObject* subview : elementsOf(view->subviews()))
            text += ' ' + nameOf(static_cast<UIView*>(subview));
        return text;
    }

    static std::string itself(UIView* view)
    {
        return classOf(view) + ' ' + textOf(view->frame()) + (view->isHidden() ? " hidden" : "") +
               (view->isUserInteractionEnabled() ? "" : " untouchable") + " alpha " + number(view->alpha());
    }

    static std::string label(UILabel* label)
    {
        return itself(label) + ' ' + textOf(label->text()) + ' ' + textOf(send<"font", UIFont*>(label)) + " scale " +
               number(send<"minimumScaleFactor", CGFloat>(label)) + " lines " +
               std::to_string(send<"numberOfLines", NSInteger>(label)) + " alignment " +
               std::to_string(send<"textAlignment", NSInteger>(label)) +
               (send<"adjustsFontSizeToFitWidth", BOOL>(label) != NO ? " adjusts " : " ") +
               textOf(send<"textColor", UIColor*>(label)) + " on " + textOf(send<"backgroundColor", UIColor*>(label));
    }

    static std::string image(UIImageView* view)
    {
        UIImage* const image = view->image();
        const CGSize size = image->size();
        return " image " + (image == nullptr ? "none" : numbers({size.width, size.height})) + contents[view];
    }

    void line(const std::string& name, const std::string& text) { text_ += name + ": " + text + '\n'; }
    void viewLine(const std::string& name)
    {
        line(name, view(name) == nullptr ? "none" : itself(view(name)) + holds(view(name)));
    }
    void labelLine(const std::string& name)
    {
        line(name, view(name) == nullptr ? "none" : label(static_cast<UILabel*>(view(name))));
    }
    void iconLine(const std::string& name)
    {
        auto* const icon = static_cast<UIImageView*>(view(name));
        line(name, icon == nullptr
                       ? "none"
                       : itself(icon) + image(icon) + " filter " + textOf(send<"compositingFilter", NSObject*>(icon->layer())) +
                             " recognizers " + std::to_string(icon->gestureRecognizers()->count()));
    }

    void backdropLine(const std::string& name, UIView* view)
    {
        if (view == nullptr) {
            line(name, "none");
            return;
        }
        NSObject* const settings = send<"inputSettings", NSObject*>(view);
        line(name,
             classOf(view) + " style " + std::to_string(send<"style", NSInteger>(view)) + " tint " +
                 textOf(send<"colorTint", UIColor*>(settings)) + " at " + number(send<"colorTintAlpha", CGFloat>(settings)) +
                 (send<"blurRadiusSetOnce", BOOL>(view) != NO ? " once" : "") + " radius " +
                 number(send<"blurRadius", CGFloat>(view)) + " edges " + std::to_string(send<"blurHardEdges", NSInteger>(view)) +
                 (send<"blursWithHardEdges", BOOL>(view) != NO ? " hard" : "") + " quality " +
                 textOf(send<"blurQuality", NSObject*>(view)));
    }

    void tabLines()
    {
        viewLine("tabView");
        UIView* const tab = view("tabView");
        if (tab == nullptr)
            return;
        backdropLine("tabBackdrop", tab->subviews()->objectAtIndex<UIView>(0));
        CALayer* const mask = send<"mask", CALayer*>(tab->layer());
        line("tabMask", mask == nullptr ? "none" : classOf(mask) + ' ' + shapes[mask]);
    }

    /// Whose the strip's items are.
    static const char* ownerOf(NSObject* items, NSArray* listItems)
    {
        if (items == nullptr)
            return "none";
        return items == listItems ? "the list's" : "others";
    }

    /// Whether nothing but contents is to be seen, or these from their beginning.
    static bool isInRange(UIScrollView* scrollView)
    {
        const auto [origin, size] = scrollView->bounds();
        const CGSize contents = scrollView->contentSize();
        return origin.x >= 0 && origin.x <= std::max<CGFloat>(0, contents.width - size.width) && origin.y >= 0 &&
               origin.y <= std::max<CGFloat>(0, contents.height - size.height);
    }

    void stripLines(NSArray* listItems)
    {
        auto* const strip = static_cast<UIScrollView*>(view("appsView"));
        if (strip == nullptr) {
            line("appsView", "none");
            return;
        }
        const CGSize content = send<"contentSize", CGSize>(strip);
        NSObject* const items = send<"items", NSObject*>(strip);
        line("appsView", itself(strip) + (send<"isScrollEnabled", BOOL>(strip) != NO ? " scrolls" : "") +
                             (send<"showsHorizontalScrollIndicator", BOOL>(strip) != NO ? " shows how far across" : "") +
                             (send<"showsVerticalScrollIndicator", BOOL>(strip) != NO ? " shows how far down" : "") +
                             (isInRange(strip) ? "" : " shows beyond its contents") + " content " +
                             numbers({content.width, content.height}) + " items " + ownerOf(items, listItems) + " subviews " +
                             std::to_string(strip->subviews()->count()));
        NSDictionary* const icons = send<"iconImgViews", NSDictionary*>(strip);
        std::string row;
        for (NSObject* icon : elementsOf(send<"allValues", NSArray*>(icons)))
            row += ' ' + number(static_cast<UIView*>(icon)->frame().origin.x);
        line("row", row);
        std::vector<std::string> lines;
        for (NSObject* key : elementsOf(send<"allKeys", NSArray*>(icons)))
            lines.push_back(textOf(key) + ' ' + stripIcon(strip, icons->objectForKey<UIImageView>(key)));
        std::ranges::sort(lines);
        for (const std::string& text : lines)
            line("icon", text);
    }

    void calendarLines(const std::string& name, UIView* calendar)
    {
        if (calendar == nullptr) {
            line(name, "none");
            return;
        }
        std::string text = itself(calendar);
        for (const char* variable :
             {"_day", "_month", "_year", "_today", "_cellSize", "_fontSize", "_titleTextSize", "_borderWidth"})
            text += std::string(" ") + variable + ' ' + std::to_string(integerVariable(calendar, variable));
        line(name, text + " delegate " + classOf(send<"delegate", NSObject*>(calendar)) + swipeDirections(calendar));
        auto* const title = instanceVariable<UILabel>(calendar, "lblMonth");
        line(name + " title", title == nullptr ? "none" : label(title));
        int index = 0;
        for (NSObject* subview : elementsOf(calendar->subviews())) {
            const bool isButton = subview->isKindOfClass(objc_getClass("UIButton"));
            line(name + ' ' + std::to_string(index++),
                 isButton ? dayButton(static_cast<UIButton*>(subview)) : label(static_cast<UILabel*>(subview)));
        }
    }

    void widgetLines()
    {
        UIView* const widget = view("widgetView");
        viewLine("widgetView");
        if (widget == nullptr)
            return;
        auto* const present = instanceVariable<UIView>(widget, "weather");
        for (NSObject* subview : elementsOf(widget->subviews())) {
            auto* const card = static_cast<UIView*>(subview);
            if (classOf(card) != "UIView")
                continue;
            line(card == present ? "card" : "old card",
                 itself(card) + " on " + textOf(send<"backgroundColor", UIColor*>(card)) + holds(card));
            line("card's label", label(card->subviews()->objectAtIndex<UILabel>(0)));
        }
        calendarLines("calendar", instanceVariable<UIView>(widget, "cal"));
    }

    const std::string& text() const { return text_; }

private:
    static NSInteger integerVariable(NSObject* object, const char* name)
    {
        const Ivar ivar = class_getInstanceVariable(object_getClass(object), name);
        return *reinterpret_cast<NSInteger*>(reinterpret_cast<char*>(object) + ivar_getOffset(ivar));
    }

    static std::string swipeDirections(UIView* view)
    {
        std::string directions = " swipes";
        for (NSObject* recognizer : elementsOf(view->gestureRecognizers()))
            directions += ' ' + std::to_string(send<"direction", NSUInteger>(recognizer));
        return directions;
    }

    static std::string stripIcon(UIView* strip, UIImageView* icon)
    {
        const CGRect frame = icon->frame();
        std::string text = numbers({frame.origin.y, frame.size.width, frame.size.height}) +
                           (icon->superview() == strip ? " in the strip" : "") + image(icon);
        for (NSObject* subview : elementsOf(icon->subviews())) {
            auto* const badge = static_cast<UIImageView*>(subview);
            text += " badge " + textOf(badge->frame()) + image(badge);
        }
        return text;
    }

    static std::string dayButton(UIButton* button)
    {
        CALayer* const layer = button->layer();
        std::string text = itself(button) + (button->isEnabled() ? "" : " disabled") + " tag " + std::to_string(button->tag()) +
                           ' ' + textOf(send<"titleForState:", NSObject*>(button, NSUInteger{0})) + ' ' +
                           textOf(button->titleLabel()->font()) + ' ' +
                           textOf(send<"titleColorForState:", UIColor*>(button, NSUInteger{0})) + " on " +
                           textOf(send<"backgroundColor", UIColor*>(button)) + " border " +
                           number(send<"borderWidth", CGFloat>(layer)) + ' ' + colors[send<"borderColor", CGColorRef>(layer)];
        auto* const gradient = layer->sublayers()->objectAtIndex<CALayer>(0);
        text += ' ' + classOf(gradient) + ' ' + textOf(gradient->frame());
        if (classOf(gradient) == "CAGradientLayer") {
            for (NSObject* color : elementsOf(send<"colors", NSArray*>(gradient)))
                text += ' ' + colors[color];
        }
        return text;
    }

    std::vector<Role> roles_;
    std::string text_;
};

/// What the console hands over, in the order of the selector's words.
NSString* stateOf(Class, SEL, UIView* headline, UIView* subtitle, UIView* calendarIcon, UIView* calendarPane,
                  UIView* calendarBackdrop, UIView* tab, UIView* notificationIcon, UIView* notificationPane,
                  UIView* notificationBackdrop, UIView* apps, UIView* art, UIView* widget, UIView* list, UIView* screen,
                  NSObject* controller, UIView* spare, NSString* morning, NSString* afternoon, NSString* evening, NSString* night,
                  NSString* user, NSDictionary* settings)
{
    const auto part = [&](const char* name) { return list == nullptr ? nullptr : instanceVariable<UIView>(list, name); };
    State state({{"headlineLabel", headline},
                 {"subtitleLabel", subtitle},
                 {"calendarIconView", calendarIcon},
                 {"calendarPaneView", calendarPane},
                 {"calendarPaneBackdrop", calendarBackdrop},
                 {"tabView", tab},
                 {"notificationIconView", notificationIcon},
                 {"notificationPaneView", notificationPane},
                 {"notificationPaneBackdrop", notificationBackdrop},
                 {"appsView", apps},
                 {"nowPlayingArtView", art},
                 {"widgetView", widget},
                 {"listView", list},
                 {"_containerView", part("_containerView")},
                 {"_tableView", part("_tableView")},
                 {"_topPocketView", part("_topPocketView")},
                 {"_bottomPocketView", part("_bottomPocketView")}});
    for (NSString* greeting : {morning, afternoon, evening, night})
        state.line("greeting", textOf(greeting));
    state.line("userName", textOf(user));
    state.line("settings", settings == nullptr ? "none" : "Name " + textOf(settings->objectForKey(constantString<"Name">())));
    state.line("lock screen",
               screen == nullptr ? "none" : State::itself(screen) + " subviews " + std::to_string(screen->subviews()->count()));
    auto* const items = controller == nullptr ? nullptr : instanceVariable<NSArray>(controller, "_listItems");
    state.line("list items", std::to_string(items->count()));
    state.viewLine("listView");
    state.viewLine("_containerView");
    state.line("_tableView", part("_tableView") == nullptr ? "none" : State::itself(part("_tableView")));
    state.viewLine("_topPocketView");
    state.line("_bottomPocketView", "in " + state.nameOf(part("_bottomPocketView")->superview()));
    state.labelLine("headlineLabel");
    state.labelLine("subtitleLabel");
    state.iconLine("calendarIconView");
    state.iconLine("notificationIconView");
    state.viewLine("calendarPaneView");
    state.backdropLine("calendarPaneBackdrop", calendarBackdrop);
    state.viewLine("notificationPaneView");
    state.backdropLine("notificationPaneBackdrop", notificationBackdrop);
    state.tabLines();
    state.stripLines(items);
    state.viewLine("nowPlayingArtView");
    state.line("backmost on the lock screen",
               screen == nullptr ? "none" : state.nameOf(static_cast<UIView*>(screen->subviews()->objectAtIndex(0))));
    state.widgetLines();
    state.calendarLines("spare", spare);
    for (const std::string& text : std::exchange(heard, {}))
        state.line("delegate", text);
    return NSString::stringWithUTF8String(state.text().c_str());
}

id nothing(Class, SEL)
{
    return nullptr;
}

struct ProbeIvars {};

[[gnu::constructor]] void begin()
{
    noteWhatHappens();
    registerDelegate<0>("DeafDelegate");
    registerDelegate<1>("DayDelegate");
    registerDelegate<2>("DateDelegate");
    registerDelegate<4>("ReleaseDelegate");
    registerDelegate<7>("WholeDelegate");
    ClassBuilder<ProbeIvars>("Probe", "NSObject")
        .classMethod<"nothing">(nothing)
        .classMethod<"stateOf::::::::::::::::::::::">(stateOf)
        .registerClass();
}

} // namespace
