#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/UIKit/UIView.hpp"
#include "simulator/console/BadLine.hpp"
#include "simulator/console/Command.hpp"

/// What the words behind a command mean. All of these throw BadLine for a word that is not of the form.
namespace simulator {

/// A local time, in seconds since 1970-01-01T00:00:00Z.
double momentIn(const std::string& localTime);

template <class Meaning>
struct Choice {
    std::string_view word;
    Meaning meaning;
};

/// What the word means. Throws BadLine for a word that is none of the choices.
template <class Meaning, std::size_t Count>
Meaning chosen(const std::string& word, const Choice<Meaning> (&choices)[Count])
{
    std::string expected;
    for (const Choice<Meaning>& choice : choices) {
        if (word == choice.word)
            return choice.meaning;
        expected += (expected.empty() ? "" : " or ") + std::string(choice.word);
    }
    throw BadLine("expected " + expected + ", not \"" + word + '"');
}

/// From 0 to the longest.
double secondsIn(const std::string& text, int longest);

/// A text that a command may leave out; nil then.
NSString* optionalText(Words arguments, std::size_t index);

/// None for a text that is not of the form X,Y.
std::optional<CGPoint> pointIn(const std::string& text);

/// The object as a view; `path` is how the user called it.
UIView* viewIn(id object, const std::string& path);

/// The place of a touch, in the window: a point, or the centre of the view at a path.
CGPoint placeIn(const Console& console, const std::string& text);

} // namespace simulator
