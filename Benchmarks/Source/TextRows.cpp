#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVPlatform/Text.h"
#include "Source/SourceRows.h"
#include "Support/Duel.h"

#include <unicode/brkiter.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/ustring.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace benchmarksupport {

namespace {

constexpr double kMostTimesTitleCasing = 6;
constexpr double kMostTimesLowerCasing = 4;

void check(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
}

/// Title-casing with an iterator over words that is made once.
class TitleCasing {
  public:
    TitleCasing() {
        UErrorCode status = U_ZERO_ERROR;
        mWords.reset(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
        check(status);
    }
    void run(const std::u16string& text) {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length =
            icu::CaseMap::toTitle("", 0, mWords.get(), text.data(), static_cast<int32_t>(text.size()), mResult.data(),
                                  kCapacity, nullptr, status);
        check(status);
        keep(length);
    }

  private:
    static constexpr int32_t kCapacity = 65'536;
    std::unique_ptr<icu::BreakIterator> mWords;
    std::vector<char16_t> mResult = std::vector<char16_t>(kCapacity);
};

/// Lower-casing with the conversions to UTF-16 and back.
class LowerCasing {
  public:
    void run(const std::string& text) {
        UErrorCode status = U_ZERO_ERROR;
        int32_t length = 0;
        u_strFromUTF8(mText.data(), kCapacity, &length, text.data(), static_cast<int32_t>(text.size()), &status);
        length = icu::CaseMap::toLower("", 0, mText.data(), length, mLower.data(), kCapacity, nullptr, status);
        int32_t count = 0;
        u_strToUTF8(mBytes.data(), 3 * kCapacity, &count, mLower.data(), length, &status);
        check(status);
        const std::string result(mBytes.data(), static_cast<std::size_t>(count));
        keep(result);
    }

  private:
    static constexpr int32_t kCapacity = 65'536;
    std::vector<char16_t> mText = std::vector<char16_t>(kCapacity);
    std::vector<char16_t> mLower = std::vector<char16_t>(kCapacity);
    std::vector<char> mBytes = std::vector<char>(3 * kCapacity);
};

const std::array<std::string, 8> kNames = {"DR. EDMUND J. HARTWELL",
                                           "  john   q   public  ",
                                           "Mrs. Jane-Marie O'Neill, Ph.D.",
                                           "GARCÍA LÓPEZ, José María",
                                           "jürgen weiß",
                                           "Αλέξανδρος Παπαδόπουλος",
                                           "山田 太郎",
                                           "PROF. HON. SIR ARTHUR B. C. WELLINGTON-SMYTHE JR"};

const std::array<std::string, 5> kEmails = {"Edmund@Hartwell-Surveys.example.com", "E-mail: JO.PUBLIC@ZQCOM",
                                            "jane . doe @ mail.zq.couk", "jürgen.weiß@büro.example.de",
                                            "a.very.long.local.part+tag@a.long.sub.domain.of.a.company.EXAMPLE.ORG"};

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t index = 0; index < times; ++index)
        result += text;
    return result;
}

void addNameRow(const std::string& what, const std::vector<std::string>& names) {
    addRow("name: " + what, [names] {
        const std::vector<QVString> texts(names.begin(), names.end());
        std::vector<std::u16string> units;
        for (const std::string& name : names)
            units.push_back(qv::Text::utf16(name));
        TitleCasing titleCasing;
        const auto ours = [&] {
            for (const QVString& text : texts)
                keep(QVCardScanResultFormatter::normalizedNameForName(text));
        };
        const auto floor = [&] {
            for (const std::u16string& text : units)
                titleCasing.run(text);
        };
        return rowAgainstFloor(ours, floor, "ICU title-casing", kMostTimesTitleCasing);
    });
}

void addEmailRow(const std::string& what, const std::vector<std::string>& emails) {
    addRow("e-mail: " + what, [emails] {
        const std::vector<QVString> texts(emails.begin(), emails.end());
        LowerCasing lowerCasing;
        const auto ours = [&] {
            for (const QVString& text : texts)
                keep(QVCardScanResultFormatter::normalizedEmailForEmail(text));
        };
        const auto floor = [&] {
            for (const std::string& text : emails)
                lowerCasing.run(text);
        };
        return rowAgainstFloor(ours, floor, "ICU lower-casing", kMostTimesLowerCasing);
    });
}

}  // namespace

void addTextRows() {
    addNameRow("eight ordinary ones", {kNames.begin(), kNames.end()});
    for (const std::string& name : kNames)
        addNameRow("\"" + name + "\"", {name});
    addNameRow("10 000 words", {repeated("John PhD ", 5000)});
    addEmailRow("five ordinary ones", {kEmails.begin(), kEmails.end()});
    for (const std::string& email : kEmails)
        addEmailRow("\"" + email + "\"", {email});
    addEmailRow("50 000 characters", {"jo@" + repeated("Sub.Domain ", 4500) + "zqcom"});
}

}  // namespace benchmarksupport
