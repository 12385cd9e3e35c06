#include "tests/support/Phone.hpp"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unordered_map>

#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/phone_system.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/loader/injection.hpp"
#include "simulator/services/darwin_notifications.hpp"

Phone::Phone(const simulator::ScreenSize& screen)
{
    if (simulator::springBoardWindow() != nullptr)
        throw std::logic_error("a process has one phone: run each test in a process of its own");
    simulator::setPhoneRoot(tree_.root());
    simulator::openSystemLog();
    if (const char* const version = std::getenv("SOLVANE_SYSTEM"))
        simulator::choosePhoneSystem(simulator::systemOfVersion(version).value());
    simulator::launchSpringBoard(screen);
    simulator::openDarwinNotifications();
}

void Phone::inject()
{
    simulator::injectLibraries({});
}

void Phone::post(const std::string& name) const
{
    EXPECT_EQ(simulator::postDarwinNotification(tree_.root(), name).reached, 1U);
}

void* exported(const std::string& name)
{
    const auto symbol = simulator::exportedSymbol(name);
    if (!symbol)
        throw std::runtime_error("the library does not export " + name);
    return symbol->address;
}

bool isInLibrary(const void* code)
{
    // Images stay where they are until the process ends, and Foundation alone asks tens of thousands of times from a few places.
    static auto& known = *new std::unordered_map<const void*, bool>;
    const auto [entry, isNew] = known.try_emplace(code);
    if (isNew)
        entry->second = simulator::fileOf(code).filename() == "Solvane.dylib";
    return entry->second;
}

void freezeClockAtUniversalTime(const std::string& time)
{
    std::tm fields{};
    if (::strptime(time.c_str(), "%Y-%m-%dT%H:%M:%S", &fields) == nullptr)
        throw std::invalid_argument(time);
    simulator::surroundings().frozenClock = static_cast<double>(::timegm(&fields));
}
