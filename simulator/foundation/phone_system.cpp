#include "simulator/foundation/phone_system.hpp"

#include <algorithm>

namespace simulator {

namespace {

struct Version {
    System system;
    std::string_view text;
    double coreFoundation;
};

constexpr Version versions[] = {
    {System::v7_0, "7.0", 847.20},  {System::v7_0_4, "7.0.4", 847.21}, {System::v7_1, "7.1", 847.24},
    {System::v8_1, "8.1", 1141.14}, {System::v8_4, "8.4", 1145.15},
};

System& chosen()
{
    static System system = System::v8_1;
    return system;
}

} // namespace

System phoneSystem()
{
    return chosen();
}

void choosePhoneSystem(System system)
{
    chosen() = system;
}

std::string_view versionOf(System system)
{
    return std::ranges::find(versions, system, &Version::system)->text;
}

double coreFoundationVersionOf(System system)
{
    return std::ranges::find(versions, system, &Version::system)->coreFoundation;
}

std::optional<System> systemOfVersion(std::string_view version)
{
    const auto found = std::ranges::find(versions, version, &Version::text);
    return found == std::end(versions) ? std::nullopt : std::optional(found->system);
}

std::string systemVersions()
{
    std::string all;
    for (const Version& version : versions)
        all += (all.empty() ? "" : "|") + std::string(version.text);
    return all;
}

} // namespace simulator
