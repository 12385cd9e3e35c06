#pragma once

/// A colour of Core Graphics.
class CGColor;
using CGColorRef = CGColor*;
