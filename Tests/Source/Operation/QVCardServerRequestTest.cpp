#include "QVPlatform/HTTPClient.h"
#include "ServerExchangeFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::Pointee;
using testsupport::ScriptedRequest;

/// What the server gets.
using QVCardServerRequestTest = scans::ServerExchange;

TEST_F(QVCardServerRequestTest, IsExactlyThis) {
    mServer.respond(scans::answer({scans::kName}));
    scanAt(mServer.url("/recognise"));
    ASSERT_EQ(mServer.requests().size(), 1U);
    const ScriptedRequest received = mServer.requests()[0];
    EXPECT_EQ(received.method, "POST");
    EXPECT_EQ(received.target, "/recognise");
    EXPECT_THAT(received.headers, ElementsAre(Pair("Host", "127.0.0.1:" + std::to_string(mServer.port())),
                                              Pair("Accept", "*/*"), Pair("content-language", "en"),
                                              Pair("Content-Type", "image/jpeg"), Pair("auth", scans::kSecretToken),
                                              Pair("Content-Length", std::to_string(received.body.size()))));
}

TEST_F(QVCardServerRequestTest, CarriesThePreparedPictureByteForByte) {
    mServer.respond(scans::answer({scans::kName}));
    mImage = qv::Image::initWithData(testsupport::makePNG(testsupport::photograph(300, 100)));
    scan();
    const auto expected = operationAt(mServer.url())->compressedCardImageDataFromNSImage(mImage);
    ASSERT_TRUE(expected);
    ASSERT_EQ(mServer.requests().size(), 1U);
    const std::string body = mServer.requests()[0].body;
    EXPECT_TRUE(qv::Data(body.begin(), body.end()) == *expected);
    EXPECT_EQ(testsupport::factsOfJPEG({body.begin(), body.end()}).width, 1024);
}

TEST_F(QVCardServerRequestTest, CarriesAnyBytesAsTheyAre) {
    mServer.respond(scans::answer({scans::kName}));
    std::string bytes;
    for (int i = 0; i < 1024; ++i)
        bytes += static_cast<char>(i * 7);
    bytes += "\r\n--boundary\r\n";
    operationAt(mServer.url())
        ->sendCardSynchronouslyWithData(qv::Data(bytes.begin(), bytes.end()), scans::kSecretToken, nullptr);
    EXPECT_EQ(mServer.requests().at(0).body, bytes);
}

TEST_F(QVCardServerRequestTest, HasNoBodyWithoutAUsableImage) {
    mServer.respond(scans::answer({scans::kName}));
    for (const auto& image : {std::shared_ptr<qv::Image>(), qv::Image::initWithData({'n', 'o'})}) {
        mImage = image;
        const scans::Scan made = scan();
        const ScriptedRequest received = mServer.requests().back();
        EXPECT_EQ(received.method, "POST");
        EXPECT_EQ(received.body, "");
        EXPECT_EQ(received.header("Content-Length"), "0");
        EXPECT_EQ(received.header("Content-Type"), "image/jpeg");
        EXPECT_EQ(received.header("auth"), scans::kSecretToken);
        EXPECT_THAT(made.errors, Pointee(IsEmpty()));
        ASSERT_TRUE(made.card);
        EXPECT_EQ(made.card->fullName(), "Jordan Example");
    }
    EXPECT_EQ(mServer.requests().size(), 2U);
}

TEST_F(QVCardServerRequestTest, GoesToTheAddressUnchanged) {
    mServer.respond(scans::answer({scans::kName}));
    for (const char* target : {"/", "/a/b;c=1?x=1&y=%20z%2F+", "/a/../b/./c", "/a//b/?", "/%C3%A4?q"}) {
        scanAt(mServer.url(target));
        EXPECT_EQ(mServer.requests().back().target, target);
    }
}

