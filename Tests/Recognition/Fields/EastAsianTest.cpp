#include "Fields/EastAsian.h"
#include "Fields/FieldDecision.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

#include <map>

namespace qv::recognition {
namespace {

TEST(EastAsianTest, KnowsItsScripts) {
    for (const char* text : {"山田太郎", "王小明", "김민수", "営業部 A"})
        EXPECT_TRUE(isEastAsianText(text)) << text;
    for (const char* text : {"Jane Doe", "〒150-0002", "山", "", "Taro Yamada 様"})
        EXPECT_FALSE(isEastAsianText(text)) << text;
}

TEST(EastAsianTest, KnowsNames) {
    for (const char* text : {"山田 太郎", "佐々木花子", "王小明", "李建国", "欧阳 明", "김 민수", "이영희"})
        EXPECT_GT(eastAsianName(text), 0.6F) << text;
    for (const char* text : {"株式会社青空", "北海商事", "東京都渋谷区渋谷二丁目", "総務部長", "山", "2号", "주식회사"})
        EXPECT_LT(eastAsianName(text), 0.4F) << text;
}

TEST(EastAsianTest, KnowsTitles) {
    for (const char* text :
         {"代表取締役社長", "営業部 部長", "准教授", "总经理", "销售经理", "工程师", "대표이사", "영업부 과장"})
        EXPECT_GT(eastAsianTitle(text), 0.8F) << text;
    for (const char* text : {"山田太郎", "株式会社社長", "営業部", "2階会長", "한빛전자"})
        EXPECT_LT(eastAsianTitle(text), 0.5F) << text;
}

TEST(EastAsianTest, KnowsDepartments) {
    for (const char* text : {"営業部", "人事課", "マーケティング本部", "财务部", "市场中心", "영업부", "개발팀"})
        EXPECT_GE(eastAsianDepartment(text), 0.3F) << text;
    for (const char* text : {"部長", "営業部長", "株式会社営業部", "阿部"})
        EXPECT_EQ(eastAsianDepartment(text), 0.F) << text;
}

TEST(EastAsianTest, KnowsFirms) {
    for (const char* text : {"株式会社青空製作所", "(有)山田商店", "上海明远科技有限公司", "주식회사 한빛전자",
                             "(주)대한무역", "東京大学"})
        EXPECT_GE(eastAsianCompany(text), 0.6F) << text;
    EXPECT_LT(eastAsianCompany("山田太郎"), 0.2F);
    EXPECT_LT(eastAsianCompany("電話012345678"), 0.F);
}

TEST(EastAsianTest, KnowsAddresses) {
    for (const char* text :
         {"〒150-0002 東京都渋谷区渋谷2-3-4", "北海道札幌市中央区北一条西5丁目2番地", "上海市浦东新区世纪大道100号",
          "서울특별시 강남구 테헤란로 123, 5층", "東京都渋谷区渋谷二丁目三番四号"})
        EXPECT_GE(eastAsianAddress(text), 0.5F) << text;
    for (const char* text : {"山田太郎", "株式会社青空", "代表取締役", "営業部"})
        EXPECT_LT(eastAsianAddress(text), 0.5F) << text;
}

using Fields = std::multimap<FieldType, std::string>;

Fields decided(const std::vector<TextLine>& lines, const std::string& language) {
    Fields fields;
    for (const auto& field : decideFields(lines, language))
        fields.emplace(field.type, field.text);
    return fields;
}

TEST(EastAsianCardTest, Japanese) {
    EXPECT_EQ(decided({lineAt("株式会社青空製作所", 60, 50, 34), lineAt("営業部部長", 60, 110, 24),
                       lineAt("山田 太郎", 60, 180, 60), lineAt("Taro Yamada", 60, 250, 22),
                       lineAt("〒150-0002 東京都渋谷区渋谷2-3-4", 60, 380, 24), lineAt("TEL 03-1234-5678", 60, 440, 24),
                       lineAt("携帯 090-1234-5678", 60, 480, 24), lineAt("ファ ックス 03-1234-5679", 60, 520, 24),
                       lineAt("yamada@aozora.example.jp", 60, 560, 24)},
                      "ja"),
              (Fields{{FieldType::Company, "株式会社青空製作所"},
                      {FieldType::Title, "営業部部長"},
                      {FieldType::Name, "山田 太郎"},
                      {FieldType::Address, "〒150-0002 東京都渋谷区渋谷2-3-4"},
                      {FieldType::Phone, "03-1234-5678"},
                      {FieldType::Mobile, "090-1234-5678"},
                      {FieldType::Fax, "03-1234-5679"},
                      {FieldType::Email, "yamada@aozora.example.jp"}}));
}

TEST(EastAsianCardTest, Chinese) {
    EXPECT_EQ(decided({lineAt("上海明远科技有限公司", 60, 50, 36), lineAt("王小明", 60, 170, 60),
                       lineAt("销售经理", 60, 240, 28), lineAt("地址:上海市浦东新区世纪大道100号", 60, 370, 25),
                       lineAt("邮编:200120", 60, 420, 25), lineAt("手机:138 0013 8000", 60, 470, 25)},
                      "zh"),
              (Fields{{FieldType::Company, "上海明远科技有限公司"},
                      {FieldType::Name, "王小明"},
                      {FieldType::Title, "销售经理"},
                      {FieldType::Address, "上海市浦东新区世纪大道100号"},
                      {FieldType::Mobile, "138 0013 8000"}}));
}

TEST(EastAsianCardTest, TakesNoTelephoneOutOfAPostcode) {
    EXPECT_EQ(
        decided({lineAt("〒060-0001", 60, 100, 24), lineAt("北海道札幌市中央区北一条西5丁目", 60, 136, 24)}, "ja"),
        (Fields{{FieldType::Address, "〒060-0001, 北海道札幌市中央区北一条西5丁目"}}));
}

}  // namespace
}  // namespace qv::recognition
