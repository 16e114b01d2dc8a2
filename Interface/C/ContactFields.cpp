#include "ContactFields.h"

#include "Structures.h"

namespace qvc {
namespace {

/// What `qv_field` was in the first version.
constexpr std::size_t kSmallestField = sizeof(qv_field);

/// As notes do: the ordered array where there is one, otherwise the set.
template <typename Element, typename Set>
std::vector<Element> chosen(const std::shared_ptr<std::vector<Element>>& ordered, const std::shared_ptr<Set>& set) {
    if (ordered) return *ordered;
    return set ? std::vector<Element>(set->begin(), set->end()) : std::vector<Element>();
}

}  // namespace

ContactFields::ContactFields(const std::shared_ptr<QVVeltoContact>& contact) {
    if (!contact) return;
    add(QV_FIELD_NAME, contact->fullName());
    add(QV_FIELD_TITLE, contact->jobTitle());
    add(QV_FIELD_COMPANY, contact->company());
    addEntries(QV_FIELD_EMAIL, contact->orderedEmailFields(), contact->emailFields());
    addEntries(QV_FIELD_PHONE, contact->orderedPhoneFields(), contact->phoneFields());
    addHandles(QV_FIELD_TWITTER, contact->orderedTwitterHandles(), contact->twitterHandles());
    addHandles(QV_FIELD_WEIBO, contact->orderedWeiboHandles(), contact->weiboHandles());
    add(QV_FIELD_ADDRESS, contact->address());
    add(QV_FIELD_LINKEDIN, contact->linkedInProfileURL());
    add(QV_FIELD_FACEBOOK, contact->facebookProfileURL());
    add(QV_FIELD_URL, contact->URL());
}

bool ContactFields::fill(std::size_t index, qv_field* field) const {
    if (index >= mFields.size()) return false;
    const Field& found = mFields[index];
    return fillStructure<kSmallestField>(
        field, qv_field{0, found.kind, found.label ? found.label->c_str() : nullptr, found.text.c_str()});
}

void ContactFields::add(std::int32_t kind, const std::optional<std::string>& text) {
    if (text) mFields.push_back({kind, std::nullopt, *text});
}

void ContactFields::addEntries(std::int32_t kind, const QVContactFieldArray& ordered, const QVContactFieldSet& set) {
    for (const auto& entry : chosen(ordered, set)) {
        if (entry && entry->text()) mFields.push_back({kind, entry->label(), *entry->text()});
    }
}

void ContactFields::addHandles(std::int32_t kind, const QVStringArray& ordered, const QVHandleSet& set) {
    for (const std::string& handle : chosen(ordered, set))
        add(kind, handle);
}

}  // namespace qvc
