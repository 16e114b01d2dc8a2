#pragma once

#include "QVCardScan/QVCardProcessingResponse.h"
#include "RequestObject.h"
#include "ResponseObject.h"
#include "UserData.h"
#include "qvcardscan.h"

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace qvc {

/// What happens when a card is done. Goes, with the host's user data, as soon as nobody can be told any more.
class Completion : public std::enable_shared_from_this<Completion> {
  public:
    Completion(std::string noteUUID, qv_completion function, SharedUserData userData, std::vector<CardPicture> pictures,
               bool comesOnMainThread);
    ~Completion();
    Completion(const Completion&) = delete;
    Completion& operator=(const Completion&) = delete;

    /// Tells the host, unless it has cancelled meanwhile. Any thread, once.
    void deliver(const std::shared_ptr<QVCardProcessingResponse>& response) const;

    /// Those of that note that are not called yet never are: also a card that is done and waits for the main thread.
    static void cancel(const std::string& noteUUID);

  private:
    void call(const std::shared_ptr<const ResponseObject>& object) const;

    const std::string mNoteUUID;
    const qv_completion mFunction;
    const SharedUserData mUserData;
    const std::vector<CardPicture> mPictures;
    const bool mComesOnMainThread;
    std::atomic<bool> mIsCancelled = false;
};

}  // namespace qvc
