#pragma once

#include "Text/Deadline.h"
#include "Text/Word.h"

#include <opencv2/core.hpp>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace qv::recognition {

/// How the engine looks for text: anywhere in the picture, as a page with columns, as one block, or as a single line.
enum class PageMode { Sparse, Page, Block, Line };

/// A text-recognition engine with its language models loaded. Belongs to the thread that opened it; runs on that thread
/// alone, whatever the libraries under it would like.
class Engine {
  public:
    /// Loads the models named as in "eng" or "jpn+eng". Null when one of them cannot be loaded from `models`.
    static std::unique_ptr<Engine> open(const std::filesystem::path& models, const std::string& languages);

    virtual ~Engine() = default;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// The words in an 8-bit grey picture, boxes in its pixels. At the deadline it ends with what was read by then,
    /// which may be nothing.
    virtual std::vector<Word> read(const cv::Mat& grey, PageMode mode, Deadline deadline) = 0;

    /// Whether a line was read that is far longer than any text. An engine never gives back what its longest line took:
    /// megabytes. One that is opened anew has none of it.
    virtual bool isStretched() const = 0;

  protected:
    Engine() = default;
};

}  // namespace qv::recognition
