#include "Completion.h"
#include "Handles.h"
#include "QVCardScan/QVBizCardManager.h"
#include "RequestObject.h"
#include "qvcardscan.h"

using namespace qvc;

namespace {

/// Runs what a function does with the request behind its handle.
template <typename Body>
qv_status withRequest(qv_request* request, qv_error** error, Body&& body) {
    return reported(error, [&] {
        const auto object = objectOf(request);
        return object ? body(*object) : deadHandle();
    });
}

}  // namespace

qv_request* qv_request_create(const char* note_uuid) {
    return guarded<qv_request*>(nullptr, [&]() -> qv_request* {
        if (note_uuid == nullptr || checkText(note_uuid, "note's identifier").status != QV_OK) return nullptr;
        return makeHandle<qv_request>(std::make_shared<RequestObject>(note_uuid));
    });
}

void qv_request_release(qv_request* request) {
    guardedDo([&] { takeObject(request); });
}

qv_status qv_request_add_picture_bytes(qv_request* request, const void* bytes, size_t length, const char* hash,
                                       qv_error** error) {
    return withRequest(request, error, [&](RequestObject& object) {
        if (bytes == nullptr) return Outcome::invalid("There are no bytes.");
        const auto* const first = static_cast<const std::uint8_t*>(bytes);
        return object.addPicture(qv::Image::initWithData(qv::Data(first, first + length)), hash);
    });
}

qv_status qv_request_add_picture_file(qv_request* request, const char* path, const char* hash, qv_error** error) {
    return withRequest(request, error, [&](RequestObject& object) {
        if (path == nullptr) return Outcome::invalid("There is no path.");
        return object.addPicture(qv::Image::initWithContentsOfFile(path), hash);
    });
}

qv_status qv_request_set_token(qv_request* request, const char* token, qv_error** error) {
    return withRequest(request, error, [&](RequestObject& object) { return object.setToken(token); });
}

qv_status qv_request_set_language(qv_request* request, const char* language, qv_error** error) {
    return withRequest(request, error, [&](RequestObject& object) { return object.setLanguage(language); });
}

void qv_request_set_skip_note(qv_request* request, int32_t skip_note) {
    guardedDo([&] {
        if (const auto object = objectOf(request)) object->setSkipsNote(skip_note != 0);
    });
}

void qv_request_set_completes_on_main_thread(qv_request* request, int32_t on_main_thread) {
    guardedDo([&] {
        if (const auto object = objectOf(request)) object->setCompletesOnMainThread(on_main_thread != 0);
    });
}

qv_status qv_request_run(qv_request* request, qv_completion completion, void* user_data, qv_release_function release,
                         qv_error** error) {
    return reported(error, [&] {
        const auto data = share(user_data, release);
        const auto object = objectOf(request);
        return object ? object->run(completion, data) : deadHandle();
    });
}

void qv_cancel(const char* note_uuid) {
    guardedDo([&] {
        if (note_uuid == nullptr) return;
        Completion::cancel(note_uuid);
        QVBizCardManager::sharedManager()->cancelRequestWithIDString(note_uuid);
    });
}