TEST_F(QVCardServerRequestTest, AsksForEnglishWithoutACardsRequest) {
    mServer.respond(scans::answer({scans::kName}));
    scans::operationFor(nullptr, mServer.url())->sendCardSynchronouslyWithData(qv::Data{'a'}, "token", nullptr);
    EXPECT_EQ(mServer.requests().at(0).header("content-language"), "en");
}

struct LanguageCase {
    const char* name;
    QVString language;
    std::string expected;
};

class TheLanguage : public QVCardServerRequestTest, public testing::WithParamInterface<LanguageCase> {};

TEST_P(TheLanguage, IsSent) {
    mServer.respond(scans::answer({scans::kName}));
    mRequest->setRecoLanguage(GetParam().language);
    scan();
    EXPECT_EQ(mServer.requests().at(0).header("content-language"), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Languages, TheLanguage,
                         testing::Values(LanguageCase{"Absent", std::nullopt, "en"}, LanguageCase{"German", "de", "de"},
                                         LanguageCase{"Several", "de, fr;q=0.5", "de, fr;q=0.5"},
                                         LanguageCase{"Empty", "", ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVCardServerRequestTest, CarriesTheTokenAsGiven) {
    mServer.respond(scans::answer({scans::kName}));
    for (const char* token : {"S=s1:U=1:E=2%3A", "a:b;c=\"d\"", "schl\xC3\xBCssel", ""}) {
        mRequest->setAuthToken(token);
        scan();
        EXPECT_EQ(mServer.requests().back().header("auth"), token);
    }
}

TEST_F(QVCardServerRequestTest, HasNoTokenHeaderWhereNoneIsGiven) {
    mServer.respond(scans::answer({scans::kName}));
    operationAt(mServer.url())->sendCardSynchronouslyWithData(std::nullopt, std::nullopt, nullptr);
    EXPECT_EQ(mServer.requests().at(0).header("auth"), std::nullopt);
}

struct HeaderCase {
    const char* name;
    std::string value;
};

class ALineEndInAHeader : public QVCardServerRequestTest, public testing::WithParamInterface<HeaderCase> {};

TEST_P(ALineEndInAHeader, InTheTokenNeverReachesTheWire) {
    mRequest->setAuthToken(GetParam().value);
    expectConnectionFailed(scan());
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_P(ALineEndInAHeader, InTheLanguageNeverReachesTheWire) {
    mRequest->setRecoLanguage(GetParam().value);
    expectConnectionFailed(scan());
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Values, ALineEndInAHeader,
                         testing::Values(HeaderCase{"Both", "a\r\nX-Injected: 1"}, HeaderCase{"LineFeed", "a\nb"},
                                         HeaderCase{"Return", "a\rb"}, HeaderCase{"AtTheEnd", "a\n"},
                                         HeaderCase{"Alone", "\r\n"}, HeaderCase{"AtTheStart", "\r\n\r\nbody"},
                                         HeaderCase{"Null", std::string("a\0b", 3)}),
                         [](const auto& row) { return std::string(row.param.name); });

struct AddressCase {
    const char* name;
    std::string prefix;
};

class AnAddressThatIsNotHTTP : public QVCardServerRequestTest, public testing::WithParamInterface<AddressCase> {};

TEST_P(AnAddressThatIsNotHTTP, FailsBeforeAnythingIsSent) {
    const std::string address = GetParam().prefix + "127.0.0.1:" + std::to_string(mServer.port()) + "/";
    ASSERT_TRUE(qv::URL::URLWithString(address));
    const scans::Scan made = scanAt(address);
    expectConnectionFailed(made);
    EXPECT_EQ(scans::underlyingErrorOf(made.errors->at(0)).code, static_cast<long>(qv::HTTPErrorCode::UnsupportedURL));
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Addresses, AnAddressThatIsNotHTTP,
                         testing::Values(AddressCase{"Ftp", "ftp://"}, AddressCase{"File", "file://"},
                                         AddressCase{"Gopher", "gopher://"}, AddressCase{"Relative", "/"},
                                         AddressCase{"RelativeToTheScheme", "//"},
                                         AddressCase{"WithoutAHost", "http:"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
