#include "QVCardScan/QVBizCardParser.h"
#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/Log.h"

#include <valgrind/callgrind.h>

#include <cstddef>
#include <functional>
#include <string>

// Runs each path of text through the library a few times, its instructions counted apart from those of the others.

namespace {

constexpr int kTimes = 20;

volatile std::size_t gKept = 0;

void keep(const QVString& text) {
    gKept = gKept + text.value_or("").size();
}

/// Once beforehand: what is made ready for good at the first call does not count.
void count(const char* name, const std::function<void()>& path) {
    path();
    CALLGRIND_TOGGLE_COLLECT;
    for (int time = 0; time < kTimes; ++time)
        path();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name);
}

const QVString kAnswer =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<recoIndex lang=\"en\" objWidth=\"1024\" objHeight=\"594\">\n"
    "<item fldType=\"name\" x=\"61.5\" y=\"72\" w=\"402\" h=\"31.25\"><t w=\"87\">DR. EDMUND J. HARTWELL</t></item>\n"
    "<item fldType=\"title\" x=\"61.5\" y=\"135\" w=\"402\" h=\"20\"><t w=\"81\">Senior Surveyor</t></item>\n"
    "<item fldType=\"company\" x=\"61.5\" y=\"174\" w=\"402\" h=\"20\"><t w=\"80\">Hartwell &amp; Sons</t></item>\n"
    "<item fldType=\"phone\" x=\"61.5\" y=\"358\" w=\"402\" h=\"20\"><t w=\"90\">+1 555 0142 776</t></item>\n"
    "<item fldType=\"email\" x=\"61.5\" y=\"430\" w=\"402\" h=\"20\"><t w=\"90\">Ed@Hartwell.examplecom</t></item>\n"
    "<item fldType=\"address\" x=\"61.5\" y=\"266\" w=\"402\" h=\"20\"><t w=\"70\">14 Orchard Lane</t></item>\n"
    "</recoIndex>\n";

void parseAnswer() {
    keep(QVBizCardParser().parse(kAnswer, nullptr)->fullName());
}

void repairNames() {
    for (const char* name : {"DR. JOHN F. SMITH, PH.D.", "  john   q   public  ", "GARCÍA LÓPEZ, José María"})
        keep(QVCardScanResultFormatter::normalizedNameForName(name));
}

void repairEmails() {
    for (const char* email : {"E-mail: JO.PUBLIC@ZQCOM", "jane . doe @ mail.zq.couk", "jürgen@büro.example.de"})
        keep(QVCardScanResultFormatter::normalizedEmailForEmail(email));
}

}  // namespace

int main() {
    qv::Log::setSink({});
    const auto contact = QVVeltoContact::initWithCard(QVBizCardParser().parse(kAnswer, nullptr));
    count("parse", parseAnswer);
    count("name", repairNames);
    count("e-mail", repairEmails);
    count("contact", [] { keep(QVVeltoContact::initWithCard(QVBizCardParser().parse(kAnswer, nullptr))->fullName()); });
    count("note", [&] { keep(QVVeltoNoteGenerator().noteFromContactInfo(contact)); });
    return gKept > 0 ? 0 : 1;
}
