#include "Recognition/RemoteServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::RemoteServer;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(RemoteServer, TakesWebAddresses) {
    for (const char* url :
         {"http://127.0.0.1:8080/", "https://cards.example.com", "HTTP://[::1]:80/a?b=c@d", "http://h/@"})
        EXPECT_THAT(RemoteServer::objectionTo(url), IsEmpty()) << url;
}

TEST(RemoteServer, ObjectsToEverythingElse) {
    for (const char* url :
         {"", "cards.example.com", "/path", "ftp://h/", "file:///etc/passwd", "http://a b/", "http://h:port/"})
        EXPECT_THAT(RemoteServer::objectionTo(url), HasSubstr("is needed here")) << url;
}

TEST(RemoteServer, ObjectsToCredentialsWithoutRepeatingThem) {
    for (const char* url : {"http://user:word@h/", "https://word@h", "http://user:word@h?x", "ftp://word@h/"}) {
        EXPECT_THAT(RemoteServer::objectionTo(url), HasSubstr("no user name or password")) << url;
        EXPECT_THAT(RemoteServer::objectionTo(url), Not(HasSubstr("word@"))) << url;
    }
}

TEST(RemoteServer, GivesItsAccessAndNeverEnds) {
    RemoteServer server({"http://h/", "token"});
    const auto access = server.access();
    ASSERT_TRUE(access);
    EXPECT_EQ(access->url, "http://h/");
    EXPECT_EQ(access->token, "token");
    EXPECT_FALSE(server.hasEnded());
    EXPECT_THAT(server.name(), Not(HasSubstr("token")));
}

}  // namespace
