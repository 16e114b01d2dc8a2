#include "Support/PrintedText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace benchmarksupport {

namespace {

constexpr int kColumns = 5;
constexpr int kRows = 7;
constexpr double kAdvance = 6.0 / kRows;  // in letter heights

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789@.-+";

// Each row's five lowest bits, the leftmost column highest.
constexpr std::array<std::array<std::uint8_t, kRows>, kLetters.size()> kGlyphs = {{
    {14, 17, 17, 31, 17, 17, 17}, {30, 17, 17, 30, 17, 17, 30}, {14, 17, 16, 16, 16, 17, 14},
    {30, 17, 17, 17, 17, 17, 30}, {31, 16, 16, 30, 16, 16, 31}, {31, 16, 16, 30, 16, 16, 16},
    {14, 17, 16, 23, 17, 17, 15}, {17, 17, 17, 31, 17, 17, 17}, {14, 4, 4, 4, 4, 4, 14},
    {7, 2, 2, 2, 2, 18, 12},      {17, 18, 20, 24, 20, 18, 17}, {16, 16, 16, 16, 16, 16, 31},
    {17, 27, 21, 21, 17, 17, 17}, {17, 17, 25, 21, 19, 17, 17}, {14, 17, 17, 17, 17, 17, 14},
    {30, 17, 17, 30, 16, 16, 16}, {14, 17, 17, 17, 21, 18, 13}, {30, 17, 17, 30, 20, 18, 17},
    {15, 16, 16, 14, 1, 1, 30},   {31, 4, 4, 4, 4, 4, 4},       {17, 17, 17, 17, 17, 17, 14},
    {17, 17, 17, 17, 17, 10, 4},  {17, 17, 17, 21, 21, 21, 10}, {17, 17, 10, 4, 10, 17, 17},
    {17, 17, 10, 4, 4, 4, 4},     {31, 1, 2, 4, 8, 16, 31},     {14, 17, 19, 21, 25, 17, 14},
    {4, 12, 4, 4, 4, 4, 14},      {14, 17, 1, 2, 4, 8, 31},     {31, 2, 4, 2, 1, 17, 14},
    {2, 6, 10, 18, 31, 2, 2},     {31, 16, 30, 1, 1, 17, 14},   {6, 8, 16, 30, 17, 17, 14},
    {31, 1, 2, 4, 8, 8, 8},       {14, 17, 17, 14, 17, 17, 14}, {14, 17, 17, 15, 1, 2, 12},
    {14, 17, 1, 13, 21, 21, 14},  {0, 0, 0, 0, 0, 12, 12},      {0, 0, 0, 31, 0, 0, 0},
    {0, 4, 4, 31, 4, 4, 0},
}};

constexpr std::array<PrintedLine, 12> kLines = {{
    {0.06, 0.070, 0.045, "EDMUND HARTWELL"},
    {0.06, 0.132, 0.024, "SENIOR SURVEYOR"},
    {0.06, 0.170, 0.024, "HARTWELL + SONS LAND SURVEYS"},
    {0.06, 0.260, 0.018, "14 ORCHARD LANE  DEPARTMENT 3"},
    {0.06, 0.295, 0.018, "NORTH HAVEN 90417"},
    {0.06, 0.350, 0.018, "PHONE +1 555 0142 776"},
    {0.06, 0.385, 0.018, "MOBILE +1 555 0198 203"},
    {0.06, 0.420, 0.018, "EDMUND@HARTWELL-SURVEYS.EXAMPLE"},
    {0.55, 0.500, 0.011, "REGISTERED 1987  NO. 44-1093-B"},
    {0.55, 0.522, 0.011, "BOUNDARY  TOPOGRAPHIC  ALTA SURVEYS"},
    {0.55, 0.544, 0.008, "PRINTED ON RECYCLED COTTON PAPER"},
    {0.06, 0.544, 0.008, "MEMBER OF THE SURVEYORS COUNCIL SINCE 1991"},
}};

double dotOf(const std::array<std::uint8_t, kRows>& glyph, int column, int row) {
    if (column < 0 || column >= kColumns || row < 0 || row >= kRows) return 0;
    return (glyph[static_cast<std::size_t>(row)] >> (kColumns - 1 - column)) & 1;
}

/// The glyph's dots joined to strokes: interpolated, then cut at one half with an edge about a pixel wide.
double strokeAt(const std::array<std::uint8_t, kRows>& glyph, double column, double row, double pixelsPerDot) {
    const double x = column - 0.5;
    const double y = row - 0.5;
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const double right = x - left;
    const double below = y - top;
    const double upper = dotOf(glyph, left, top) * (1 - right) + dotOf(glyph, left + 1, top) * right;
    const double lower = dotOf(glyph, left, top + 1) * (1 - right) + dotOf(glyph, left + 1, top + 1) * right;
    return std::clamp(0.5 + (upper * (1 - below) + lower * below - 0.45) * std::max(pixelsPerDot, 1.0), 0.0, 1.0);
}

double inkOfLine(const PrintedLine& line, double x, double y, double sharpness) {
    const double row = (y - line.top) / line.height;
    const double place = (x - line.left) / line.height / kAdvance;
    if (row < -0.1 || row > 1.1 || place < 0 || place >= static_cast<double>(line.text.size())) return 0;
    const auto index = static_cast<std::size_t>(place);
    const std::size_t letter = kLetters.find(line.text[index]);
    if (letter == std::string_view::npos) return 0;
    const double column = (place - static_cast<double>(index)) * 6;
    return strokeAt(kGlyphs[letter], column, row * kRows, sharpness * line.height / kRows);
}

}  // namespace

double inkAt(double x, double y, double sharpness) {
    double ink = 0;
    for (const PrintedLine& line : kLines)
        ink = std::max(ink, inkOfLine(line, x, y, sharpness));
    return ink;
}

}  // namespace benchmarksupport
