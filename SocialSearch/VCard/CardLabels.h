#pragma once

#include "QVSocialSearch/QVSocialSearchTypes.h"
#include "QVSocialSearch/QVVCard.h"

#include <string>
#include <unordered_map>

/// The labels that a card gives to its e-mails, phone numbers and addresses. Valid as long as the card does not change.
class CardLabels {
  public:
    explicit CardLabels(const QVVCard& card);

    /// The text of the group's X-ABLabel, or else the word for the types; absent when there is neither.
    QVString labelOfProperty(const QVVCardProperty& property) const;

  private:
    std::unordered_map<std::string, std::string> mTextsByGroup;
};

/// Adds the property to the card with the types for the label, or, when no type says just that, in a group of its own
/// with the label as X-ABLabel. Reading it back gives the label again (in the types' own case).
void addPropertyWithLabel(QVVCard& card, QVVCardProperty property, const QVString& label);
