#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVPlatform/HTTPClient.h"
#include "ScanFixtures.h"
#include "Support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace scans {

inline constexpr const char* kSecretToken = "a token that nobody else may see";

/// What one scan handed back.
struct Scan {
    std::shared_ptr<QVBusinessCard> card;
    QVErrorArray errors;
    QVString rawResult;
};

/// One image, scanned by an operation with a request that lacks nothing.
class ServerExchange : public testing::Test {
  protected:
    std::shared_ptr<QVCardProcessingOperation> operationAt(const std::string& url) {
        return scans::operationFor(mRequest, url);
    }

    Scan scanAt(const std::string& url, QVString rawResult = std::nullopt) {
        Scan scan{.card = nullptr, .errors = nullptr, .rawResult = std::move(rawResult)};
        scan.card = operationAt(url)->performCardScanSynchronouslyFromImage(mImage, mRequest->authToken(), scan.errors,
                                                                            scan.rawResult);
        return scan;
    }
    Scan scan() { return scanAt(mServer.url()); }

    /// Error 2 with a transport error of the platform, and nothing else.
    static void expectConnectionFailed(const Scan& scan) {
        ASSERT_TRUE(scan.errors);
        ASSERT_THAT(scans::codesOf(scan.errors), testing::ElementsAre(2));
        const qv::Error underlying = scans::underlyingErrorOf(scan.errors->front());
        EXPECT_EQ(underlying.domain, qv::kURLErrorDomain);
        EXPECT_NE(underlying.code, 0);
        EXPECT_EQ(scan.card, nullptr);
        EXPECT_EQ(scan.rawResult, std::nullopt);
    }

    /// Error 3 with nothing attached, and nothing else.
    static void expectUnreadable(const Scan& scan) {
        ASSERT_TRUE(scan.errors);
        ASSERT_THAT(scans::codesOf(scan.errors), testing::ElementsAre(3));
        EXPECT_TRUE(scan.errors->front().userInfo.empty());
        EXPECT_EQ(scan.card, nullptr);
        EXPECT_EQ(scan.rawResult, std::nullopt);
    }

    testsupport::CapturedLog mLog;
    testsupport::ScriptedServer mServer;
    std::shared_ptr<qv::Image> mImage = scans::picture();
    std::shared_ptr<QVCardProcessingRequest> mRequest = scans::request("note", kSecretToken);
};

}  // namespace scans
