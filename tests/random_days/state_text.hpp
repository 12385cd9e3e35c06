#pragma once

#include <charconv>
#include <initializer_list>
#include <string>

/// How numbers and texts are written in a state of the phone: the same for what a phone is and for what it should be.

/// Six figures, so that a length is written alike whatever its width in memory.
inline std::string number(double value)
{
    constexpr int figures = 6;
    char text[32];
    // The sum makes a zero of either sign the same.
    const auto written = std::to_chars(text, text + sizeof text, value + 0.0, std::chars_format::general, figures);
    return {text, written.ptr};
}

inline std::string numbers(std::initializer_list<double> values)
{
    std::string text;
    for (const double value : values)
        text += (text.empty() ? "" : ",") + number(value);
    return text;
}

inline std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}
