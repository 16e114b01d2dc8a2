#include "Soak/ListedCards.h"

#include "QVPlatform/Image.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace soak {

ListedCards::ListedCards(const std::filesystem::path& list) {
    std::ifstream file(list);
    for (std::string text; std::getline(file, text);) {
        std::istringstream parts(text);
        Line line;
        std::getline(parts, line.language, '\t');
        for (std::string picture; std::getline(parts, picture, '\t');)
            line.pictures.emplace_back(picture);
        mLines.push_back(std::move(line));
    }
    if (mLines.empty()) throw std::runtime_error("no cards in " + list.string());
}

SoakCard ListedCards::card(int number) const {
    const Line& line = mLines[static_cast<std::size_t>(number) % mLines.size()];
    auto pictures = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    auto hashes = std::make_shared<std::vector<std::string>>();
    for (const auto& picture : line.pictures) {
        pictures->push_back(qv::Image::initWithContentsOfFile(picture));
        hashes->push_back(picture.filename().string());
    }
    auto request = QVCardProcessingRequest::initWithNoteUUID("note-" + std::to_string(number), pictures, hashes, "any",
                                                             /*processImageForOCR=*/false);
    request->setRecoLanguage(line.language);
    return {.request = std::move(request)};
}

std::string ListedCards::problemOf(int, const QVCardProcessingResponse& response) const {
    const auto errors = response.errors();
    if (!errors || !errors->empty()) return "an error";
    const auto raw = response.rawResultForFirstCard();
    if (!raw || !raw->ends_with("</recoIndex>")) return "no whole result";
    if (!response.contact() || !response.qvmlContent()) return "no contact and note";
    return {};
}

}  // namespace soak
