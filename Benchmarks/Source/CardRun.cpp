#include "Source/CardRun.h"

#include "QVCardScan/QVCardProcessingOperation.h"

#include <atomic>
#include <latch>
#include <stdexcept>
#include <vector>

namespace benchmarksupport {

namespace {

std::shared_ptr<QVCardProcessingRequest> requestFor(const std::shared_ptr<qv::Image>& photograph, int number) {
    auto request = std::make_shared<QVCardProcessingRequest>();
    request->setNoteUUID("note-" + std::to_string(number));
    request->setAuthToken("token");
    request->setCardImages(std::make_shared<std::vector<std::shared_ptr<qv::Image>>>(1, photograph));
    return request;
}

}  // namespace

CardRun::CardRun(const std::string& serverURL, const qv::Data& photograph)
    : mPhotograph(qv::Image::initWithData(photograph)),
      mPrepared(prepare()),
      mManager(std::make_shared<QVBizCardManager>()) {
    mManager->setupOperationQueue();
    mManager->setServerURL(serverURL);
}

CardRun::~CardRun() {
    mManager->cleanUpOperationQueue();
}

Times CardRun::run(int count) {
    std::latch done(count);
    std::atomic<int> good{0};
    const Times start = timesSoFar();
    for (int index = 0; index < count; ++index) {
        mManager->addRequest(requestFor(mPhotograph, ++mNumber), [&](const auto& response) {
            if (response && response->qvmlContent() && response->errors() && response->errors()->empty()) ++good;
            done.count_down();
        });
    }
    done.wait();
    const Times end = timesSoFar();
    if (good != count) throw std::runtime_error("a card failed");
    return {end.processor - start.processor, end.wall - start.wall};
}

qv::Data CardRun::prepare() const {
    return QVCardProcessingOperation::initWithRequest(nullptr, std::nullopt)
        ->compressedCardImageDataFromNSImage(mPhotograph)
        .value();
}

double CardRun::preparationOnWall() const {
    std::vector<double> times;
    for (int round = 0; round < 15; ++round) {
        const double start = timesSoFar().wall;
        keep(prepare());
        times.push_back(timesSoFar().wall - start);
    }
    return median(times);
}

}  // namespace benchmarksupport
