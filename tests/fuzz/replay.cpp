#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sys/resource.h>
#include <vector>

/// Gives a target the inputs that are kept for it, where libFuzzer is not built in: `fuzz_TARGET FILE-OR-FOLDER...`.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* count, char*** arguments);

namespace {

void take(const std::filesystem::path& file)
{
    // The last one that is named is the one that brought the target down.
    std::cerr << file.native() << '\n';
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    constexpr long mostKilobytes = 1L << 20;
    if (used.ru_maxrss > mostKilobytes) {
        std::cerr << "it took more than a gigabyte\n";
        std::abort();
    }
}

/// Gives how many inputs there were.
std::size_t takeAll(const std::filesystem::path& place)
{
    if (!std::filesystem::is_directory(place)) {
        take(place);
        return 1;
    }
    std::size_t inputs = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(place)) {
        if (!entry.is_regular_file())
            continue;
        take(entry.path());
        ++inputs;
    }
    return inputs;
}

} // namespace

int main(int count, char** arguments)
{
    if (LLVMFuzzerInitialize != nullptr)
        LLVMFuzzerInitialize(&count, &arguments);
    std::size_t inputs = 0;
    for (int i = 1; i < count; ++i)
        inputs += takeAll(arguments[i]);
    std::cerr << inputs << " inputs\n";
    return inputs == 0 ? 1 : 0;
}
