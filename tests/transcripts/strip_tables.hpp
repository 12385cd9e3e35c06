#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/transcripts/Transcript.hpp"

/// What the strip of icons says. A strip, an item and an icon are called by the names that are passed; what they hand out is
/// named by the tables.
namespace tables {

/// The kinds of items, in the order in which they are told apart.
enum class Kind { bulletin, card, alert, unknown };
inline constexpr std::string_view itemClasses[] = {"SBAwayBulletinListItem", "SBAwayCardListItem", "SBAwaySystemAlertItem"};

/// initWithFrame:
Rows stripConstruction(const std::string& frame);

/// Asking an item for its kind, as both methods of the next two tables do. At the first use in a process its classes are looked
/// up.
Rows kindOf(const std::string& item, Kind kind, bool isFirst = false);

/// identifierForListItem:, and the strip's asking itself for it.
Rows identifier(const std::string& item, Kind kind, bool isFirst = false);
Rows askingForIdentifier(const std::string& strip, const std::string& item, Kind kind, bool isFirst = false);

/// The name of the method by which this phone's system finds an application.
std::string lookUpOfThisSystem();

/// iconForListItem: of an application's notification. `lookup` is the method by which the application is found, or empty where
/// there is none.
struct ApplicationIcon {
    std::string strip = "strip";
    std::string item = "item";
    /// In quotes, or "nil".
    std::string identifier;
    bool isFirst = false;
    std::string lookup = lookUpOfThisSystem();
    bool isFound = true;
};
Rows applicationIcon(const ApplicationIcon& icon);

/// iconForListItem: of an item of an unknown kind.
Rows genericIcon(const std::string& item, bool isFirst = false);
Rows screenScale();

/// The steps of addIconFor:andBadgeCount: that follow the counting, in a strip 100 high.
struct Badge {
    std::string strip = "strip";
    std::string item = "item";
    /// In quotes.
    std::string identifier;
    /// What iconForListItem: says.
    Rows icon;
    std::string count;
    /// The icon that stands for the identifier already.
    std::string earlier = {};
    std::string image = "image";
};
Rows iconWithBadge(const Badge& badge);

/// addIconFor:andBadgeCount: of one item of an unknown kind, alone in the list "items".
Rows unknownItemAdded(const std::string& strip);

/// showIcons, of a strip 168 wide and 100 high with these icons, and clearAll.
Rows stripRow(const std::string& strip, const std::vector<std::string>& icons);
Rows stripClearing(const std::string& strip, const std::vector<std::string>& icons);

} // namespace tables
