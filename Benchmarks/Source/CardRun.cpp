#include "Source/CardRun.h"

#include "QVCardScan/QVCardUtilities.h"
#include "QVPlatform/Log.h"
#include "Support/Duel.h"

#include <atomic>
#include <ctime>
#include <latch>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace benchmarksupport {

namespace {

double processorTimeOfThread() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Sums what preparation takes while it lives. The pipeline tells by its log when preparation begins and what comes
/// after it, on the thread that does it.
class PreparationClock {
  public:
    PreparationClock() {
        qv::Log::setSink([this](std::string_view message) {
            static thread_local double start = 0;
            if (message == "<INFO> Compressing card image") start = processorTimeOfThread();
            if (message.starts_with("<INFO> Sending card to ")) add(processorTimeOfThread() - start);
        });
    }
    ~PreparationClock() { qv::Log::setSink({}); }
    PreparationClock(const PreparationClock&) = delete;
    PreparationClock& operator=(const PreparationClock&) = delete;

    double sum() const { return static_cast<double>(mNanoseconds) / 1e6; }

  private:
    void add(double milliseconds) { mNanoseconds += static_cast<long>(milliseconds * 1e6); }
    std::atomic<long> mNanoseconds{0};
};

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

CardRun::Outcome CardRun::run(int count) {
    const PreparationClock preparation;
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
    return {end.wall - start.wall, end.processor - start.processor - preparation.sum()};
}

qv::Data CardRun::prepare() const {
    const auto scaled = imageByScalingProportionallyToSize(mPhotograph, {1024, 1024});
    return JPEGRepresentationUsingCompressionFactor(scaled, 0.7).value();
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
