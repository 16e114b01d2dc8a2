#include "Output/PersonJSON.h"

#include "People/RecordProfile.h"

#include <nlohmann/json.hpp>

namespace qvhost {
namespace {

JSON::Value mergedJSON(const std::optional<MergedContact>& merged) {
    if (!merged) return nullptr;
    return {{"uid", JSON::from(merged->UID)},
            {"name", JSON::from(merged->person.fullName)},
            {"where", merged->where},
            {"by", merged->byEmail ? "email" : "name"}};
}

const char* wordFor(SearchOutcome::Kind kind) {
    switch (kind) {
        case SearchOutcome::Kind::Found:
            return "found";
        case SearchOutcome::Kind::NotFound:
            return "notFound";
        case SearchOutcome::Kind::TimedOut:
            return "timedOut";
        default:
            return "skipped";
    }
}

JSON::Value searchJSON(const std::optional<SearchOutcome>& searched) {
    if (!searched) return nullptr;
    const SearchOutcome& search = *searched;
    const auto type = search.resultType ? JSON::Value(static_cast<int>(*search.resultType)) : JSON::Value(nullptr);
    return {{"outcome", wordFor(search.kind)},
            {"resultType", type},
            {"name", JSON::from(search.profile ? search.profile->formattedName() : std::nullopt)},
            {"inAddressBook", isRecord(search.profile)}};
}

JSON::Value savedJSON(const std::optional<SaveOutcome>& saved) {
    if (!saved) return nullptr;
    const SaveOutcome& save = *saved;
    const char* outcome = save.outcome == QVAddressBookSaveOutcome::Created ? "created" : "updated";
    return {{"outcome", save.failure ? "failed" : outcome},
            {"uid", JSON::from(save.UID)},
            {"where", save.where.empty() ? JSON::Value(nullptr) : JSON::Value(save.where)},
            {"error", JSON::from(save.failure)}};
}

}  // namespace

void addPersonJSON(JSON::Value& object, const PersonOutcome& person) {
    if (person.comparesContacts) object["merged"] = mergedJSON(person.merged);
    if (person.searches) object["search"] = searchJSON(person.search);
    if (person.saves) object["saved"] = savedJSON(person.save);
}

}  // namespace qvhost
