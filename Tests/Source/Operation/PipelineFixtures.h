#pragma once

#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVPlatform/Bundle.h"
#include "ScanFixtures.h"
#include "Support/CapturedLog.h"

#include <gtest/gtest.h>

#include <functional>

namespace scans {

/// The answers that are no card: nothing readable, and nothing at all.
inline const std::string kNoCard = testsupport::ScriptedServer::answer(200, "no card");
inline const std::string kUnreadable = testsupport::ScriptedServer::answer(200, "");

/// What the host knows.
class DataSource : public QVContactNoteDataSource {
  public:
    using Match = std::function<std::shared_ptr<QVVeltoContact>()>;
    explicit DataSource(Match match, bool isImplemented = true)
        : mMatch(std::move(match)), mIsImplemented(isImplemented) {}

    bool implementsContactMatchingFullName() const override { return mIsImplemented; }
    std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString& fullName, const QVString& firstName,
                                                            const QVString& lastName, const QVString& email,
                                                            const QVString& phone) override {
        calls.push_back({fullName, firstName, lastName, email, phone});
        return mMatch();
    }

    std::vector<std::vector<QVString>> calls;

  private:
    Match mMatch;
    bool mIsImplemented;
};

inline std::shared_ptr<DataSource> dataSourceWith(DataSource::Match match) {
    return std::make_shared<DataSource>(std::move(match));
}

/// A request with a front and a back, whose pictures differ in shape, run from end to end.
class Pipeline : public testing::Test {
  protected:
    Pipeline() {
        qv::Bundle::setLocalizer([](std::string_view) { return std::nullopt; });
        mRequest->setCardImages(pictures({mFront, mBack}));
        mRequest->setImageHashes(mHashes);
    }
    ~Pipeline() override { qv::Bundle::setLocalizer({}); }

    std::shared_ptr<QVCardProcessingResponse> process() {
        const auto operation = operationFor(mRequest, mServer.url());
        operation->setContactNoteDataSource(mDataSource);
        operation->main();
        return operation->response();
    }

    /// With the server's answers, in the order it is asked; it must be asked for all of them and for no more.
    std::shared_ptr<QVCardProcessingResponse> run(const std::vector<std::string>& answers) {
        for (const std::string& answer : answers)
            mServer.respond(answer);
        const auto response = process();
        EXPECT_EQ(mServer.requests().size(), answers.size());
        return response;
    }

    /// "front", "back" or "other", for each picture that the server got.
    std::vector<std::string> sides() const {
        std::vector<std::string> sides;
        for (const auto& request : mServer.requests()) {
            const auto facts = testsupport::factsOfJPEG({request.body.begin(), request.body.end()});
            sides.push_back(facts.width == 1024 && facts.height == 32   ? "front"
                            : facts.width == 32 && facts.height == 1024 ? "back"
                                                                        : "other");
        }
        return sides;
    }

    /// What was logged, without the parser's own trace.
    std::vector<std::string> log() const {
        std::vector<std::string> lines;
        for (const std::string& line : mLog.messages()) {
            if (line.find("Parser ") == std::string::npos) lines.push_back(line);
        }
        return lines;
    }

    testsupport::CapturedLog mLog;
    testsupport::ScriptedServer mServer;
    const std::shared_ptr<qv::Image> mFront = picture(64, 2);
    const std::shared_ptr<qv::Image> mBack = picture(2, 64);
    const QVStringArray mHashes = strings({"front-hash", "back-hash"});
    std::shared_ptr<QVCardProcessingRequest> mRequest = request();
    std::shared_ptr<DataSource> mDataSource;
};

}  // namespace scans
