#include "Output/ScanJSON.h"

#include "Output/CardJSON.h"
#include "Output/ContactJSON.h"
#include "Output/ErrorText.h"
#include "Output/PersonJSON.h"

#include <nlohmann/json.hpp>

namespace qvhost {
namespace {

JSON::Value underlyingJSON(const std::optional<qv::Error>& error) {
    if (!error) return nullptr;
    return {
        {"domain", error->domain}, {"code", error->code}, {"description", JSON::from(ErrorText::explanation(*error))}};
}

JSON::Value errorsJSON(const std::vector<qv::Error>& errors) {
    JSON::Value list = JSON::Value::array();
    for (const qv::Error& error : errors) {
        list.push_back({{"domain", error.domain},
                        {"code", error.code},
                        {"underlying", underlyingJSON(ErrorText::underlying(error))}});
    }
    return list;
}

}  // namespace

JSON::Value scanJSON(const ScanOutcome& outcome, const PersonOutcome& person) {
    JSON::Value object = {
        {"noteUUID", outcome.noteUUID},
        {"errors", errorsJSON(outcome.errors())},
        {"rotation", outcome.rotation()},
        {"card", cardJSON(outcome.card)},
        {"contact", contactJSON(outcome.response->contact())},
    };
    addPersonJSON(object, person);
    return object;
}

}  // namespace qvhost
