#include "simulator/console/words.hpp"

#include "simulator/console/BadLine.hpp"

namespace simulator {

namespace {

constexpr std::string_view blanks = " \t";

/// Reads one line from its start to its end.
class WordReader {
public:
    explicit WordReader(std::string_view line) : rest_(line) {}

    /// Goes to the next word; false when there is none.
    bool findWord()
    {
        const std::size_t start = rest_.find_first_not_of(blanks);
        rest_.remove_prefix(start == std::string_view::npos ? rest_.size() : start);
        return !rest_.empty() && rest_.front() != '#';
    }

    std::string readWord()
    {
        std::string word;
        while (!rest_.empty() && blanks.find(rest_.front()) == std::string_view::npos) {
            const char c = take();
            if (c == '\'')
                readSingleQuoted(word);
            else if (c == '"')
                readDoubleQuoted(word);
            else
                word += c == '\\' ? takeEscaped() : c;
        }
        return word;
    }

private:
    char take()
    {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    char takeEscaped()
    {
        if (rest_.empty())
            throw BadLine("there is nothing behind the last backslash");
        return take();
    }

    void readSingleQuoted(std::string& word)
    {
        const std::size_t end = rest_.find('\'');
        if (end == std::string_view::npos)
            throw BadLine("a single quote is not closed");
        word += rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
    }

    void readDoubleQuoted(std::string& word)
    {
        while (!rest_.empty()) {
            const char c = take();
            if (c == '"')
                return;
            const bool escapes = c == '\\' && (rest_.starts_with('"') || rest_.starts_with('\\'));
            word += escapes ? take() : c;
        }
        throw BadLine("a double quote is not closed");
    }

    std::string_view rest_;
};

} // namespace

std::vector<std::string> splitWords(std::string_view line)
{
    std::vector<std::string> words;
    for (WordReader reader(line); reader.findWord();)
        words.push_back(reader.readWord());
    return words;
}

} // namespace simulator
