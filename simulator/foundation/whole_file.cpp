#include "simulator/foundation/whole_file.hpp"

#include <fstream>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace simulator {

void writeWholeFile(const std::filesystem::path& file, std::string_view bytes)
{
    std::filesystem::create_directories(file.parent_path());
    const std::filesystem::path temporary = file.native() + "." + std::to_string(getpid());
    {
        std::ofstream stream(temporary, std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!stream.flush())
            throw std::runtime_error("cannot write " + temporary.native());
    }
    std::filesystem::rename(temporary, file);
}

} // namespace simulator
