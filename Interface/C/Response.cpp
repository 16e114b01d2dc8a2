#include "ErrorObject.h"
#include "Guard.h"
#include "Handles.h"
#include "ResponseObject.h"
#include "Structures.h"
#include "qvcardscan.h"

#include <iterator>

using namespace qvc;

namespace {

/// What `qv_card_field` was in the first version.
constexpr std::size_t kSmallestCardField = sizeof(qv_card_field);

const char* pointerTo(const QVString& text) {
    return text ? text->c_str() : nullptr;
}

/// Reads from the response behind the handle; `absent` when there is none.
template <typename Result, typename Body>
Result read(const qv_response* response, Result absent, Body&& body) {
    return guarded<Result>(absent, [&] {
        const auto object = objectOf(response);
        return object ? static_cast<Result>(body(*object)) : absent;
    });
}

bool fill(const QVBusinessCardField& field, qv_card_field* target) {
    const qv::Rect& frame = field.frame();
    return fillStructure<kSmallestCardField>(
        target, qv_card_field{0, field.type(), field.weight(), field.orient(), frame.origin.x, frame.origin.y,
                              frame.size.width, frame.size.height, pointerTo(field.text())});
}

}  // namespace

void qv_response_release(qv_response* response) {
    guardedDo([&] { takeObject(response); });
}

const char* qv_response_note_uuid(const qv_response* response) {
    return read<const char*>(response, nullptr, [](const auto& object) { return pointerTo(object.noteUUID); });
}

const char* qv_response_note(const qv_response* response) {
    return read<const char*>(response, nullptr, [](const auto& object) { return pointerTo(object.note); });
}

const char* qv_response_name(const qv_response* response) {
    return read<const char*>(response, nullptr, [](const auto& object) { return pointerTo(object.name); });
}

const char* qv_response_raw_result(const qv_response* response, size_t index) {
    return read<const char*>(response, nullptr, [&](const auto& object) {
        return index < std::size(object.rawResults) ? pointerTo(object.rawResults[index]) : nullptr;
    });
}

int64_t qv_response_rotation(const qv_response* response) {
    return read<int64_t>(response, 0, [](const auto& object) { return object.rotation; });
}

int32_t qv_response_can_search(const qv_response* response) {
    return read<int32_t>(response, 0, [](const auto& object) { return object.canSearch; });
}

size_t qv_response_error_count(const qv_response* response) {
    return read<size_t>(response, 0, [](const auto& object) { return object.errors.size(); });
}

qv_error* qv_response_error(const qv_response* response, size_t index) {
    return read<qv_error*>(response, nullptr, [&](const auto& object) {
        return index < object.errors.size() ? ErrorObject::makeHandleFor(object.errors[index]) : nullptr;
    });
}

size_t qv_response_field_count(const qv_response* response) {
    return read<size_t>(response, 0, [](const auto& object) { return object.contactFields.size(); });
}

int32_t qv_response_field(const qv_response* response, size_t index, qv_field* field) {
    return read<int32_t>(response, 0, [&](const auto& object) { return object.contactFields.fill(index, field); });
}

size_t qv_response_card_field_count(const qv_response* response) {
    return read<size_t>(response, 0, [](const auto& object) { return object.cardFields.size(); });
}

int32_t qv_response_card_field(const qv_response* response, size_t index, qv_card_field* field) {
    return read<int32_t>(response, 0, [&](const auto& object) {
        return index < object.cardFields.size() && fill(*object.cardFields[index], field);
    });
}

size_t qv_response_resource_count(const qv_response* response) {
    return read<size_t>(response, 0, [](const auto& object) { return object.resources.size(); });
}

int32_t qv_response_resource(const qv_response* response, size_t index, qv_resource* resource) {
    return read<int32_t>(response, 0, [&](const auto& object) { return object.resources.fill(index, resource); });
}
