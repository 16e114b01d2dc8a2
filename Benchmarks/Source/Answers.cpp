#include "Source/Answers.h"

namespace benchmarksupport {

static const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<recoIndex lang=\"en\" objWidth=\"1024\" objHeight=\"594\" "
    "orient=\"0\">\n";
static const std::string kTail = "</recoIndex>\n";

static std::string item(const std::string& type, int y, const std::string& text) {
    return "  <item fldType=\"" + type + "\" fldDom=\"card\" x=\"61.5\" y=\"" + std::to_string(y) +
           "\" w=\"402\" h=\"31.25\" orient=\"0\"><t w=\"87\">" + text + "</t></item>\n";
}

std::string ordinaryAnswer() {
    return kHead + item("name", 72, "DR. EDMUND J. HARTWELL") + item("title", 135, "Senior Surveyor") +
           item("company", 174, "Hartwell &amp; Sons Land Surveys") + item("department", 200, "Department 3") +
           item("address", 266, "14 Orchard Lane, North Haven 90417") + item("phone", 358, "+1 555 0142 776") +
           item("mobile", 394, "+1 555 0198 203") + item("fax", 420, "+1 555 0142 777") +
           item("email", 430, "Edmund@Hartwell-Surveys.example.com") +
           item("url", 470, "www.hartwell-surveys.example.com") + item("twitter", 500, "@hartwellsurveys") +
           item("logo", 520, "H+S") + kTail;
}

std::string answerOfBareItems(std::size_t count) {
    std::string answer = kHead;
    for (std::size_t index = 0; index < count; ++index)
        answer += "<item/>";
    return answer + kTail;
}

std::string answerOfItems(std::size_t count) {
    std::string answer = kHead;
    for (std::size_t index = 0; index < count; ++index)
        answer += item("phone", static_cast<int>(index % 1000), "+1 555 0142 776");
    return answer + kTail;
}

// A line end is a piece of its own.
std::string answerInOneByteChunks(const std::string& type, std::size_t bytes) {
    return kHead + "<item fldType=\"" + type + "\"><t w=\"87\">" + std::string(bytes, '\n') + "</t></item>\n" + kTail;
}

}  // namespace benchmarksupport
