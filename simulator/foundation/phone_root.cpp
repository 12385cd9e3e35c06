#include "simulator/foundation/phone_root.hpp"

#include <algorithm>

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

std::filesystem::path onThePhone(const std::filesystem::path& file)
{
    const auto [endOfRoot, rest] = std::ranges::mismatch(root(), file);
    if (root().empty() || endOfRoot != root().end())
        return file;
    std::filesystem::path phonePath = "/";
    for (auto name = rest; name != file.end(); ++name)
        phonePath /= *name;
    return phonePath;
}

} // namespace simulator
