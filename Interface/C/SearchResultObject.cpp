#include "SearchResultObject.h"

#include "Guard.h"
#include "Handles.h"
#include "qvcardscan.h"

namespace qvc {

SearchResultObject::SearchResultObject(const QVSocialSearchResult& result, const ResponseObject& origin)
    : noteUUID(result.requestID),
      type(result.resultType),
      hasProfile(result.socialProfile != nullptr),
      note(result.newQVMLContent) {
    // The announcement of a profile lacks the contact, which is the response's all the same.
    const auto contact = origin.response->contact();
    contactFields = ContactFields(contact);
    resources = NoteResources(note, origin.pictures, contact ? contact->avatar() : nullptr);
}

}  // namespace qvc

using namespace qvc;

namespace {

template <typename Result, typename Body>
Result read(const qv_search_result* result, Result absent, Body&& body) {
    return guarded<Result>(absent, [&] {
        const auto object = objectOf(result);
        return object ? static_cast<Result>(body(*object)) : absent;
    });
}

}  // namespace

void qv_search_result_release(qv_search_result* result) {
    guardedDo([&] { takeObject(result); });
}

int32_t qv_search_result_type(const qv_search_result* result) {
    return read<int32_t>(result, QV_SEARCH_NOT_FOUND, [](const auto& object) { return object.type; });
}

int32_t qv_search_result_has_profile(const qv_search_result* result) {
    return read<int32_t>(result, 0, [](const auto& object) { return object.hasProfile; });
}

const char* qv_search_result_note_uuid(const qv_search_result* result) {
    return read<const char*>(result, nullptr, [](const auto& object) { return object.noteUUID.c_str(); });
}

const char* qv_search_result_note(const qv_search_result* result) {
    return read<const char*>(result, nullptr,
                             [](const auto& object) { return object.note ? object.note->c_str() : nullptr; });
}

size_t qv_search_result_field_count(const qv_search_result* result) {
    return read<size_t>(result, 0, [](const auto& object) { return object.contactFields.size(); });
}

int32_t qv_search_result_field(const qv_search_result* result, size_t index, qv_field* field) {
    return read<int32_t>(result, 0, [&](const auto& object) { return object.contactFields.fill(index, field); });
}

size_t qv_search_result_resource_count(const qv_search_result* result) {
    return read<size_t>(result, 0, [](const auto& object) { return object.resources.size(); });
}

int32_t qv_search_result_resource(const qv_search_result* result, size_t index, qv_resource* resource) {
    return read<int32_t>(result, 0, [&](const auto& object) { return object.resources.fill(index, resource); });
}
