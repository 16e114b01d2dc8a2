#include "Batch/CardRecord.h"

#include "QVPlatform/Text.h"
#include "Support/FileReading.h"

#include <system_error>
#include <utility>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargest = std::size_t{64} * 1024 * 1024;

bool isText(const std::string& bytes) {
    return qv::Text::stringFromUTF8(qv::Data(bytes.begin(), bytes.end())).has_value();
}

/// JSON holds text only.
std::string asText(const std::string& name) {
    if (isText(name)) return name;
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
        }
    }
    return text;
}

std::optional<PictureState> pictureIn(const JSON::Value& object) {
    if (!object.is_object()) return std::nullopt;
    PictureState picture{stringIn(object, "file"), 0, stringIn(object, "modified"), stringIn(object, "md5")};
    const auto size = object.find("size");
    if (picture.file.empty() || size == object.end() || !size->is_number_unsigned()) return std::nullopt;
    picture.size = size->get<std::uintmax_t>();
    return picture;
}

}  // namespace

std::optional<PictureState> PictureState::of(const fs::path& file) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (error) return std::nullopt;
    const auto modified = fs::last_write_time(file, error).time_since_epoch().count();
    const fs::path whole = fs::canonical(file, error);
    if (error) return std::nullopt;
    return PictureState{asText(whole.string()), size, std::to_string(modified), ""};
}

bool CardRecord::isComplete() const {
    const auto complete = object.find("complete");
    return complete != object.end() && complete->is_boolean() && complete->get<bool>();
}

std::string CardRecord::savedIn() const {
    return stringIn(object, "savedIn");
}

std::optional<CardRecord> CardRecord::read(const fs::path& folder) {
    const auto bytes = readFile(folder / kFile, kLargest);
    if (!bytes) return std::nullopt;
    CardRecord record;
    record.name = folder.filename().string();
    record.object = JSON::Value::parse(bytes->begin(), bytes->end(), nullptr, /*allow_exceptions=*/false);
    if (!record.object.is_object()) return std::nullopt;
    const auto pictures = record.object.find("pictures");
    if (pictures == record.object.end() || !pictures->is_array() || pictures->empty()) return std::nullopt;
    for (const auto& object : *pictures) {
        auto picture = pictureIn(object);
        if (!picture) return std::nullopt;
        record.pictures.push_back(*std::move(picture));
    }
    return record;
}

std::vector<std::string> stringsIn(const JSON::Value& object, const char* key) {
    std::vector<std::string> strings;
    const auto found = object.is_object() ? object.find(key) : object.end();
    if (found == object.end() || !found->is_array()) return strings;
    for (const auto& entry : *found) {
        if (entry.is_string() && !entry.get_ref<const std::string&>().empty()) strings.push_back(entry);
    }
    return strings;
}

std::string stringIn(const JSON::Value& object, const char* key) {
    if (!object.is_object()) return "";
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace qvhost
