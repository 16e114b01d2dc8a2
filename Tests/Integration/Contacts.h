#pragma once

#include "QVSocialSearch/QVSocialProfile.h"
#include "SocialSearch/SocialFixtures.h"
#include "Support/TestImages.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// People who do not exist, each with something that programs get wrong.
namespace integration {

inline std::shared_ptr<QVSocialProfile> person(const std::string& UID, const std::string& name) {
    auto profile = social::profile(name, QVSocialProfileSourceAddressBook);
    profile->setAddressBookUID(UID);
    profile->mergeWithEmailSet(social::emails({{"Work", UID + "@example.com"}}));
    return profile;
}

inline std::shared_ptr<QVSocialProfile> complete() {
    auto profile = person("complete", "Dr. Zoë Müller-Lüdenscheidt");
    profile->setJobTitle("Leiterin, Forschung & Entwicklung; Süd");
    profile->setCompany("Müller, Söhne; & Co. \\ KG");
    profile->mergeWithEmailSet(social::emails({{"Büro Süd", "zoe.mueller@example.com"}, {"Home", "zoë@example.org"}}));
    profile->mergeWithPhoneNumberSet(social::phones({{"Mobile", "+49 (171) 555-0100"},
                                                     {"Work Fax", "+49 30 5550101"},
                                                     {"Durchwahl, 2. Stock", "+49 30 5550102 ext. 7"}}));
    profile->setAddressList({QVPostalAddress::addressWithLabel("Work", "Große Straße 1, Hinterhaus\n10115 Berlin"),
                             QVPostalAddress::addressWithLabel("Messe; Halle 3", "Messeplatz 2\nHannover")});
    return profile;
}

inline std::shared_ptr<QVSocialProfile> linked() {
    auto profile = person("linked", "Lin Links");
    profile->setProfileURLLinkedInPublic("https://www.linkedin.com/in/lin,links;jsessionid=1?a=b&c=d");
    profile->setProfileURLFacebook("https://www.facebook.com/profile.php?id=100000000000001");
    profile->mergeWithTwitterSet(social::handles({"@lin_links", "a,b;c"}));
    return profile;
}

inline std::shared_ptr<QVSocialProfile> emoji() {
    auto profile = person("emoji", "Ada 👩‍💻 Example");
    profile->setJobTitle("Chief 🚀 Officer");
    profile->mergeWithPhoneNumberSet(social::phones({{"☎️ “direct”", "+1 202 555 0142"}}));
    return profile;
}

inline std::shared_ptr<QVSocialProfile> eastAsian() {
    auto profile = person("east-asian", "山田太郎");
    profile->setCompany("株式会社サンプル");
    profile->setJobTitle("代表取締役社長");
    return profile;
}

inline std::shared_ptr<QVSocialProfile> longLines() {
    auto profile = person("long-lines", "Lea Long");
    std::string title;
    for (int i = 0; i < 60; ++i)
        title += "Überaus lange Bezeichnung ";
    profile->setJobTitle(title + "Ende");
    profile->setCompany(std::string(300, 'w') + " Ltd.");
    return profile;
}

inline std::shared_ptr<QVSocialProfile> pictured(const std::string& UID, qv::Data picture) {
    auto profile = person(UID, "Pia Picture");
    profile->setAddressBookAvatarData(std::move(picture));
    return profile;
}

inline std::shared_ptr<QVSocialProfile> manyEntries() {
    auto profile = person("many", "Max Many");
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        profile->mergeWithEmailSet(social::emails({{"Label " + number, "max" + number + "@example.com"}}));
        profile->mergeWithPhoneNumberSet(
            social::phones({{"Line " + number, "+1 202 555 " + std::to_string(1000 + i)}}));
    }
    return profile;
}

inline std::shared_ptr<QVSocialProfile> oddTexts() {
    auto profile = person("odd-texts", "O'Neil \"Odd\" <Texts> & \\n");
    profile->setJobTitle("a:b;c,d\\e \"f\" g=h ^n %41 \\n");
    profile->setCompany(";;,,");
    profile->mergeWithPhoneNumberSet(social::phones({{"_$!<Mobile>!$_ x", "030/555 01 03"}}));
    return profile;
}

inline std::vector<std::shared_ptr<QVSocialProfile>> contacts() {
    using testsupport::photograph;
    return {complete(),
            linked(),
            emoji(),
            eastAsian(),
            longLines(),
            pictured("jpeg", testsupport::makeJPEG(photograph(640, 480))),
            pictured("png", testsupport::makePNG(testsupport::quarters(64, 64))),
            manyEntries(),
            oddTexts(),
            person("only-a-name", "Only")};
}

}  // namespace integration
