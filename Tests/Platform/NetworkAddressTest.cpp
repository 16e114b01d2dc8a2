#include "QVPlatform/NetworkAddress.h"
#include "Support/HTTPRequests.h"
#include "Support/ScriptedServer.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

using namespace std::string_literals;
using namespace testsupport;

namespace {

struct AddressRow {
    const char* name;
    std::string_view address;
    bool isPublic;
};

void PrintTo(const AddressRow& row, std::ostream* stream) {
    *stream << row.address;
}

class NetworkAddress : public testing::TestWithParam<AddressRow> {};

TEST_P(NetworkAddress, IsPublicOrNot) {
    EXPECT_EQ(qv::isPublicAddress(GetParam().address), GetParam().isPublic);
}

constexpr AddressRow kRows[] = {
    {"Somewhere", "93.184.216.34", true},
    {"BeforeTen", "9.255.255.255", true},
    {"Ten", "10.0.0.0", false},
    {"TenEnd", "10.255.255.255", false},
    {"AfterTen", "11.0.0.0", true},
    {"ThisNetwork", "0.0.0.0", false},
    {"BeforeCarrier", "100.63.255.255", true},
    {"Carrier", "100.64.0.0", false},
    {"CarrierEnd", "100.127.255.255", false},
    {"AfterCarrier", "100.128.0.0", true},
    {"Loopback", "127.0.0.1", false},
    {"LoopbackEnd", "127.255.255.255", false},
    {"LinkLocal", "169.254.169.254", false},
    {"AfterLinkLocal", "169.255.0.0", true},
    {"Before172", "172.15.255.255", true},
    {"Private172", "172.16.0.0", false},
    {"Private172End", "172.31.255.255", false},
    {"After172", "172.32.0.0", true},
    {"Private192", "192.168.255.1", false},
    {"After192", "192.169.0.0", true},
    {"Benchmark", "198.19.0.1", false},
    {"Documentation", "203.0.113.9", false},
    {"Multicast", "224.0.0.1", false},
    {"Reserved", "240.0.0.1", false},
    {"Broadcast", "255.255.255.255", false},
    {"Global6", "2606:2800:220:1:248:1893:25c8:1946", true},
    {"Global6End", "3ffe::1", true},
    {"Unspecified6", "::", false},
    {"Loopback6", "::1", false},
    {"LinkLocal6", "fe80::1", false},
    {"SiteLocal6", "fec0::1", false},
    {"UniqueLocal6", "fd12:3456::1", false},
    {"Multicast6", "ff02::1", false},
    {"Documentation6", "2001:db8::1", false},
    {"Teredo6", "2001::1", false},
    {"MappedLoopback", "::ffff:127.0.0.1", false},
    {"MappedPublic", "::ffff:93.184.216.34", true},
    {"TranslatedPrivate", "64:ff9b::10.0.0.1", false},
    {"TranslatedPublic", "64:ff9b::5db8:d822", true},
    {"SixToFourPrivate", "2002:c0a8:0101::1", false},
    {"SixToFourPublic", "2002:5db8:d822::1", true},
    {"CompatibleLoopback", "::127.0.0.1", false},
    {"Name", "example.com", false},
    {"Empty", "", false},
    {"Short", "127.1", false},
    {"Zone", "fe80::1%eth0", false},
};

INSTANTIATE_TEST_SUITE_P(Rows, NetworkAddress, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(NetworkAddressText, EndsWhereItEnds) {
    EXPECT_FALSE(qv::isPublicAddress("93.184.216.34\0.example"s));
}

TEST(OnlyPublicAddresses, KeepsARequestFromTheOwnMachine) {
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, "secret"));
    auto request = requestTo(server.url());
    request.onlyPublicAddresses = true;
    const auto response = send(request);
    EXPECT_NE(errorCodeOf(response), 0);
    EXPECT_EQ(response.status, 0);
    EXPECT_EQ(server.connectionCount(), 0U);
}

TEST(OnlyPublicAddresses, LooksAtWhatANameStandsFor) {
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, "secret"));
    auto request = requestTo("http://localhost:" + std::to_string(server.port()) + "/");
    request.onlyPublicAddresses = true;
    EXPECT_NE(errorCodeOf(send(request)), 0);
    EXPECT_EQ(server.connectionCount(), 0U);
}

TEST(OnlyPublicAddresses, TakesNoConnectionThatIsOpenAlready) {
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, "public"));
    auto request = requestTo(server.url());
    EXPECT_EQ(bodyOf(send(request)), "public");
    request.onlyPublicAddresses = true;
    EXPECT_NE(errorCodeOf(send(request)), 0);
    EXPECT_EQ(server.requests().size(), 1U);
    request.onlyPublicAddresses = false;
    EXPECT_EQ(bodyOf(send(request)), "public") << "the thread's handle forgets the rule";
}

}  // namespace
