#include "simulator/services/calendar_text.hpp"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <utility>

#include <unicode/unistr.h>

namespace simulator {

namespace {

constexpr std::size_t longestLine = std::size_t{64} << 10;
constexpr std::size_t longestComponent = std::size_t{128} << 10;
constexpr std::size_t mostText = std::size_t{4} << 20;
constexpr std::size_t mostBytes = std::size_t{64} << 20;

/// Of each kind of component, where it may stand. What else there is, alarms and to-dos among it, is nobody's concern here.
struct ComponentKind {
    std::string_view name;
    std::string_view parent;
};

constexpr ComponentKind componentKinds[] = {
    {"VCALENDAR", ""}, {"VEVENT", "VCALENDAR"}, {"VTIMEZONE", "VCALENDAR"}, {"STANDARD", "VTIMEZONE"}, {"DAYLIGHT", "VTIMEZONE"},
};

constexpr std::string_view properties[] = {
    "UID",   "SUMMARY", "DTSTART",       "DTEND", "DURATION",     "RRULE",
    "RDATE", "EXDATE",  "RECURRENCE-ID", "TZID",  "TZOFFSETFROM", "TZOFFSETTO",
};

std::string capitals(std::string_view text)
{
    std::string copy(text);
    std::ranges::transform(copy, copy.begin(),
                           [](char letter) { return letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter; });
    return copy;
}

/// What is not UTF-8 becomes replacement characters, and so does the character that would end the text.
void appendReplaced(std::string& text, std::string_view bytes)
{
    icu::UnicodeString characters =
        icu::UnicodeString::fromUTF8(icu::StringPiece(bytes.data(), static_cast<std::int32_t>(bytes.size())));
    characters.findAndReplace(icu::UnicodeString(u'\0'), icu::UnicodeString(u'\uFFFD'));
    characters.toUTF8String(text);
}

/// Takes one unfolded line after the other.
class Reader {
public:
    explicit Reader(CalendarTexts& texts) : texts_(texts) {}

    /// False once nothing more is wanted.
    bool take(std::string_view line)
    {
        const std::string name = capitals(line.substr(0, line.find_first_of(":;")));
        if (name == "BEGIN" || name == "END") {
            const std::string component = capitals(trimmed(line.substr(std::min(name.size() + 1, line.size()))));
            name == "BEGIN" ? begin(component) : end(component);
        } else if (depthPassedOver_ == 0 && open_.size() > 1 && std::ranges::find(properties, name) != std::end(properties)) {
            keep(line);
        }
        return size_ <= mostText;
    }

    /// Ends the calendar that the file is cut in.
    void cut()
    {
        if (!open_.empty())
            texts_.calendars.push_back(std::move(calendar_));
    }

    bool hasLeftOut() const { return hasLeftOut_; }

private:
    static std::string_view trimmed(std::string_view text) { return text.substr(0, text.find_last_not_of(" \t") + 1); }

    void begin(const std::string& component)
    {
        const std::string_view parent = open_.empty() ? std::string_view() : open_.back();
        const auto kind = std::ranges::find_if(
            componentKinds, [&](const ComponentKind& known) { return known.name == component && known.parent == parent; });
        if (depthPassedOver_ > 0 || kind == std::end(componentKinds)) {
            ++depthPassedOver_;
            return;
        }
        open_.push_back(kind->name);
        if (open_.size() > 1)
            keep("BEGIN:" + component);
    }

    void end(const std::string& component)
    {
        if (depthPassedOver_ > 0) {
            --depthPassedOver_;
            return;
        }
        // What is left open within goes with it.
        while (std::ranges::find(open_, component) != open_.end())
            endLast();
    }

    void endLast()
    {
        const std::string_view ended = open_.back();
        if (open_.size() > 1)
            keep("END:" + std::string(ended));
        open_.pop_back();
        if (open_.empty()) {
            size_ += sizeof calendar_;
            texts_.calendars.push_back(std::exchange(calendar_, {}));
        } else if (open_.size() == 1)
            endChild(ended == "VEVENT" ? calendar_.events : calendar_.timeZones);
    }

    void endChild(std::vector<std::string>& children)
    {
        if (child_.size() <= longestComponent)
            children.push_back(std::move(child_));
        else
            hasLeftOut_ = true;
        child_.clear();
    }

    void keep(std::string_view line)
    {
        size_ += line.size();
        if (child_.size() > longestComponent)
            return;
        appendReplaced(child_, line);
        child_ += "\r\n";
    }

    CalendarTexts& texts_;
    CalendarText calendar_;
    /// The event or time zone that is being read.
    std::string child_;
    std::vector<std::string_view> open_;
    /// How deep the text is in components that are passed over.
    std::size_t depthPassedOver_ = 0;
    std::size_t size_ = 0;
    bool hasLeftOut_ = false;
};

/// Gives the unfolded lines of a stream to a reader: a line goes on where the next begins with a blank.
class Unfolder {
public:
    explicit Unfolder(Reader& reader) : reader_(reader) {}

    bool take(std::string_view bytes)
    {
        while (!bytes.empty()) {
            if (isAtLineStart_ && bytes.front() != ' ' && bytes.front() != '\t' && !finish())
                return false;
            if (isAtLineStart_ && (bytes.front() == ' ' || bytes.front() == '\t'))
                bytes.remove_prefix(1);
            isAtLineStart_ = false;
            const std::size_t end = std::min(bytes.find('\n'), bytes.size());
            add(bytes.substr(0, end));
            isAtLineStart_ = end < bytes.size();
            bytes.remove_prefix(std::min(end + 1, bytes.size()));
        }
        return true;
    }

    bool finish()
    {
        const bool goesOn = line_.empty() || isTooLong_ || reader_.take(line_);
        line_.clear();
        isTooLong_ = false;
        return goesOn;
    }

    /// Whether some line was too long.
    bool hasLeftOut() const { return hasLeftOut_; }

private:
    void add(std::string_view part)
    {
        if (part.ends_with('\r'))
            part.remove_suffix(1);
        if (line_.size() + part.size() <= longestLine) {
            line_ += part;
        } else {
            isTooLong_ = true;
            hasLeftOut_ = true;
        }
    }

    Reader& reader_;
    std::string line_;
    bool isAtLineStart_ = true;
    bool hasLeftOut_ = false;
    bool isTooLong_ = false;
};

} // namespace

CalendarTexts readCalendarTexts(const std::filesystem::path& file)
{
    CalendarTexts texts;
    std::error_code missing;
    if (!std::filesystem::is_regular_file(file, missing))
        return texts;
    Reader reader(texts);
    Unfolder lines(reader);
    std::ifstream stream(file, std::ios::binary);
    std::string block(std::size_t{64} << 10, '\0');
    bool goesOn = true;
    std::size_t read = 0;
    while (goesOn && read < mostBytes) {
        stream.read(block.data(), static_cast<std::streamsize>(block.size()));
        const auto count = static_cast<std::size_t>(stream.gcount());
        if (count == 0)
            break;
        read += count;
        goesOn = lines.take(std::string_view(block).substr(0, count));
    }
    if (!goesOn || read >= mostBytes) {
        reader.cut();
        texts.cuts.emplace_back("the file is too long: the rest of it is left out");
    } else {
        lines.finish();
    }
    if (reader.hasLeftOut())
        texts.cuts.emplace_back("an event or time zone of more than 128 KiB is left out");
    if (lines.hasLeftOut())
        texts.cuts.emplace_back("lines of more than 64 KiB are left out");
    return texts;
}

} // namespace simulator
