#pragma once

#include "People/ContactSaver.h"
#include "People/KnownContacts.h"
#include "People/SocialLookup.h"
#include "Support/ExitStatus.h"

#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// What was found out about the person on a card, and where they were kept. What was not asked for is absent.
struct PersonOutcome {
    /// What was asked for.
    bool comparesContacts = false;
    bool searches = false;
    bool saves = false;

    std::optional<MergedContact> merged;
    std::optional<SearchOutcome> search;
    std::optional<SaveOutcome> save;
    /// The name that was read on the card, before others knew better.
    QVString nameOnCard;
    /// What a person should know besides; a sentence or two each.
    std::vector<std::string> remarks;

    /// Whether the contact knows more than the card.
    bool isEnriched() const { return merged || (search && search->profile); }

    ExitStatus status() const {
        if (save && save->failure) return ExitStatus::NotWritten;
        return search && search->kind == SearchOutcome::Kind::TimedOut ? ExitStatus::Incomplete : ExitStatus::Done;
    }
};

}  // namespace qvhost
