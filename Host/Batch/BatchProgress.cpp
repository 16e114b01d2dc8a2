#include "Batch/BatchProgress.h"

#include "Support/StandardStreams.h"
#include "Support/TerminalText.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

namespace qvhost {
namespace {

constexpr std::size_t kEndsLookedAt = 30;
constexpr std::chrono::milliseconds kPause{100};
constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kLongestBar = 40;
constexpr std::size_t kShortestBar = 8;

/// Asked each time, because windows change their size.
std::size_t terminalWidth() {
    winsize size = {};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualWidth;
    return size.ws_col;
}

std::string bar(const BatchCount& count, std::size_t width) {
    const std::size_t filled = count.total > 0 ? width * std::min(count.done, count.total) / count.total : 0;
    return "[" + std::string(filled, '#') + std::string(width - filled, '.') + "] ";
}

std::string rateText(double rate) {
    char text[32];
    // Never the locale's decimal sign: the program sets none.
    (void)std::snprintf(text, sizeof text, rate >= 10 ? "%.0f/s" : (rate >= 0.1 ? "%.1f/s" : "%.2f/s"), rate);
    return text;
}

std::vector<std::string> piecesOf(const BatchCount& count, double rate) {
    std::vector<std::string> pieces{std::to_string(count.done) + "/" + std::to_string(count.total)};
    if (rate > 0 && count.done < count.total) {
        pieces.push_back(durationText(static_cast<double>(count.total - count.done) / rate) + " left");
        pieces.push_back(rateText(rate));
    }
    if (count.failed > 0) pieces.insert(pieces.begin() + 1, std::to_string(count.failed) + " failed");
    return pieces;
}

}  // namespace

std::string durationText(double seconds) {
    constexpr double kLongest = 359999;
    const auto whole = static_cast<long>(std::ceil(std::clamp(seconds, 0.0, kLongest)));
    char text[48];
    if (whole >= 3600) {
        (void)std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60, whole % 60);
    } else {
        (void)std::snprintf(text, sizeof text, "%ld:%02ld", whole / 60, whole % 60);
    }
    return text;
}

std::string progressLine(const BatchCount& count, double rate, std::size_t width) {
    std::string line;
    for (const std::string& piece : piecesOf(count, rate)) {
        const std::size_t gap = line.empty() ? 0 : 2;
        if (line.size() + gap + piece.size() > width) break;
        line.append(gap, ' ').append(piece);
    }
    // The brackets and a blank.
    const std::size_t used = line.size() + 3;
    if (used + kShortestBar > width) return line;
    return bar(count, std::min(width - used, kLongestBar)) + line;
}

BatchProgress::BatchProgress(std::size_t total, std::size_t done)
    : mCount{total, done, 0}, mIsTerminal(::isatty(STDERR_FILENO) == 1) {
    mEnds.push_back(Clock::now());
    show();
}

BatchProgress::~BatchProgress() {
    StandardStreams::showStatus("");
}

void BatchProgress::add(const std::string& words, bool failed) {
    ++mCount.done;
    if (failed) ++mCount.failed;
    mEnds.push_back(Clock::now());
    if (mEnds.size() > kEndsLookedAt) mEnds.pop_front();
    if (mIsTerminal) return show();
    StandardStreams::writeError(std::to_string(mCount.done) + "/" + std::to_string(mCount.total) + " " +
                                TerminalText::printable(words) + "\n");
}

double BatchProgress::rate() const {
    const double seconds = std::chrono::duration<double>(Clock::now() - mEnds.front()).count();
    return mEnds.size() < 2 || seconds <= 0 ? 0 : static_cast<double>(mEnds.size() - 1) / seconds;
}

void BatchProgress::show() {
    const auto now = Clock::now();
    if (!mIsTerminal || (mShown && now - *mShown < kPause)) return;
    mShown = now;
    // The last column stays free: some terminals go to the next line when it is written.
    std::string line = progressLine(mCount, rate(), terminalWidth() - 1);
    if (line == mLine) return;
    mLine = std::move(line);
    StandardStreams::showStatus(mLine);
}

}  // namespace qvhost
