#include "simulator/console/tour_page.hpp"

#include <fstream>
#include <string>
#include <string_view>

#include "simulator/files/whole_file.hpp"

namespace simulator {

namespace {

constexpr std::string_view head = R"(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>A day of Solvane</title>
<style>
body { margin: 3rem auto; max-width: 72rem; padding: 0 1rem; background: #14142b; color: #f0ecf7; font: 1.05rem/1.5 sans-serif }
h1 { font-weight: 200; font-size: 2.6rem; text-align: center }
main { display: grid; grid-template-columns: repeat(auto-fill, minmax(16rem, 1fr)); gap: 2.5rem 2rem }
figure { margin: 0 }
img { width: 100%; border-radius: 1rem; display: block }
figcaption { margin-top: .7rem }
</style>
<h1>A day of Solvane</h1>
<main>
)";

std::string escaped(std::string_view text)
{
    std::string html;
    for (const char c : text) {
        if (c == '&')
            html += "&amp;";
        else if (c == '<')
            html += "&lt;";
        else
            html += c;
    }
    return html;
}

} // namespace

void writeTourPage(const std::filesystem::path& script, const std::filesystem::path& folder)
{
    constexpr std::string_view comment = "# ";
    constexpr std::string_view screenshot = "screenshot ";
    std::string page(head);
    std::string caption;
    std::ifstream lines(script);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(comment))
            caption = escaped(line.substr(comment.size()));
        else if (line.starts_with(screenshot))
            page += "<figure><img src=\"" + line.substr(screenshot.size()) + "\" alt=\"\"><figcaption>" + caption +
                    "</figcaption></figure>\n";
    }
    writeWholeFile(folder / "index.html", page + "</main>\n");
}

} // namespace simulator
