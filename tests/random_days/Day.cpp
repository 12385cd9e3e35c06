#include "tests/random_days/Day.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <sstream>
#include <unistd.h>

#include "tests/support/programs.hpp"

namespace {

namespace fs = std::filesystem;

/// What the model says of one step.
struct Expectation {
    std::vector<std::string> answers;
    std::string state;
    std::vector<std::string> log;
};

/// Asks for everything: what the panel's variables hold goes to the probe.
constexpr const char* questions = "send Probe stateOf:::::::::::::::::::::: @headlineLabel @subtitleLabel @calendarIconView "
                                  "@calendarPaneView @calendarPaneBackdrop @tabView @notificationIconView @notificationPaneView "
                                  "@notificationPaneBackdrop @appsView @nowPlayingArtView @widgetView @listView @lockScreenView "
                                  "@controller @spare @morningString @afternoonString @eveningString @nightString @userName "
                                  "@settingsDictionary\n"
                                  "log\n";

/// The C library's time is that of the phone.
void goTo(const Region& region)
{
    ::setenv("TZ", region.timeZone.c_str(), 1);
    ::tzset();
}

/// A program whose output is read line by line while it runs.
class Conversation {
public:
    Conversation(const std::vector<std::string>& words, const Environment& additions, const fs::path& errors)
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("cannot make a pipe");
        const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        const int complaints = ::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        process_.emplace(words, additions, nothing, ends[1], complaints);
        for (const int end : {ends[1], nothing, complaints})
            ::close(end);
        output_ = ends[0];
    }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    ~Conversation() { ::close(output_); }

    /// Nothing when the program has ended, or does not answer.
    std::optional<std::string> line()
    {
        constexpr int patience = 300'000;
        std::size_t end;
        while ((end = unread_.find('\n', begin_)) == std::string::npos) {
            unread_.erase(0, begin_);
            begin_ = 0;
            pollfd waited{output_, POLLIN, 0};
            std::array<char, 65536> block;
            const int ready = ::poll(&waited, 1, patience);
            const ssize_t count = ready > 0 ? ::read(output_, block.data(), block.size()) : ready;
            // A fuzzer's own alarm clock rings meanwhile.
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return std::nullopt;
            unread_.append(block.data(), static_cast<std::size_t>(count));
        }
        std::string line = unread_.substr(begin_, end - begin_);
        begin_ = end + 1;
        return line;
    }

    int status() { return process_->wait(); }

private:
    std::optional<Process> process_;
    int output_ = -1;
    std::string unread_;
    std::size_t begin_ = 0;
};

std::vector<std::string> linesIn(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// The lines of one text that are not in the other.
std::string linesMissing(const std::string& text, const std::string& other, const std::string& heading)
{
    const auto others = linesIn(other);
    std::string missing;
    for (const std::string& line : linesIn(text)) {
        if (std::ranges::find(others, line) == others.end())
            missing += heading + line + '\n';
    }
    return missing;
}

std::string differenceOf(const std::string& expected, const std::string& found)
{
    const std::string differences =
        linesMissing(expected, found, "  should be  ") + linesMissing(found, expected, "  is         ");
    return differences.empty() ? "  the same lines in another order, or another number of them\n" : differences;
}

/// What differs after one step; empty when nothing does, none when the phone says no more.
std::optional<std::string> compare(const Expectation& expected, Conversation& phone)
{
    std::string differences;
    for (const std::string& answer : expected.answers) {
        const auto line = phone.line();
        if (!line)
            return std::nullopt;
        if (*line != answer)
            differences += "  should be  " + answer + "\n  is         " + *line + '\n';
    }
    const auto state = phone.line();
    const auto log = phone.line();
    if (!state || !log)
        return std::nullopt;
    const auto found = nlohmann::json::parse(*state, nullptr, false);
    if (!found.is_string())
        return differences + "  no state: " + *state + '\n';
    if (found.get_ref<const std::string&>() != expected.state)
        differences += differenceOf(expected.state, found.get<std::string>());
    if (const std::string shouldBe = nlohmann::json(expected.log).dump(); *log != shouldBe)
        differences += "  log should be  " + shouldBe + "\n  is             " + *log + '\n';
    return differences;
}

} // namespace

