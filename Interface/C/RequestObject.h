#pragma once

#include "Arguments.h"
#include "QVCardScan/QVCardProcessingRequest.h"
#include "UserData.h"
#include "qvcardscan.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace qvc {

/// A picture of the card and the name by which a note refers to it.
struct CardPicture {
    std::shared_ptr<qv::Image> image;
    std::string hash;
};

/// A request as the host fills it. Any thread; what runs is a copy.
class RequestObject {
  public:
    explicit RequestObject(std::string noteUUID) : mNoteUUID(std::move(noteUUID)) {}

    /// `hash` null: the MD5 of the image's bytes.
    Outcome addPicture(const std::shared_ptr<qv::Image>& image, const char* hash);
    Outcome setToken(const char* token);
    Outcome setLanguage(const char* language);
    void setSkipsNote(bool skipsNote);
    void setCompletesOnMainThread(bool completesOnMainThread);

    Outcome run(qv_completion completion, const SharedUserData& userData) const;

  private:
    Outcome objectionToRunning() const;
    std::shared_ptr<QVCardProcessingRequest> makeRequest() const;

    mutable std::mutex mMutex;
    const std::string mNoteUUID;
    std::vector<CardPicture> mPictures;
    std::optional<std::string> mToken;
    std::optional<std::string> mLanguage;
    bool mSkipsNote = false;
    bool mCompletesOnMainThread = false;
};

}  // namespace qvc
