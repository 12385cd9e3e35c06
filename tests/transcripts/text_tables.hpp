#pragma once

#include <optional>
#include <set>
#include <string>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSString.hpp"
#include "tests/transcripts/Transcript.hpp"

/// What is said wherever a sentence is made or a text is drawn.
namespace tables {

/// What the weather service holds.
struct Weather {
    /// Nothing for a city that has none.
    std::optional<std::string> temperature = "21";
    long code = 26;
    std::string word = "Cloudy";
    bool isCelsius = true;
    bool hasCity = true;
    std::string location = "nil";
    /// Whether the three classes are used for the first time.
    bool isFirst = false;
    /// Those of them that are not there.
    std::set<std::string> missing = {};
};

/// The weather sentence.
Rows weather(const Weather& weather = {});

/// The hour of the day, as the greeting and its bucket ask for it.
Rows hour();

/// A text drawn into a copy of an image, which is called "drawn". An image that is not there is called "nil".
struct Drawing {
    std::string image;
    CGSize size;
    /// Nil for none.
    NSString* text;
    CGPoint point;
};
Rows drawing(const Drawing& drawing);

/// NSString stringWithFormat:, of that format with that result.
Rows format(const std::string& format, const std::string& result);

std::string quoted(const std::string& text);

} // namespace tables
