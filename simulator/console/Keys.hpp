#pragma once

#include <span>
#include <string>
#include <vector>

#include "simulator/console/commands.hpp"

namespace simulator {

/// What the keys of the window do: each stands for something that befalls a phone, and runs the console's commands for it.
class Keys {
public:
    struct Key {
        char letter;
        const char* meaning;
        void (Keys::*answer)();
    };
    static std::span<const Key> all();

    /// The console must outlive it.
    explicit Keys(Console& console) : console_(console) {}

    /// Does what the key of a character stands for, and tells whether there is such a key.
    bool press(int character);

    /// What the last key has to say; empty when that is nothing.
    const std::string& status() const { return status_; }
    bool showsHelp() const { return showsHelp_; }
    bool wantsToClose() const { return wantsToClose_; }

private:
    void run(const std::vector<std::string>& words);
    void relayOut();

    void notifyNext();
    void notifyAgain();
    void addCard();
    void addAlert();
    void clear();
    void switchScreen();
    void goOnThreeHours();
    void changeWeather();
    void changeUnits();
    void changeName();
    void respring();
    void lock();
    void takePicture();
    void toggleHelp();
    void close();

    Console& console_;
    std::string status_;
    bool showsHelp_ = false;
    bool wantsToClose_ = false;
    bool screenIsOff_ = false;
    std::size_t notificationIndex_ = 0;
    std::size_t weatherIndex_ = 0;
    std::size_t nameIndex_ = 0;
};

} // namespace simulator
