#include "Fields/Company.h"
#include "Fields/Department.h"
#include "Fields/Name.h"
#include "Fields/Title.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

TEST(NameTest, KnowsNames) {
    for (const char* name : {"Jane Doe", "JAMES SMITH", "Jean-Paul Varley", "Maeve O'Dellary",
                             "Friederike von Wiesental", "Dr. Jonathan Smithiskywich PhD", "VICTORIA Q. ARBITAGE"}) {
        EXPECT_GT(nameEvidence(lineOf(name), {}), 0.42F) << name;
    }
}

TEST(NameTest, KnowsWhatIsNone) {
    for (const char* other : {"Sales Manager", "Acme Tools Ltd", "12 High Street", "Graphic Designer",
                              "We make the best tools", "Human Resources", "jane@acme.com", "A", ""}) {
        EXPECT_LT(nameEvidence(lineOf(other), {}), 0.42F) << other;
    }
}

TEST(NameTest, GainsFromAnAddressMadeOfIt) {
    CardFacts facts;
    const float alone = nameEvidence(lineOf("Xaver Qubrik"), facts);
    facts.emailLocals = {"x.qubrik"};
    EXPECT_GT(nameEvidence(lineOf("Xaver Qubrik"), facts), alone + 0.3F);
}

TEST(NameTest, KnowsHowLocalPartsAreMade) {
    for (const char* local : {"jane.doe", "jdoe", "doe", "doe.jane", "jane", "janed", "jd"})
        EXPECT_TRUE(isLocalOfName(local, "jane doe")) << local;
    for (const char* local : {"info", "office", "j", "", "john.smith"})
        EXPECT_FALSE(isLocalOfName(local, "jane doe")) << local;
}

TEST(TitleTest, KnowsTitles) {
    for (const char* title :
         {"Sales Manager", "CEO & FOUNDER", "Geschäftsführer", "Directeur général", "Vertriebsleiterin",
          "Head of Engineering", "Senior Lecturer", "Managing Partner", "Office Manager", "CEO, Acme Ltd"}) {
        EXPECT_GE(titleEvidence(lineOf(title)), 0.5F) << title;
    }
    for (const char* other : {"Jane Doe", "Acme Engineers Ltd", "School of Nursing", "12 High Street", ""})
        EXPECT_LT(titleEvidence(lineOf(other)), 0.5F) << other;
}

TEST(DepartmentTest, KnowsDepartments) {
    for (const char* text : {"School of Nursing and Midwifery", "Human Resources", "Rechtsabteilung",
                             "Department of Logistics", "Public Affairs", "Ressources humaines"}) {
        EXPECT_GE(departmentEvidence(lineOf(text)), 0.5F) << text;
    }
    for (const char* other : {"Jane Doe", "Office Manager", "Head of Department", "Acme Ltd", ""})
        EXPECT_LT(departmentEvidence(lineOf(other)), 0.5F) << other;
}

TEST(CompanyTest, KnowsFirms) {
    for (const char* text : {"Acme Tools Ltd", "Möbelhaus Lüders & Söhne GmbH", "Viñedos Saldaña S.L.",
                             "Maison Péricourt SA", "Liceria & Co."}) {
        EXPECT_GE(companyEvidence(lineOf(text), {}), 0.42F) << text;
    }
    for (const char* other : {"Jane Doe", "Sales Manager", "12", ""})
        EXPECT_LT(companyEvidence(lineOf(other), {}), 0.42F) << other;
}

TEST(CompanyTest, FitsHostsToNames) {
    EXPECT_EQ(hostFit("dominos", "domino's"), 1.F);
    EXPECT_GT(hostFit("tarnvale", "tarn & vale instruments ltd"), 0.7F);
    EXPECT_GT(hostFit("bc", "boston college"), 0.7F);
    EXPECT_EQ(hostFit("acme", "zebra works"), 0.F);
    EXPECT_EQ(hostFit("", ""), 0.F);
}

}  // namespace
}  // namespace qv::recognition
