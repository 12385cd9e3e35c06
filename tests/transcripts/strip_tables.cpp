#include "tests/transcripts/strip_tables.hpp"

#include "tests/support/objects.hpp"

#include <algorithm>

#include "platform/UIKit/UIImage.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "tests/support/Phone.hpp"
#include "tests/transcripts/text_tables.hpp"

namespace tables {

namespace {

constexpr const char* badgeFile = "/Library/Application Support/Solvane/Badge.png";

std::string walking(const std::string& collection)
{
    return collection + " countByEnumeratingWithState: room objects: room count: 16";
}

} // namespace

Rows stripConstruction(const std::string& frame)
{
    return {"strip super initWithFrame: " + frame,
            "[NSMutableDictionary alloc] init = icons",
            "strip setShowsVerticalScrollIndicator: NO",
            "strip setShowsHorizontalScrollIndicator: NO",
            "strip setScrollEnabled: YES",
            "strip setUserInteractionEnabled: YES"};
}

Rows kindOf(const std::string& item, Kind kind, bool isFirst)
{
    Rows rows;
    for (std::size_t i = 0; i <= std::min<std::size_t>(static_cast<std::size_t>(kind), 2); ++i) {
        const std::string cls(itemClasses[i]);
        if (isFirst)
            rows.push_back("objc_getClass " + cls);
        rows.push_back(item + " isKindOfClass: " + cls);
    }
    return rows;
}

Rows identifier(const std::string& item, Kind kind, bool isFirst)
{
    const Rows rows = kindOf(item, kind, isFirst);
    switch (kind) {
    case Kind::bulletin:
        return rows + Rows{item + " activeBulletin = bulletin", "bulletin sectionID"};
    case Kind::card:
        return rows + Rows{item + " cardItem = card", "card identifier"};
    case Kind::alert:
        return rows + Rows{item + " title"};
    default:
        return rows;
    }
}

Rows askingForIdentifier(const std::string& strip, const std::string& item, Kind kind, bool isFirst)
{
    return Rows{strip + " identifierForListItem: " + item} + identifier(item, kind, isFirst);
}

std::string lookUpOfThisSystem()
{
    return simulator::phoneSystem() < simulator::System::v8_1 ? "applicationWithDisplayIdentifier:"
                                                              : "applicationWithBundleIdentifier:";
}

Rows applicationIcon(const ApplicationIcon& icon)
{
    const Rows asking = askingForIdentifier(icon.strip, icon.item, Kind::bulletin);
    const auto comparing = [&](const std::string& special) {
        return icon.identifier == "nil" ? asking : asking + Rows{icon.identifier + " isEqualToString: " + special};
    };
    const auto firstUse = [&](const std::string& cls) { return icon.isFirst ? Rows{"objc_getClass " + cls} : Rows{}; };

    Rows rows =
        kindOf(icon.item, Kind::bulletin, icon.isFirst) + comparing("'com.apple.mobilecal'") + comparing("'noIdentifier'");
    rows = rows + firstUse("SBApplicationController") +
           Rows{"SBApplicationController sharedInstance = controller",
                "controller respondsToSelector: applicationWithBundleIdentifier:"};
    if (icon.lookup != "applicationWithBundleIdentifier:")
        rows.push_back("controller respondsToSelector: applicationWithDisplayIdentifier:");
    if (!icon.lookup.empty())
        rows = rows + asking + Rows{"controller " + icon.lookup + ' ' + icon.identifier + (icon.isFound ? " = application" : "")};
    const bool hasApplication = icon.isFound && !icon.lookup.empty();
    return rows + firstUse("SBApplicationIcon") +
           Rows{std::string("[SBApplicationIcon alloc] initWithApplication: ") + (hasApplication ? "application" : "nil") +
                    " = applicationIcon",
                std::string("applicationIcon generateIconImage: 2") + (hasApplication ? " = image" : "")};
}

Rows screenScale()
{
    return {"UIScreen mainScreen = screen", "screen scale"};
}

Rows genericIcon(const std::string& item, bool isFirst)
{
    return kindOf(item, Kind::unknown, isFirst) + screenScale() +
           Rows{"UIImage _applicationIconImageForBundleIdentifier: nil format: 0 scale: 2 = image"};
}

Rows iconWithBadge(const Badge& badge)
{
    const std::string views = badge.strip + " iconImgViews";
    Rows rows{views, "icons objectForKey: " + badge.identifier + (badge.earlier.empty() ? "" : " = " + badge.earlier)};
    if (!badge.earlier.empty())
        rows = rows + Rows{views, "icons objectForKey: " + badge.identifier, badge.earlier + " removeFromSuperview", views,
                           "icons removeObjectForKey: " + badge.identifier};
    const std::string frame = badge.strip + " frame";
    // The height of the strip is read twice for a side of the icon, once for a side of the badge.
    const Rows side{frame, frame};
    rows = rows + side + side +
           Rows{"[UIImageView alloc] initWithFrame: (0 0 50 50) = icon", badge.strip + " iconForListItem: " + badge.item} +
           badge.icon + Rows{"icon setImage: " + badge.image};
    rows = rows + Rows{frame, frame, "[UIImageView alloc] initWithFrame: (0 0 25 25) = badge",
                       "NSString stringWithFormat: '%ld' -> '" + badge.count + '\'',
                       std::string("UIImage imageWithContentsOfFile: '") + badgeFile + "' = empty"};
    const CGSize size = UIImage::imageWithContentsOfFile(text(badgeFile))->size();
    return rows + drawing({"empty", size, text(badge.count), {12.5, 7.5}}) +
           Rows{"badge setImage: drawn",
                "icon frame",
                "icon frame",
                "badge setCenter: (50 0)",
                "icon addSubview: badge",
                views,
                "icons setObject: icon forKey: " + badge.identifier};
}

Rows unknownItemAdded(const std::string& strip)
{
    const Rows asking = askingForIdentifier(strip, "item", Kind::unknown);
    return asking + Rows{strip + " items", walking("items")} + asking +
           Rows{"'noIdentifier' isEqualToString: 'noIdentifier'", walking("items")} +
           iconWithBadge({.strip = strip, .identifier = "'noIdentifier'", .icon = genericIcon("item"), .count = "1"});
}

Rows stripRow(const std::string& strip, const std::vector<std::string>& icons)
{
    const double width = 60.0 * static_cast<double>(icons.size());
    const std::string frame = strip + " frame";
    Rows rows{strip + " iconImgViews",
              "icons allKeys = keys",
              "keys count",
              frame,
              frame,
              frame,
              strip + " setContentSize: (" + number(width) + " 100)",
              frame,
              strip + " iconImgViews",
              "icons allValues = views",
              walking("views")};
    double x = std::max(0.0, (168 - width) / 2);
    for (const std::string& icon : icons) {
        rows = rows +
               Rows{frame, frame, frame, frame, icon + " setFrame: (" + number(x) + " 22 50 50)", strip + " addSubview: " + icon,
                    frame, frame};
        x += 60;
    }
    return icons.empty() ? rows : rows + Rows{walking("views")};
}

Rows stripClearing(const std::string& strip, const std::vector<std::string>& icons)
{
    Rows rows{strip + " clearAll", strip + " iconImgViews", "icons allValues = views", walking("views")};
    for (const std::string& icon : icons)
        rows.push_back(icon + " removeFromSuperview");
    if (!icons.empty())
        rows.push_back(walking("views"));
    return rows + Rows{strip + " iconImgViews", "icons removeAllObjects", strip + " showIcons"} + stripRow(strip, {});
}

} // namespace tables
