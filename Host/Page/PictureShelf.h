#pragma once

#include "QVPlatform/Data.h"
#include "QVPlatform/Geometry.h"
#include "Scan/CardPicture.h"
#include "Support/FileDescriptor.h"
#include "Support/Result.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace qvhost {

/// A picture that was handed to the page.
struct ShelvedPicture {
    std::string identifier;
    /// What its file is called where it came from.
    std::string name;
    /// The MD5 of its bytes.
    std::string hash;
    /// The size of the upright view of it, which is what the recognition server is sent.
    qv::Size size;
    std::size_t bytes = 0;
};

/// Keeps the pictures that were handed to the page in a folder that only this user can open, and removes them with
/// itself: memory holds none of them. What a program left that could not clean up after itself goes with the next one.
/// Any thread may call.
class PictureShelf {
  public:
    enum class Form { Original, View, Thumbnail };

    static constexpr std::size_t kMaximumPicture = std::size_t{64} << 20;

    /// `room`: the bytes of all pictures together.
    static Result<std::unique_ptr<PictureShelf>> make(std::uint64_t room = std::uint64_t{2} << 30);
    ~PictureShelf();
    PictureShelf(const PictureShelf&) = delete;
    PictureShelf& operator=(const PictureShelf&) = delete;

    /// Keeps a picture, and what a page shows of it. Fails when it is none that can be drawn (`WrongCall`), or there is
    /// no room for it (`NotWritten`).
    Result<ShelvedPicture> put(const std::string& name, qv::Data bytes);
    /// Null when there is none.
    std::shared_ptr<const ShelvedPicture> find(const std::string& identifier) const;
    /// Empty when there is none.
    qv::Data bytes(const std::string& identifier, Form form) const;
    /// The picture as it is read.
    Result<CardPicture> picture(const ShelvedPicture& picture) const;
    void remove(const std::string& identifier);

    /// Removes everything at once, whoever still uses it.
    void clear();

    /// A folder beside the pictures for what is put together on demand; the caller's to fill and to remove.
    std::filesystem::path workFolder() const;

  private:
    PictureShelf(std::filesystem::path folder, FileDescriptor lock, std::uint64_t room);
    std::filesystem::path file(const std::string& identifier, Form form) const;
    Result<ShelvedPicture> store(ShelvedPicture picture, const CardPicture& drawn);
    bool reserve(std::size_t bytes);
    void release(std::size_t bytes);

    const std::filesystem::path mFolder;
    const FileDescriptor mLock;
    const std::uint64_t mRoom;
    mutable std::mutex mMutex;
    std::uint64_t mUsed = 0;
    std::map<std::string, std::shared_ptr<const ShelvedPicture>> mPictures;
};

}  // namespace qvhost
