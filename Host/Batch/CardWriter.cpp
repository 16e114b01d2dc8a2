#include "Batch/CardWriter.h"

#include "Batch/ContactVCard.h"
#include "Output/ResultFolder.h"
#include "Output/ScanJSON.h"
#include "QVPlatform/MD5.h"
#include "Support/FileWriting.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

/// Twice the size at which it is shown, for dense screens.
constexpr double kThumbnailSide = 480;

std::string_view textOf(const qv::Data& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

qv::Size fitted(qv::Size size) {
    const double scale = std::min(1.0, kThumbnailSide / std::max(size.width, size.height));
    return {std::max(1.0, std::round(size.width * scale)), std::max(1.0, std::round(size.height * scale))};
}

std::int64_t rotationOf(const ScanOutcome& outcome, const std::string& hash) {
    const QVRotationMap map = outcome.response->imageRotationMap();
    const auto found = map ? map->find(hash) : std::map<std::string, std::int64_t>::const_iterator();
    return map && found != map->end() ? found->second : 0;
}

JSON::Value picturesJSON(const std::vector<PictureState>& pictures) {
    JSON::Value list = JSON::Value::array();
    for (const PictureState& picture : pictures) {
        list.push_back(
            {{"file", picture.file}, {"size", picture.size}, {"modified", picture.modified}, {"md5", picture.hash}});
    }
    return list;
}

class Writer {
  public:
    Writer(const fs::path& folder, const ReadCard& card, CardRecord& record)
        : mFolder(folder), mCard(card), mRecord(record) {}

    std::optional<Failure> run() {
        const Resources resources(mCard.pictures, *mCard.outcome.response);
        if (auto failure = ResultFolder(mFolder).write(mCard.outcome, resources)) return failure;
        if (auto failure = writeThumbnails()) return failure;
        if (auto failure = writeContact()) return failure;
        makeRecord();
        if (auto failure = writeFile(mFolder / CardRecord::kFile, JSON::text(mRecord.object))) return failure;
        for (const fs::path& folder : {mFolder / "resources", mFolder}) {
            std::error_code error;
            const int number = fs::exists(folder, error) ? syncFolder(folder) : 0;
            if (number != 0) return Failure{ExitStatus::NotWritten, "\"" + folder.string() + "\" was not kept."};
        }
        return std::nullopt;
    }

  private:
    std::optional<Failure> writeThumbnails() {
        constexpr const char* kNames[] = {"thumbnail-front.jpg", "thumbnail-back.jpg"};
        for (std::size_t i = 0; i < mCard.pictures.size() && i < std::size(kNames); ++i) {
            const CardPicture& picture = mCard.pictures[i];
            const qv::Size size = fitted(picture.image->size());
            const auto jpeg =
                qv::Image::initWithSize(size, picture.image)->representationUsingType(qv::ImageFileType::JPEG, 0.75);
            if (!jpeg) continue;
            if (auto failure = writeFile(mFolder / kNames[i], textOf(*jpeg))) return failure;
            mThumbnails.push_back({{"file", kNames[i]},
                                   {"width", static_cast<int>(size.width)},
                                   {"height", static_cast<int>(size.height)},
                                   {"rotation", rotationOf(mCard.outcome, picture.hash)}});
        }
        return std::nullopt;
    }

    std::optional<Failure> writeContact() const {
        const auto contact = mCard.outcome.response->contact();
        return contact ? writeFile(mFolder / "contact.vcf", contactVCard(*contact, mCard.UID)) : std::nullopt;
    }

    void makeRecord() {
        mRecord.name = mCard.name;
        mRecord.pictures = mCard.states;
        mRecord.object = {{"name", mCard.name},
                          {"pictures", picturesJSON(mCard.states)},
                          {"language", JSON::from(mCard.language)},
                          {"complete", mCard.problems.empty()},
                          {"savedIn", mCard.savedIn},
                          {"problems", mCard.problems},
                          {"remarks", mCard.remarks},
                          {"thumbnails", mThumbnails}};
        mRecord.object.update(scanJSON(mCard.outcome, mCard.person));
    }

    const fs::path& mFolder;
    const ReadCard& mCard;
    CardRecord& mRecord;
    JSON::Value mThumbnails = JSON::Value::array();
};

}  // namespace

std::string contactUID(const std::vector<PictureState>& pictures) {
    std::string name = "qvcardscan batch";
    for (const PictureState& picture : pictures)
        name.append(" ").append(picture.hash);
    std::string digits = qv::lowerHexMD5(qv::Data(name.begin(), name.end()));
    // RFC 4122, 4.3: a name-based UUID, version 3.
    digits[12] = '3';
    digits[16] = "89ab"[(digits[16] >= 'a' ? digits[16] - 'a' + 10 : digits[16] - '0') & 3];
    for (const std::size_t position : {20, 16, 12, 8})
        digits.insert(position, 1, '-');
    return digits;
}

std::optional<Failure> writeCard(const BatchFolder& folder, const ReadCard& card, CardRecord& record) {
    if (auto failure = folder.beginCard()) return failure;
    const fs::path place = folder.unfinishedCard();
    auto failure = Writer(place, card, record).run();
    if (!failure) failure = folder.finishCard(card.name);
    std::error_code ignored;
    if (failure) fs::remove_all(place, ignored);
    return failure;
}

}  // namespace qvhost
