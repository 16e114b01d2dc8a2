#include "CardHost.h"
#include "Support/TemporaryFolder.h"

#include <vector>

namespace capitest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ResponseTest : public CardHost {
  protected:
    static std::vector<std::string> fields(const qv_response* response) {
        std::vector<std::string> texts;
        qv_field field = {};
        field.size = sizeof field;
        for (size_t i = 0; i < qv_response_field_count(response); ++i) {
            EXPECT_EQ(qv_response_field(response, i, &field), 1);
            texts.push_back(std::to_string(field.kind) + " " + textOf(field.label) + " " + textOf(field.text));
        }
        return texts;
    }
};

TEST_F(ResponseTest, HoldsContactAndNote) {
    const Response response = respond(makeRequest().get());
    EXPECT_THAT(fields(response.get()), ElementsAre("1 (null) Ada Example", "2 (null) Ingenieurin für Öl",
                                                    HasSubstr("ada@example.com"), HasSubstr("+1 202 555 0142")));
    EXPECT_THAT(fields(response.get())[2], testing::StartsWith("4 "));
    EXPECT_THAT(fields(response.get())[3], testing::StartsWith("5 "));
    EXPECT_THAT(textOf(qv_response_note(response.get())), HasSubstr("Ingenieurin für Öl"));
    EXPECT_STREQ(qv_response_raw_result(response.get(), 0), kAnswer);
    EXPECT_EQ(qv_response_raw_result(response.get(), 1), nullptr);
    EXPECT_EQ(qv_response_card_field_count(response.get()), 0U);
    EXPECT_EQ(qv_response_error_count(response.get()), 0U);
    EXPECT_EQ(qv_response_rotation(response.get()), 0);
    EXPECT_EQ(qv_response_can_search(response.get()), 0);
}

TEST_F(ResponseTest, HoldsThePicturesThatTheNoteRefersTo) {
    const Response response = respond(makeRequest().get());
    const std::string note = textOf(qv_response_note(response.get()));
    qv_resource resource = {};
    resource.size = sizeof resource;
    ASSERT_EQ(qv_response_resource_count(response.get()), 2U);
    ASSERT_EQ(qv_response_resource(response.get(), 0, &resource), 1);
    EXPECT_EQ(resource.kind, QV_RESOURCE_CARD);
    EXPECT_STREQ(resource.hash, "a-hash");
    EXPECT_STREQ(resource.type, "image/jpeg");
    EXPECT_EQ(std::string(static_cast<const char*>(resource.bytes), resource.length), testsupport::readFile(picture()));
    ASSERT_EQ(qv_response_resource(response.get(), 1, &resource), 1);
    EXPECT_EQ(resource.kind, QV_RESOURCE_PLACEHOLDER);
    EXPECT_STREQ(resource.type, "image/png");
    EXPECT_THAT(note, HasSubstr("hash=\"" + std::string(resource.hash) + "\""));
    EXPECT_THAT(std::string(static_cast<const char*>(resource.bytes), resource.length), testing::StartsWith("\x89PNG"));
    EXPECT_EQ(qv_response_resource(response.get(), 2, &resource), 0);
}

TEST_F(ResponseTest, NamesAPictureByItsMD5UnlessTheHostNamesIt) {
    const Request request(qv_request_create("md5"), qv_request_release);
    ASSERT_EQ(qv_request_add_picture_file(request.get(), picture().c_str(), nullptr, nullptr), QV_OK);
    ASSERT_EQ(qv_request_set_token(request.get(), "a-token", nullptr), QV_OK);
    const Response response = respond(request.get());
    qv_resource resource = {};
    resource.size = sizeof resource;
    ASSERT_EQ(qv_response_resource(response.get(), 0, &resource), 1);
    EXPECT_THAT(resource.hash, testing::MatchesRegex("[0-9a-f]{32}"));
    EXPECT_THAT(textOf(qv_response_note(response.get())), HasSubstr(resource.hash));
}

