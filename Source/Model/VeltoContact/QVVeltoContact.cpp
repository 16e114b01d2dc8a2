#include "QVCardScan/QVVeltoContact.h"

#include "QVPlatform/Format.h"

namespace {

/// A new set, because the old one may be shared. No set stays none, whatever the other contact has.
template <typename Set>
std::shared_ptr<Set> united(const std::shared_ptr<Set>& own, const std::shared_ptr<Set>& other) {
    if (!own || !other) return own;
    auto both = std::make_shared<Set>(*own);
    both->unite(*other);
    return both;
}

/// Only what is absent is filled; an empty text is a value.
template <typename Value>
void fill(Value& own, const Value& other) {
    if (!own) own = other;
}

std::string fieldLines(const QVContactFieldSet& fields) {
    std::string lines;
    if (!fields) return lines;
    for (const auto& field : *fields) {
        if (field) lines += qv::format("       --- %@: %@\n", field->label(), field->text());
    }
    return lines;
}

std::string handleLines(std::string_view format, const QVHandleSet& handles) {
    std::string lines;
    if (!handles) return lines;
    for (const auto& handle : *handles)
        lines += qv::format(format, handle);
    return lines;
}

}  // namespace

void QVVeltoContact::mergeContactInfoFromContact(const std::shared_ptr<QVVeltoContact>& contact) {
    if (!contact) return;
    mEmailFields = united(mEmailFields, contact->mEmailFields);
    mPhoneFields = united(mPhoneFields, contact->mPhoneFields);
    mTwitterHandles = united(mTwitterHandles, contact->mTwitterHandles);
    mWeiboHandles = united(mWeiboHandles, contact->mWeiboHandles);
    fill(mJobTitle, contact->mJobTitle);
    fill(mCompany, contact->mCompany);
    fill(mURL, contact->mURL);
    fill(mAvatar, contact->mAvatar);
}

std::string QVVeltoContact::description() const {
    std::string text = "<INFO> === Velto Contact Info ===\n";
    text += qv::format("       --- Full Name: %@\n", mFullName);
    text += fieldLines(mEmailFields);
    text += fieldLines(mPhoneFields);
    text += handleLines("       --- Twitter: %@\n", mTwitterHandles);
    text += handleLines("       --- Weibo: %@\n", mWeiboHandles);
    text += qv::format("       --- Title: %@\n", mJobTitle);
    text += qv::format("       --- Company: %@\n", mCompany);
    text += qv::format("       --- URL: %@\n", mURL);
    text += qv::format("       --- Address: %@\n", mAddress);
    return text;
}
