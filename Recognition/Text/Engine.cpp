#include "Text/Engine.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/ltrresultiterator.h>
#include <tesseract/ocrclass.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>

// Present where the engine was built for several threads; absent elsewhere.
extern "C" void omp_set_max_active_levels(int levels) __attribute__((weak));

namespace qv::recognition {
namespace {

/// The engine asks for a fixed number of threads per layer, which slows it down on a busy machine. Its limit can be set
/// in the environment only before the process starts; a thread that allows no active parallel region has the same
/// effect.
void keepToThisThread() {
    if (omp_set_max_active_levels != nullptr) omp_set_max_active_levels(0);
}

tesseract::PageSegMode segmentation(PageMode mode) {
    switch (mode) {
        case PageMode::Page:
            return tesseract::PSM_AUTO;
        case PageMode::Block:
            return tesseract::PSM_SINGLE_BLOCK;
        case PageMode::Line:
            return tesseract::PSM_SINGLE_LINE;
        case PageMode::Sparse:
            break;
    }
    return tesseract::PSM_SPARSE_TEXT;
}

/// Lets the engine's own order of words be walked through.
class EngineAPI final : public tesseract::TessBaseAPI {
  public:
    using tesseract::TessBaseAPI::GetLTRIterator;
};

/// Follows a pass from piece to piece.
struct Progress {
    int taken = 0;
    bool isStretched = false;
};

class TesseractEngine final : public Engine {
  public:
    ~TesseractEngine() override {
        mAPI.End();
        // The dictionaries of every language that was ever opened would stay. What other engines use does.
        tesseract::TessBaseAPI::ClearPersistentCache();
    }

    bool load(const std::filesystem::path& models, const std::string& languages) {
        keepToThisThread();
        // Its remarks on empty boxes go straight to standard error, which belongs to the program.
        setMsgSeverity(L_SEVERITY_NONE);
        if (mAPI.Init(models.c_str(), languages.c_str(), tesseract::OEM_LSTM_ONLY) != 0) return false;
        mAPI.SetVariable("debug_file", "/dev/null");
        mAPI.SetVariable("classify_enable_learning", "0");
        // Upright text is what is wanted; whether the picture has to be turned is decided by reading it in each turn.
        mAPI.SetVariable("textord_tabfind_vertical_text", isVerticalScript(languages) ? "1" : "0");
        return true;
    }

    std::vector<Word> read(const cv::Mat& grey, PageMode mode, Deadline deadline) override {
        keepToThisThread();
        mAPI.SetPageSegMode(segmentation(mode));
        mAPI.SetImage(grey.data, grey.cols, grey.rows, 1, static_cast<int>(grey.step));
        mAPI.SetSourceResolution(kResolution);
        tesseract::ETEXT_DESC monitor;
        Progress progress;
        monitor.cancel_this = &progress;
        monitor.cancel = [](void* of, int all) { return isEnough(++static_cast<Progress*>(of)->taken, all); };
        // In the other modes rules are told from text, and not read.
        if (mode == PageMode::Sparse) monitor.progress_callback2 = &noteLength;
        // Nothing left would mean no deadline at all.
        monitor.set_deadline_msecs(std::max(1, static_cast<int>(deadline.left().count())));
        std::vector<Word> words;
        if (!deadline.passed()) {
            // A pass that is cut short fails, but keeps what it has read; the rest is blank.
            (void)mAPI.Recognize(&monitor);
            words = collect();
        }
        mAPI.Clear();
        mIsStretched = mIsStretched || progress.isStretched;
        return words;
    }

    bool isStretched() const override { return mIsStretched; }

  private:
    static constexpr int kResolution = 300;
    // A page of a book has 500; what comes after would only take time.
    static constexpr std::size_t kMostWords = 1500;

    // A card has 20 pieces of text.
    static constexpr int kManyPieces = 300;

    /// Asked before each piece of text. A pass that is complete ends with a search for paragraphs, which on the pieces
    /// that noise falls into takes minutes, whatever the deadline is: with many, the last is given up to be spared
    /// that.
    static bool isEnough(int piece, int pieces) { return pieces > kManyPieces && piece == pieces; }

    // In heights of a line, with the margin that the engine puts around it. It makes twelve steps for each, and keeps
    // what every step of the longest line took, up to 13 KB. Text on cards has at most 25; the edge of a card that was
    // left in the picture has up to 170 when it is taken for a line, and keeps up to 15 MB. Less than this is not worth
    // the time to open an engine.
    static constexpr int kLong = 60;
    static constexpr int kMargin = 4;

    /// Called before each piece of text with its place.
    static bool noteLength(tesseract::ETEXT_DESC* monitor, int left, int right, int top, int bottom) {
        if (right - left > kLong * (std::abs(top - bottom) + 2 * kMargin))
            static_cast<Progress*>(monitor->cancel_this)->isStretched = true;
        return true;
    }

    static bool isVerticalScript(const std::string& languages) {
        return languages.rfind("jpn", 0) == 0 || languages.rfind("chi", 0) == 0;
    }

    /// In the order in which the engine keeps them: putting a line of noise in reading order takes it minutes.
    std::vector<Word> collect() {
        std::vector<Word> words;
        const std::unique_ptr<tesseract::LTRResultIterator> results(mAPI.GetLTRIterator());
        if (!results) return words;
        do {
            if (auto word = wordAt(*results); !word.text.empty()) words.push_back(std::move(word));
        } while (words.size() < kMostWords && results->Next(tesseract::RIL_WORD));
        return words;
    }

    static Word wordAt(const tesseract::LTRResultIterator& results) {
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        const std::unique_ptr<char[]> text(results.GetUTF8Text(tesseract::RIL_WORD));
        if (!text || !results.BoundingBox(tesseract::RIL_WORD, &left, &top, &right, &bottom)) return {};
        Word word;
        word.text = text.get();
        word.text.erase(std::remove_if(word.text.begin(), word.text.end(), [](char c) { return c >= 0 && c <= ' '; }),
                        word.text.end());
        word.box = {static_cast<float>(left), static_cast<float>(top), static_cast<float>(right - left),
                    static_cast<float>(bottom - top)};
        word.confidence = std::clamp(results.Confidence(tesseract::RIL_WORD), 0.F, 100.F);
        return word;
    }

    EngineAPI mAPI;
    bool mIsStretched = false;
};

}  // namespace

std::unique_ptr<Engine> Engine::open(const std::filesystem::path& models, const std::string& languages) {
    auto engine = std::make_unique<TesseractEngine>();
    return engine->load(models, languages) ? std::move(engine) : nullptr;
}

}  // namespace qv::recognition