TEST_F(ResponseTest, HoldsTheCardWhenNoNoteIsWanted) {
    const Request request = makeRequest();
    qv_request_set_skip_note(request.get(), 1);
    const Response response = respond(request.get());
    EXPECT_EQ(qv_response_note(response.get()), nullptr);
    EXPECT_THAT(fields(response.get()), IsEmpty());
    EXPECT_EQ(qv_response_resource_count(response.get()), 0U);
    ASSERT_EQ(qv_response_card_field_count(response.get()), 4U);
    qv_card_field field = {};
    field.size = sizeof field;
    ASSERT_EQ(qv_response_card_field(response.get(), 0, &field), 1);
    EXPECT_EQ(field.type, 1);
    EXPECT_EQ(field.weight, 90);
    EXPECT_EQ(field.rotation, 0);
    EXPECT_EQ(field.x, 10);
    EXPECT_EQ(field.y, 20);
    EXPECT_EQ(field.width, 100);
    EXPECT_EQ(field.height, 25);
    EXPECT_STREQ(field.text, "Ada Example");
    EXPECT_EQ(qv_response_card_field(response.get(), 4, &field), 0);
    EXPECT_EQ(qv_search_start(
                  response.get(), [](auto*, void*) {}, nullptr, nullptr, nullptr),
              QV_INVALID_ARGUMENT);
}

TEST_F(ResponseTest, HoldsEveryErrorAndItsCause) {
    ASSERT_EQ(qv_set_server_url("http://127.0.0.1:1/", nullptr), QV_OK);
    const Response response = respond(makeRequest().get());
    ASSERT_EQ(qv_response_error_count(response.get()), 1U);
    const Error error = own(qv_response_error(response.get(), 0));
    EXPECT_STREQ(qv_error_domain(error.get()), "kQVCardProcessingErrorDomain");
    EXPECT_EQ(qv_error_code(error.get()), 2);
    EXPECT_EQ(qv_error_message(error.get()), nullptr);
    const Error cause = own(qv_error_underlying(error.get()));
    ASSERT_NE(cause, nullptr);
    EXPECT_THAT(textOf(qv_error_message(cause.get())), testing::Not("(null)"));
    EXPECT_EQ(qv_error_underlying(cause.get()), nullptr);
    EXPECT_EQ(qv_response_error(response.get(), 1), nullptr);
}

TEST_F(ResponseTest, SaysThatThereIsNoServer) {
    ASSERT_EQ(qv_set_server_url(nullptr, nullptr), QV_OK);
    const Response response = respond(makeRequest().get());
    EXPECT_EQ(qv_response_note_uuid(response.get()), nullptr);
    const Error error = own(qv_response_error(response.get(), 0));
    EXPECT_EQ(qv_error_code(error.get()), 1);
    EXPECT_EQ(qv_search_start(
                  response.get(), [](auto*, void*) {}, nullptr, nullptr, nullptr),
              QV_INVALID_ARGUMENT);
}

TEST_F(ResponseTest, FillsNoMoreThanTheHostKnows) {
    const Response response = respond(makeRequest().get());
    struct {
        qv_field field;
        std::uint64_t beyond;
    } later = {{}, 7};
    later.field.size = sizeof later;
    ASSERT_EQ(qv_response_field(response.get(), 0, &later.field), 1);
    EXPECT_EQ(later.beyond, 7U) << "what a later version would add stays as it is";
    EXPECT_EQ(later.field.size, sizeof later);
    qv_field field = {};
    field.size = sizeof field - 1;
    EXPECT_EQ(qv_response_field(response.get(), 0, &field), 0);
    field.size = 0;
    EXPECT_EQ(qv_response_field(response.get(), 0, &field), 0);
    EXPECT_EQ(qv_response_field(response.get(), 0, nullptr), 0);
    EXPECT_EQ(field.text, nullptr);
}

TEST_F(ResponseTest, ReadsTheTemplatesOfAnotherFolder) {
    const testsupport::TemporaryFolder folder;
    folder.write("velto-note-template-new.html", "the name: <!--x-quorvane:display-as-->");
    ASSERT_EQ(qv_set_data_folder(folder.path().c_str(), nullptr), QV_OK);
    const Response response = respond(makeRequest().get());
    ASSERT_EQ(qv_set_data_folder(nullptr, nullptr), QV_OK);
    EXPECT_THAT(textOf(qv_response_note(response.get())), testing::StartsWith("the name: "));
    EXPECT_EQ(qv_response_resource_count(response.get()), 0U) << "the note refers to no picture";
}

}  // namespace
}  // namespace capitest
