#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace qv::recognition {

/// The language that a card is read in.
struct ReadingLanguage {
    std::string code;         ///< as answers name it: "de"
    std::string models;       ///< as the engine names its models: "deu", "jpn+eng"
    bool isFallback = false;  ///< the one asked for is unknown or not installed, and English takes its place
};

/// The language for a request's "content-language": region and script subtags count for nothing, case neither, and of a
/// list the first counts. One whose model is not in `models` falls back to English.
ReadingLanguage readingLanguage(std::string_view contentLanguage, const std::filesystem::path& models);

/// Whether a model file for the engine's name of a language is in the folder.
bool isInstalled(const std::filesystem::path& models, const std::string& model);

/// The folder of the models that came with the system; empty when there is none.
std::filesystem::path installedModels();

}  // namespace qv::recognition
