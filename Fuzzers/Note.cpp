// A note from texts of any origin in every place that a contact has.

#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "Support/Input.h"
#include "Support/Outline.h"
#include "Support/Require.h"

#include <algorithm>

using fuzzing::require;

namespace {

/// Which text is the label of every e-mail address and telephone number.
constexpr std::size_t kLabel = 10;

/// The texts in their order, then absent ones.
class Texts {
  public:
    explicit Texts(std::vector<std::string> texts) : mTexts(std::move(texts)) {}
    QVString next() { return mNext < mTexts.size() ? QVString(mTexts[mNext++]) : QVString(); }
    std::shared_ptr<std::vector<std::string>> nextList() {
        auto list = std::make_shared<std::vector<std::string>>();
        if (const QVString text = next()) *list = fuzzing::partsOf(*text, '\n');
        return list;
    }
    /// Texts of XML characters, with a label that leaves the markup alone.
    bool areHarmless() const {
        return std::all_of(mTexts.begin(), mTexts.end(), [](const auto& text) { return fuzzing::isXMLText(text); }) &&
               (mTexts.size() <= kLabel || fuzzing::isHarmlessLabel(mTexts[kLabel]));
    }
    /// Each text as "x", as long as it has as many lines.
    Texts plain() const {
        std::vector<std::string> texts;
        for (const std::string& text : mTexts) {
            const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
            std::string plainText = text.empty() ? "" : "x";
            for (std::size_t i = 0; i < lines; ++i)
                plainText += "\nx";
            texts.push_back(plainText);
        }
        return Texts(texts);
    }

  private:
    std::vector<std::string> mTexts;
    std::size_t mNext = 0;
};

QVContactFieldArray entries(const std::vector<std::string>& texts, const std::string& label) {
    auto fields = std::make_shared<std::vector<std::shared_ptr<QVVeltoContactField>>>();
    fields->reserve(texts.size());
    for (const std::string& text : texts)
        fields->push_back(QVVeltoContactField::initWithLabel(label, text));
    return fields;
}

std::shared_ptr<QVVeltoContact> contactOf(Texts texts) {
    auto contact = std::make_shared<QVVeltoContact>();
    contact->setFullName(texts.next());
    contact->setJobTitle(texts.next());
    contact->setCompany(texts.next());
    contact->setAddress(texts.next());
    contact->setLinkedInProfileURL(texts.next());
    contact->setFacebookProfileURL(texts.next());
    const auto emails = texts.nextList();
    const auto phones = texts.nextList();
    contact->setOrderedTwitterHandles(texts.nextList());
    contact->setOrderedWeiboHandles(texts.nextList());
    const std::string label = texts.next().value_or("Work");
    contact->setOrderedEmailFields(entries(*emails, label));
    contact->setOrderedPhoneFields(entries(*phones, label));
    return contact;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const Texts texts(fuzzing::partsOf(fuzzing::textOf(bytes, count)));
    for (const bool full : {true, false}) {
        const QVString note = QVVeltoNoteGenerator().noteFromContactInfo(contactOf(texts), full);
        require(note.has_value(), "a contact has a note");
        if (!texts.areHarmless()) continue;
        const auto outline = fuzzing::outlineOfNote(*note);
        require(outline.has_value(), "the note is well-formed");
        const QVString plain = QVVeltoNoteGenerator().noteFromContactInfo(contactOf(texts.plain()), full);
        require(outline == fuzzing::outlineOfNote(*plain), "texts leave the note's elements alone");
    }
    return 0;
}
