#pragma once

#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVPlatform/Image.h"
#include "QVPlatform/URL.h"
#include "Support/ScriptedServer.h"
#include "Support/TestImages.h"

#include <any>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Short ways to make pictures, requests and the server's answers for tests.
namespace scans {

/// One recognised field of an answer.
struct Item {
    std::string type;
    std::string text;
    int orient = 0;
    int weight = 90;
};

inline const Item kName{"NAME", "Jordan Example"};
inline const Item kTitle{"TITLE", "Head"};
inline const Item kEmail{"EMAIL", "jordan@example.com"};
inline const Item kPhone{"PHONE", "+1 202 555 0142"};

/// A recognition result.
inline std::string result(const std::vector<Item>& items) {
    std::string xml = R"(<recoIndex lang="en" objWidth="1024" objHeight="600">)";
    for (const Item& item : items) {
        xml += "<item fldType=\"" + item.type + "\" orient=\"" + std::to_string(item.orient) + "\"><t w=\"" +
               std::to_string(item.weight) + "\">" + item.text + "</t></item>";
    }
    return xml + "</recoIndex>";
}

/// The answer that carries it.
inline std::string answer(const std::vector<Item>& items) {
    return testsupport::ScriptedServer::answer(200, result(items));
}

/// A small picture; the narrower, the faster it is prepared.
inline std::shared_ptr<qv::Image> picture(int width = 64, int height = 2) {
    return qv::Image::initWithData(testsupport::makePNG(testsupport::quarters(width, height)));
}

inline QVImageArray pictures(std::initializer_list<std::shared_ptr<qv::Image>> images) {
    return std::make_shared<std::vector<std::shared_ptr<qv::Image>>>(images);
}

inline QVStringArray strings(std::initializer_list<std::string> texts) {
    return std::make_shared<std::vector<std::string>>(texts);
}

/// A request that lacks nothing.
inline std::shared_ptr<QVCardProcessingRequest> request(QVString noteUUID = "note-1", QVString token = "token-1") {
    return QVCardProcessingRequest::initWithNoteUUID(std::move(noteUUID), pictures({picture()}), strings({"hash-1"}),
                                                     std::move(token), /*processImageForOCR=*/false);
}

inline std::shared_ptr<QVCardProcessingOperation> operationFor(std::shared_ptr<QVCardProcessingRequest> request,
                                                               const std::string& url) {
    return QVCardProcessingOperation::initWithRequest(std::move(request), qv::URL::URLWithString(url));
}

/// The codes of a list of errors, all of the framework's own domain; -1 stands for an error of another.
inline std::vector<long> codesOf(const std::shared_ptr<std::vector<qv::Error>>& errors) {
    std::vector<long> codes;
    for (const qv::Error& error : *errors)
        codes.push_back(error.domain == "kQVCardProcessingErrorDomain" ? error.code : -1);
    return codes;
}

/// The transport error behind an error; throws when there is none or when anything else is attached.
inline qv::Error underlyingErrorOf(const qv::Error& error) {
    if (error.userInfo.size() != 1) throw std::bad_any_cast();
    return std::any_cast<qv::Error>(error.userInfo.at("kQVCardProcessingUnderlyingErrorKey"));
}

}  // namespace scans
