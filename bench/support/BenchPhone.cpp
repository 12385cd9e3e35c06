#include "bench/support/BenchPhone.hpp"

#include <cstdlib>
#include <ctime>
#include <filesystem>

#include "simulator/foundation/phone_root.hpp"
#include "simulator/foundation/strings.hpp"
#include "simulator/foundation/surroundings.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/loader/injection.hpp"
#include "simulator/springboard/SpringBoard.hpp"

using namespace simulator;

BenchPhone::BenchPhone() : root_((std::filesystem::temp_directory_path() / "solvane-bench-XXXXXX").native())
{
    if (::mkdtemp(root_.data()) == nullptr)
        std::abort();
    std::filesystem::copy(PHONE_TREE, root_, std::filesystem::copy_options::recursive);
    setPhoneRoot(root_);
    openSystemLog();
    launchSpringBoard({});
    constexpr double morningInMarch = 1394008200;
    surroundings().frozenClock = morningInMarch;
    injectLibraries({});
    lockScreen();
}

BenchPhone::~BenchPhone()
{
    std::filesystem::remove_all(root_);
}

void notify(const std::string& bundleIdentifier, const std::string& title, const std::string& message)
{
    addListItem(bulletinItem(toNSString(bundleIdentifier), toNSString(title), toNSString(message)));
}

double processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    constexpr double nanosecondsPerSecond = 1e9;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / nanosecondsPerSecond;
}
