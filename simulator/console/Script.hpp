#pragma once

#include <optional>
#include <string>

namespace simulator {

/// The lines of a script, read from an open descriptor, which stays open and is never the script's own. While it waits for
/// a line, Darwin notifications are delivered.
class Script {
public:
    /// Where a script stands, for a process that goes on with it.
    struct Position {
        int descriptor;
        /// How many lines have been read.
        long linesRead;
        /// What has been read behind them; nothing where the descriptor has been set back.
        std::string unread;
    };

    explicit Script(Position position);

    /// The next line without its end (LF or CR LF); none behind the last. Throws std::system_error when it cannot be read.
    std::optional<std::string> nextLine();

    /// The number, from 1, of the line that nextLine() gave or looked for last.
    long lineNumber() const { return lineNumber_; }

    /// Where the script stands. A seekable descriptor is set back to the end of the last line that nextLine() gave.
    Position giveBack();

private:
    bool readMore();

    int descriptor_;
    long linesRead_;
    long lineNumber_;
    bool isSeekable_;
    std::string unread_;
    /// How many bytes of it nextLine() has given.
    std::size_t taken_ = 0;
};

} // namespace simulator
