#include "simulator/graphics/pictures.hpp"

#include <algorithm>
#include <ctime>
#include <list>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "simulator/files/whole_file.hpp"

namespace simulator {

namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t nanoseconds(const timespec& time)
{
    return std::int64_t{time.tv_sec} * nanosecondsPerSecond + time.tv_nsec;
}

/// Tells a file from any other, and from what it was before.
struct FileIdentity {
    std::filesystem::path path;
    dev_t device;
    ino_t number;
    off_t size;
    std::int64_t written;
    std::int64_t changed;
    bool operator==(const FileIdentity&) const = default;
};

std::optional<FileIdentity> identityOf(const std::filesystem::path& file)
{
    struct stat status{};
    if (::stat(file.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity{
        file, status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

/// Whether another change to the file would change its identity, too: the clock of a file system takes long steps.
bool isSettled(const FileIdentity& identity)
{
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    constexpr std::int64_t longestStep = nanosecondsPerSecond / 20;
    return nanoseconds(now) - identity.changed > longestStep;
}

struct KeptPicture {
    FileIdentity file;
    double scale;
    std::shared_ptr<Bitmap> picture;
    std::vector<std::pair<Fitting, std::shared_ptr<Bitmap>>> fitted;
    /// In bytes, of all their pixels when they have been made.
    double size;
};

double sizeOf(const Bitmap& bitmap)
{
    constexpr double withoutPixels = 1024;
    constexpr double bytesPerPixel = 4;
    const double pixels = double{bitmap.size().width} * bitmap.size().height * bitmap.scale() * bitmap.scale();
    return withoutPixels + pixels * bytesPerPixel;
}

/// Those that have been asked for last.
class KeptPictures {
public:
    std::shared_ptr<Bitmap> inFile(const FileIdentity& file, double scale)
    {
        const std::scoped_lock lock(mutex_);
        return moveToFront([&](const KeptPicture& kept) { return kept.scale == scale && kept.file == file; })
                   ? pictures_.front().picture
                   : nullptr;
    }

    void keep(FileIdentity file, double scale, const std::shared_ptr<Bitmap>& picture)
    {
        const std::scoped_lock lock(mutex_);
        std::erase_if(pictures_, [&](const KeptPicture& kept) { return kept.scale == scale && kept.file.path == file.path; });
        const auto bytes = static_cast<double>(file.size);
        pictures_.push_front({std::move(file), scale, picture, {}, sizeOf(*picture) + bytes});
        dropTheOldest();
    }

    /// Made by the function when there is none; it is kept with the picture that it is made of.
    std::shared_ptr<Bitmap> fitted(const std::shared_ptr<Bitmap>& picture, const Fitting& fitting, const auto& make)
    {
        const std::scoped_lock lock(mutex_);
        if (!moveToFront([&](const KeptPicture& kept) { return kept.picture == picture; }))
            return make();
        KeptPicture& kept = pictures_.front();
        const auto found = std::ranges::find(kept.fitted, fitting, [](const auto& pair) { return pair.first; });
        if (found != kept.fitted.end())
            return found->second;
        std::shared_ptr<Bitmap> made = make();
        if (made == nullptr)
            return nullptr;
        kept.fitted.emplace_back(fitting, made);
        kept.size += sizeOf(*made);
        dropTheOldest();
        return made;
    }

private:
    bool moveToFront(const auto& isWanted)
    {
        const auto found = std::ranges::find_if(pictures_, isWanted);
        if (found == pictures_.end())
            return false;
        pictures_.splice(pictures_.begin(), pictures_, found);
        return true;
    }

    void dropTheOldest()
    {
        constexpr std::size_t most = 64;
        constexpr double largestSize = 64 << 20;
        double size = 0;
        for (const KeptPicture& kept : pictures_)
            size += kept.size;
        for (; !pictures_.empty() && (pictures_.size() > most || size > largestSize); pictures_.pop_back())
            size -= pictures_.back().size;
    }

    std::mutex mutex_;
    std::list<KeptPicture> pictures_;
};

KeptPictures& keptPictures()
{
    static auto& kept = *new KeptPictures;
    return kept;
}

} // namespace

std::shared_ptr<Bitmap> pictureInFile(const std::filesystem::path& file, double scale)
{
    KeptPictures& kept = keptPictures();
    auto identity = identityOf(file);
    if (!identity)
        return nullptr;
    if (auto picture = kept.inFile(*identity, scale))
        return picture;
    const bool settled = isSettled(*identity);
    auto bytes = readWholeFile(file, largestPictureFile);
    if (!bytes)
        return nullptr;
    auto picture = Bitmap::fromPNG(std::move(*bytes), scale);
    if (picture != nullptr && settled)
        kept.keep(std::move(*identity), scale, picture);
    return picture;
}

std::shared_ptr<Bitmap> fitted(const std::shared_ptr<Bitmap>& picture, const Fitting& fitting)
{
    if (picture == nullptr)
        return nullptr;
    return keptPictures().fitted(picture, fitting, [&] {
        return Bitmap::drawnLater(fitting.size, fitting.scale, fitting.opaque,
                                  [picture, rect = fitting.rect](cairo_t* cairo) { picture->draw(cairo, rect); });
    });
}

} // namespace simulator
