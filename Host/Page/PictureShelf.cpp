#include "Page/PictureShelf.h"

#include "QVCardScan/QVCardUtilities.h"
#include "QVPlatform/Image.h"
#include "Support/FileReading.h"
#include "Support/FileWriting.h"
#include "Support/Random.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <system_error>
#include <utility>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

constexpr double kThumbnailSide = 240;
constexpr double kViewQuality = 0.8;
/// More than a camera's JPEG takes for as many pixels as a view and a thumbnail have.
constexpr std::size_t kViewRoom = std::size_t{1} << 20;

std::string_view textOf(const qv::Data& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

constexpr std::string_view kPrefix = "qvcardscan-page-";
/// A folder is locked right after it was made.
constexpr std::time_t kNew = 60;

/// The folder of a program that is there no longer: its lock went with it.
bool isLeftOver(const FileDescriptor& folder) {
    struct stat facts {};
    if (!folder.isOpen() || ::fstat(folder.number(), &facts) != 0 || facts.st_uid != ::geteuid()) return false;
    return std::time(nullptr) - facts.st_mtime > kNew && ::flock(folder.number(), LOCK_EX | LOCK_NB) == 0;
}

FileDescriptor openFolder(const fs::path& folder) {
    return FileDescriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

void removeLeftOvers(const fs::path& place) {
    std::error_code error;
    fs::directory_iterator entry(place, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (!entry->path().filename().string().starts_with(kPrefix)) continue;
        std::error_code ignored;
        if (isLeftOver(openFolder(entry->path()))) fs::remove_all(entry->path(), ignored);
    }
}

/// What is gone with the program need not outlive a power cut, which would cost time.
bool write(const fs::path& file, std::string_view bytes) {
    FileDescriptor target(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    return target.isOpen() && writeAll(target.number(), bytes) == 0 && target.close();
}

Failure noRoom() {
    return {ExitStatus::NotWritten,
            "There is no room for more pictures. Save or download what is finished, and remove some cards."};
}

}  // namespace

Result<std::unique_ptr<PictureShelf>> PictureShelf::make(std::uint64_t room) {
    std::error_code error;
    const fs::path place = fs::temp_directory_path(error);
    std::string folder = (place / (std::string(kPrefix) + "XXXXXX")).string();
    // Made so that only this user can open it.
    if (!error && ::mkdtemp(folder.data()) == nullptr) error = {errno, std::system_category()};
    if (!error) {
        removeLeftOvers(place);
        FileDescriptor lock = openFolder(folder);
        (void)::flock(lock.number(), LOCK_EX | LOCK_NB);
        return std::unique_ptr<PictureShelf>(new PictureShelf(folder, std::move(lock), room));
    }
    return Failure{ExitStatus::NotWritten, "No folder could be made for the pictures: " + error.message() +
                                               ". Make room, or name another place in the variable TMPDIR."};
}

PictureShelf::PictureShelf(fs::path folder, FileDescriptor lock, std::uint64_t room)
    : mFolder(std::move(folder)), mLock(std::move(lock)), mRoom(room) {
}

PictureShelf::~PictureShelf() {
    clear();
}

void PictureShelf::clear() {
    std::error_code ignored;
    fs::remove_all(mFolder, ignored);
}

Result<ShelvedPicture> PictureShelf::put(const std::string& name, qv::Data bytes) {
    const Result<CardPicture> drawn = CardPicture::ofBytes(std::move(bytes), name);
    if (!drawn) return drawn.failure();
    ShelvedPicture picture{Random::token().substr(0, 16), name, drawn->hash, {}, 0};
    picture.bytes = drawn->image->encodedData().size() + kViewRoom;
    if (!reserve(picture.bytes)) return noRoom();
    Result<ShelvedPicture> stored = store(picture, *drawn);
    if (stored) {
        const std::lock_guard lock(mMutex);
        mPictures.emplace(picture.identifier, std::make_shared<ShelvedPicture>(*stored));
    } else {
        release(picture.bytes);
    }
    return stored;
}

Result<ShelvedPicture> PictureShelf::store(ShelvedPicture picture, const CardPicture& drawn) {
    const auto view = imageByScalingProportionallyToSize(drawn.image, {QVCardMaxRecoWidth, QVCardMaxRecoHeight});
    const auto viewBytes = JPEGRepresentationUsingCompressionFactor(view, kViewQuality);
    if (!viewBytes) return noRoom();
    const auto shown = qv::Image::initWithData(*viewBytes);
    picture.size = shown->size();
    const auto small = imageByScalingProportionallyToSize(shown, {kThumbnailSide, kThumbnailSide});
    const auto smallBytes = JPEGRepresentationUsingCompressionFactor(small, kViewQuality);
    const std::pair<Form, std::string_view> forms[] = {
        {Form::Original, textOf(drawn.image->encodedData())},
        {Form::View, textOf(*viewBytes)},
        {Form::Thumbnail, smallBytes ? textOf(*smallBytes) : std::string_view()},
    };
    for (const auto& [form, bytes] : forms) {
        if (!write(file(picture.identifier, form), bytes)) return noRoom();
    }
    return picture;
}

std::shared_ptr<const ShelvedPicture> PictureShelf::find(const std::string& identifier) const {
    const std::lock_guard lock(mMutex);
    const auto found = mPictures.find(identifier);
    return found != mPictures.end() ? found->second : nullptr;
}

qv::Data PictureShelf::bytes(const std::string& identifier, Form form) const {
    if (!find(identifier)) return {};
    Result<qv::Data> read = readFile(file(identifier, form), kMaximumPicture);
    return read ? std::move(*read) : qv::Data();
}

Result<CardPicture> PictureShelf::picture(const ShelvedPicture& picture) const {
    Result<qv::Data> read = readFile(file(picture.identifier, Form::Original), kMaximumPicture);
    if (!read) return read.failure();
    // Whether it can be drawn was found out when it came.
    return CardPicture{qv::Image::initWithData(std::move(*read)), picture.hash};
}

void PictureShelf::remove(const std::string& identifier) {
    const auto picture = find(identifier);
    if (!picture) return;
    {
        const std::lock_guard lock(mMutex);
        mPictures.erase(identifier);
    }
    std::error_code ignored;
    for (const Form form : {Form::Original, Form::View, Form::Thumbnail})
        fs::remove(file(identifier, form), ignored);
    release(picture->bytes);
}

fs::path PictureShelf::workFolder() const {
    return mFolder / ("work-" + Random::token().substr(0, 16));
}

/// Identifiers are this class's own, so that no name from outside becomes a path.
fs::path PictureShelf::file(const std::string& identifier, Form form) const {
    constexpr const char* kEndings[] = {"", "-view", "-small"};
    return mFolder / (identifier + kEndings[static_cast<int>(form)]);
}

bool PictureShelf::reserve(std::size_t bytes) {
    const std::lock_guard lock(mMutex);
    if (mUsed + bytes > mRoom) return false;
    mUsed += bytes;
    return true;
}

void PictureShelf::release(std::size_t bytes) {
    const std::lock_guard lock(mMutex);
    mUsed -= bytes;
}

}  // namespace qvhost
