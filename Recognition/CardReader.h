#pragma once

#include "DebugFolder.h"
#include "Fields/Field.h"
#include "Picture/JPEGDecoder.h"
#include "Picture/PlaneMap.h"
#include "Recogniser.h"
#include "Text/Engine.h"
#include "Text/Languages.h"
#include "Text/Reading.h"

#include <opencv2/core.hpp>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace qv::recognition {

/// The road of one card: picture → text → fields → answer. Keeps the engines of the languages it was last asked for,
/// English from the start, but nothing of one card for the next. Belongs to one thread.
class CardReader final : public Recogniser {
  public:
    struct Options {
        std::filesystem::path models;
        std::chrono::milliseconds timeLimit{15000};  ///< after it a card ends with what was found by then
        std::filesystem::path debugFolder;           ///< empty: nothing of any card is kept
    };

    /// Null when the English model cannot be loaded.
    static std::unique_ptr<CardReader> open(Options options);

    Recognition recognise(std::span<const std::uint8_t> jpeg, const std::string& contentLanguage) override;
    void rest() override;

  private:
    struct LoadedEngine {
        std::string models;
        std::unique_ptr<Engine> engine;
    };

    explicit CardReader(Options options) : mOptions(std::move(options)), mDebug(mOptions.debugFolder) {}

    Engine* engineFor(const ReadingLanguage& language);
    std::vector<Field> fieldsOf(SentPicture& sent, Engine& engine, const ReadingLanguage& language, Deadline deadline,
                                Recognition& report, int& orient);
    std::vector<Field> printOf(const SentPicture& sent, Engine& engine, const ReadingLanguage& language,
                               Deadline deadline, Recognition& report, int& orient);

    bool readVertically(Reading& reading, const cv::Mat& even, const ReadingLanguage& language, Deadline deadline);

    Options mOptions;
    DebugFolder mDebug;
    std::vector<LoadedEngine> mEngines;
};

}  // namespace qv::recognition