DayPlayer::DayPlayer(fs::path springboard)
    : springboard_(fs::absolute(std::move(springboard))), probe_(springboard_.parent_path() / "tests/state_probe.dylib")
{
}

std::vector<std::string> DayPlayer::commandLine(const Setting& setting, const std::string& root, const std::string& script) const
{
    const Screen& screen = setting.screen;
    std::vector<std::string> words = {springboard_,
                                      "--root",
                                      root,
                                      "--load",
                                      probe_,
                                      "--screen",
                                      std::to_string(screen.width) + 'x' + std::to_string(screen.height) + '@' +
                                          std::to_string(screen.scale),
                                      "--script",
                                      script};
    const auto options = springboardOptions();
    words.insert(words.end(), options.begin(), options.end());
    return words;
}

std::optional<DayPlayer::Difference> DayPlayer::play(const Setting& setting, const std::vector<Step>& steps) const
{
    goTo(*setting.region);
    PhoneModel phone(*setting.region, setting.screen);
    std::string commands;
    std::vector<Expectation> expectations;
    const auto expect = [&] {
        auto conversation = phone.takeConversation();
        commands += conversation.commands + questions;
        expectations.push_back({std::move(conversation.answers), phone.takeState(), phone.takeLog()});
    };
    expect();
    for (const Step& step : steps) {
        happen(phone, step);
        expect();
    }

    const fs::path folder = tree_.root().parent_path();
    fs::remove(tree_.preferencesFile());
    writeFile(folder / "day.txt", commands);
    const Environment environment{
        {"TZ", setting.region->timeZone}, {"LANG", setting.region->language}, {"LC_ALL", setting.region->language}};
    Conversation conversation(commandLine(setting, tree_.root(), folder / "day.txt"), environment, folder / "errors.txt");
    for (std::size_t i = 0; i < expectations.size(); ++i) {
        const auto differences = compare(expectations[i], conversation);
        if (!differences)
            return Difference{i, "  springboard ended with status " + std::to_string(conversation.status()) + ": " +
                                     readFile(folder / "errors.txt") + '\n'};
        if (!differences->empty())
            return Difference{i, *differences};
    }
    if (const int status = conversation.status(); status != 0)
        return Difference{steps.size(), "  springboard ended with status " + std::to_string(status) + ": " +
                                            readFile(folder / "errors.txt") + '\n'};
    return std::nullopt;
}

std::string DayPlayer::script(const Setting& setting, const std::vector<Step>& steps) const
{
    goTo(*setting.region);
    std::string text = "# TZ=" + setting.region->timeZone + " LC_ALL=" + setting.region->language;
    for (const std::string& part : commandLine(setting, "DIR", "-"))
        text += ' ' + part;
    text += '\n';
    PhoneModel phone(*setting.region, setting.screen);
    for (const Step& step : steps)
        happen(phone, step);
    return text + phone.takeConversation().commands;
}

std::vector<Step> shortened(const DayPlayer& player, const Setting& setting, std::vector<Step> steps)
{
    // Leaves out ever shorter pieces; when no single step can go, the day is as short as can be.
    for (std::size_t piece = steps.size() / 2; piece > 0;) {
        bool hasShrunk = false;
        for (std::size_t begin = 0; begin < steps.size();) {
            std::vector<Step> rest = steps;
            const auto from = rest.begin() + static_cast<std::ptrdiff_t>(begin);
            rest.erase(from, from + static_cast<std::ptrdiff_t>(std::min(piece, rest.size() - begin)));
            if (const auto difference = player.play(setting, rest)) {
                rest.resize(std::min(rest.size(), difference->step));
                steps = std::move(rest);
                hasShrunk = true;
            } else {
                begin += piece;
            }
        }
        if (!hasShrunk || piece > 1)
            piece /= 2;
    }
    return steps;
}
