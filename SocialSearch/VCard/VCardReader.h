#pragma once

#include "VCard/VCardLine.h"

#include <string>
#include <string_view>
#include <vector>

/// Takes a file with one card apart, so that its lines joined are the file again. What it does not understand it keeps;
/// what is not well formed it refuses, because nobody can change such a card with certainty.
class VCardReader {
  public:
    explicit VCardReader(std::string_view bytes) : mBytes(bytes) {}

    /// Says whether the card is well formed; `problem()` tells what is wrong with it otherwise.
    bool read();

    const std::string& problem() const { return mProblem; }
    std::vector<VCardLine>&& takeLines() { return std::move(mLines); }
    QVVCardVersion version() const { return mVersion; }
    std::string lineEnd() const { return mLineEnd; }

  private:
    bool fail(std::string problem);
    bool findVersion();
    void findLineEnd();
    bool readLine();
    bool addLine(std::size_t begin, const std::string& text);
    bool addFrame(VCardLine line, bool isBegin);
    bool checkWhole();
    std::string_view physicalLine();
    std::string unfoldedLine();
    std::string logicalLine();
    void appendFolds(std::string& text);
    void appendSoftBreaks(std::string& text);

    std::string_view mBytes;
    std::size_t mPosition = 0;
    QVVCardVersion mVersion = QVVCardVersion::V30;
    std::string mLineEnd;
    std::vector<VCardLine> mLines;
    int mDepth = 0;
    bool mIsOver = false;
    std::string mProblem;
};
