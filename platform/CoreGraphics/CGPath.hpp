#pragma once

/// A path of Core Graphics.
class CGPath;
using CGPathRef = CGPath*;
