#include "simulator/foundation/phone_root.hpp"

namespace simulator {

namespace {

std::filesystem::path& root()
{
    static auto& folder = *new std::filesystem::path;
    return folder;
}

} // namespace

void setPhoneRoot(const std::filesystem::path& folder)
{
    root() = std::filesystem::canonical(folder);
}

const std::filesystem::path& phoneRoot()
{
    return root();
}

std::filesystem::path onThisMachine(const std::filesystem::path& phonePath)
{
    return phonePath.is_absolute() ? root() / phonePath.relative_path() : phonePath;
}

} // namespace simulator
