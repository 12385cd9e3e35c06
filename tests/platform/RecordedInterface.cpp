#include "tests/platform/RecordedInterface.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

using Cell = RecordedInterface::Cell;

std::vector<std::string> fieldsOf(const std::string& line)
{
    std::vector<std::string> fields(1);
    for (const char letter : line) {
        if (letter == '\t')
            fields.emplace_back();
        else
            fields.back() += letter;
    }
    return fields;
}

/// A column's title: the system's version and the processor.
Cell columnTitled(const std::string& title)
{
    std::istringstream words(title);
    std::string version;
    std::string processor;
    words >> version >> processor;
    const bool hasWideWords = processor == "arm64";
    return {simulator::systemOfVersion(version).value(), hasWideWords == (sizeof(void*) == 8), "", ""};
}

/// "v@: (UIView)" is what UIView declares.
void read(const std::string& text, Cell& cell)
{
    const std::size_t bracket = text.find(" (");
    cell.type = text.substr(0, bracket);
    if (bracket != std::string::npos)
        cell.inheritedFrom = text.substr(bracket + 2, text.size() - bracket - 3);
}

std::string keyOf(const std::string& cls, const std::string& kind, const std::string& name)
{
    return cls + '\t' + kind + '\t' + name;
}

} // namespace

RecordedInterface::RecordedInterface()
{
    constexpr std::size_t firstColumn = 3;
    std::ifstream file(RECORDED_INTERFACE);
    std::vector<Cell> columns;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#'))
            continue;
        const auto fields = fieldsOf(line);
        if (columns.empty()) {
            for (std::size_t i = firstColumn; i < fields.size(); ++i)
                columns.push_back(columnTitled(fields[i]));
            continue;
        }
        if (fields.size() != firstColumn + columns.size())
            throw std::runtime_error("a row of another width: " + line);
        classes_.insert(fields[0]);
        if (fields[1] == "variable")
            whole_.insert(fields[0]);
        auto& cells = rows_[keyOf(fields[0], fields[1], fields[2])];
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (fields[firstColumn + i].empty())
                continue;
            cells.push_back(columns[i]);
            read(fields[firstColumn + i], cells.back());
        }
    }
    if (rows_.empty())
        throw std::runtime_error("cannot read " RECORDED_INTERFACE);
}

std::vector<Cell> RecordedInterface::cells(simulator::System system, const std::string& cls, const std::string& kind,
                                           const std::string& name) const
{
    const auto found = rows_.find(keyOf(cls, kind, name));
    if (found == rows_.end())
        return {};
    std::vector<Cell> own;
    std::ranges::copy_if(found->second, std::back_inserter(own), [&](const Cell& cell) { return cell.system == system; });
    return own.empty() ? found->second : own;
}
