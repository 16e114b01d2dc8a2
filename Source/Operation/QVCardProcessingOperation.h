#pragma once

#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVPlatform/Atomic.h"
#include "QVPlatform/Data.h"
#include "QVPlatform/Error.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Operation.h"
#include "QVPlatform/URL.h"

#include <memory>
#include <optional>

/// One request's way through the framework: the unit of work on the manager's queue. Run once, on a queue thread, which
/// it blocks for the server's round trips; it owns its response until the manager hands that to the host.
class QV_EXPORT QVCardProcessingOperation : public qv::Operation {
  public:
    /// `initWithRequest:serverURL:` The URL may be absent: the operation then answers with error 1.
    static std::shared_ptr<QVCardProcessingOperation> initWithRequest(std::shared_ptr<QVCardProcessingRequest> request,
                                                                      std::optional<qv::URL> serverURL);

    /// What is to be read; shared with the host.
    std::shared_ptr<QVCardProcessingRequest> request() const { return mRequest.load(); }
    void setRequest(std::shared_ptr<QVCardProcessingRequest> request) { mRequest.store(std::move(request)); }

    /// Null until `main` has made one, and for ever when it was cancelled before.
    std::shared_ptr<QVCardProcessingResponse> response() const { return mResponse.load(); }
    /// Where the pictures go; absent when there is no server.
    const std::optional<qv::URL>& serverURL() const { return mServerURL; }

    /// Held without ownership.
    std::shared_ptr<QVContactNoteDataSource> contactNoteDataSource() const {
        return mContactNoteDataSource.load().lock();
    }
    void setContactNoteDataSource(const std::shared_ptr<QVContactNoteDataSource>& contactNoteDataSource) {
        mContactNoteDataSource.store(contactNoteDataSource);
    }

    /// The request's `noteUUID`.
    QVString operationID() const;

    void main() override;

    /// `processNSImageForOCR:` The hook for pictures that are to be prepared for recognition; gives back the very
    /// image.
    std::shared_ptr<qv::Image> processNSImageForOCR(const std::shared_ptr<qv::Image>& image) const;

    /// `compressedCardImageDataFromNSImage:` The JPEG bytes to post; absent when there is no usable image.
    std::optional<qv::Data> compressedCardImageDataFromNSImage(const std::shared_ptr<qv::Image>& image) const;

    /// `sendCardSynchronouslyWithData:auth:error:` One round trip to the server; the answer as text, or nothing.
    QVString sendCardSynchronouslyWithData(const std::optional<qv::Data>& data, const QVString& auth,
                                           std::optional<qv::Error>* error) const;

    /// `performCardScanSynchronouslyFromImage:withAuth:errors:rawResult:` Compresses, sends and parses one image.
    /// `errors` always receives a list; `rawResult` is left as it was when there is no answer text.
    std::shared_ptr<QVBusinessCard> performCardScanSynchronouslyFromImage(const std::shared_ptr<qv::Image>& image,
                                                                          const QVString& withAuth,
                                                                          QVErrorArray& errors,
                                                                          QVString& rawResult) const;

  protected:
    /// For `initWithRequest` and derived classes.
    QVCardProcessingOperation(std::shared_ptr<QVCardProcessingRequest> request, std::optional<qv::URL> serverURL);

  private:
    /// What `sendCardSynchronouslyWithData` does, with bytes that nobody needs any more.
    QVString send(std::optional<qv::Data> data, const QVString& auth, std::optional<qv::Error>* error) const;

    qv::Atomic<std::shared_ptr<QVCardProcessingRequest>> mRequest;
    qv::Atomic<std::shared_ptr<QVCardProcessingResponse>> mResponse;
    const std::optional<qv::URL> mServerURL;
    qv::Atomic<std::weak_ptr<QVContactNoteDataSource>> mContactNoteDataSource;
};
