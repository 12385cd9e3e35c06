#include "tests/transcripts/Transcript.hpp"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <map>

#include "tests/support/Phone.hpp"
#include "tests/transcripts/recording.hpp"

namespace {

using recording::Call;
using recording::Value;

/// What each object is called, and whether a table has said so.
class Roles {
public:
    void set(const void* object, const std::string& name) { names_[object] = {name, true}; }
    /// For an object that is there for the first time.
    void setNew(const void* object, const std::string& name) { names_[object] = {name, false}; }
    /// For a result that no table has named.
    void setFromCall(const void* object, const std::string& name)
    {
        if (const auto found = names_.find(object); found == names_.end() || !found->second.isGiven)
            setNew(object, name);
    }
    std::string of(const Value& value) const
    {
        if (!value.items.empty()) {
            std::string text;
            for (const Value& item : value.items)
                text += (text.empty() ? "{" : " ") + of(item);
            return text + '}';
        }
        const auto found = value.object == nullptr ? names_.end() : names_.find(value.object);
        return found == names_.end() ? value.text : found->second.text;
    }

private:
    struct Name {
        std::string text;
        bool isGiven = false;
    };
    std::map<const void*, Name> names_;
};

/// "setTitle: 'so' forState: 0"
std::string withArguments(const Call& call, const Roles& roles)
{
    std::string text;
    std::size_t next = 0;
    for (const char letter : call.name) {
        text += letter;
        if (letter == ':' && next < call.arguments.size())
            text += ' ' + roles.of(call.arguments[next++]) + ' ';
    }
    for (; next < call.arguments.size(); ++next)
        text += ' ' + roles.of(call.arguments[next]);
    if (text.back() == ' ')
        text.pop_back();
    return text;
}

std::string rowFor(const Call& call, const Roles& roles)
{
    if (!call.isMessage)
        return withArguments(call, roles);
    std::string row = roles.of(call.receiver) + ' ';
    if (!call.manner.empty())
        row += call.manner + ' ';
    row += withArguments(call, roles);
    if (call.name == "stringWithFormat:")
        row += " -> " + call.result.text;
    return row;
}

/// A row of a table: what is called, and what its result is called from there on.
struct TableRow {
    explicit TableRow(const std::string& text) : call(text)
    {
        constexpr std::string_view mark = " = ";
        if (const auto at = text.rfind(mark); at != std::string::npos) {
            call = text.substr(0, at);
            role = text.substr(at + mark.size());
        }
    }

    std::string call;
    std::string role;
};

std::string listing(const std::vector<std::string>& rows, std::size_t first)
{
    constexpr std::size_t most = 25;
    std::string text;
    for (std::size_t i = first; i < std::min(rows.size(), first + most); ++i)
        text += "    " + rows[i] + '\n';
    return text;
}

/// What is said and what the table has, from a little before the first difference.
std::string difference(const std::vector<std::string>& said, const std::vector<std::string>& table)
{
    const auto at = static_cast<std::size_t>(std::ranges::mismatch(said, table).in1 - said.begin());
    const std::size_t first = at < 5 ? 0 : at - 5;
    return "The row " + std::to_string(at + 1) + " differs. It says\n" + listing(said, first) + "  where the table has\n" +
           listing(table, first);
}

/// The calls as rows. A table's names for results are taken over where its rows are met in their order.
std::vector<std::string> rowsFor(const std::deque<Call>& calls, const std::vector<std::string>& table, Roles& roles)
{
    std::vector<TableRow> expected;
    for (const std::string& row : table)
        expected.emplace_back(row);
    std::vector<std::string> rows;
    std::size_t next = 0;
    for (const Call& call : calls) {
        std::string row = rowFor(call, roles);
        if (call.name == "alloc") {
            roles.setNew(call.result.object, '[' + row + ']');
            continue;
        }
        std::string role;
        for (std::size_t i = next; i < expected.size(); ++i) {
            if (expected[i].call == row) {
                role = expected[i].role;
                next = i + 1;
                break;
            }
        }
        if (!role.empty()) {
            roles.set(call.result.object, role);
            rows.push_back(row + " = " + role);
            continue;
        }
        if (call.result.object != nullptr)
            roles.setFromCall(call.result.object, '[' + row + ']');
        rows.push_back(row);
    }
    return rows;
}

} // namespace

Transcript& Transcript::name(const std::string& role, const void* object)
{
    if (object != nullptr)
        roles_.push_back({object, role});
    return *this;
}

Transcript& Transcript::nameExported()
{
    for (const char* name : {"headlineLabel", "subtitleLabel", "calendarIconView", "calendarPaneView", "calendarPaneBackdrop",
                             "tabView", "notificationIconView", "notificationPaneView", "notificationPaneBackdrop", "appsView",
                             "nowPlayingArtView", "widgetView"})
        this->name(name, exportedVariable(name));
    return *this;
}

Transcript& Transcript::nameCode(const std::string& name)
{
    return this->name(name, recording::functionOfLibrary(exported(name)));
}

std::vector<std::string> Transcript::of(const std::function<void()>& action, const std::vector<std::string>& table) const
{
    recording::start();
    action();
    const std::deque<Call> calls = recording::stop();
    Roles roles;
    for (const Role& role : roles_)
        roles.set(role.object, role.name);
    return rowsFor(calls, table, roles);
}

void Transcript::expect(const std::function<void()>& action, const std::vector<std::string>& rows) const
{
    const std::vector<std::string> said = of(action, rows);
    if (said != rows)
        ADD_FAILURE() << difference(said, rows);
}

Rows operator+(Rows first, const Rows& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::string number(double value)
{
    return recording::number(value);
}
