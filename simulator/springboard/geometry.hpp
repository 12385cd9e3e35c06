#pragma once

#include <optional>
#include <string>

#include "platform/UIKit/UIScrollView.hpp"

namespace simulator {

/// Where the parts of the stock lock screen stand, in points.
struct Geometry {
    /// What the user calls it.
    std::string name;
    /// On the lock screen.
    CGRect dateView;
    /// None for a lock screen without one.
    std::optional<CGRect> slideToUnlockView;
    CGRect notificationView;
    /// How far the container's edges are within the notification view's, and the table's within the container's.
    UIEdgeInsets container;
    UIEdgeInsets table;
    /// Between the table's edges and its rows.
    UIEdgeInsets rows;
};

/// An arrangement of our own, in which the panel stands free: the clock at the foot of the screen, the container all over it.
Geometry deskGeometry(CGSize screen);

/// The public estimate of a phone's: the clock at the top, "slide to unlock" at the bottom, the container between them. Its
/// numbers are those of a screen 568 points high; nothing tells how others differ.
Geometry phoneGeometry(CGSize screen);

/// The lock screen's: the desk's own unless another was chosen.
const Geometry& geometry();

/// To be called before there is a lock screen.
void chooseGeometry(Geometry geometry);

/// The frame, in a superview of that size, of a view whose edges are that far within it; where nothing is left, no side is
/// below 0.
CGRect frameWithin(CGSize superview, const UIEdgeInsets& insets);

} // namespace simulator
