#include "Support/CodeDrawing.h"

#include <array>
#include <cstdlib>

// Chance never hits upon a code whose correction fits what it says: the bytes are made up, and everything around them
// is right.

namespace fuzzing {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kDark = 0;
constexpr std::uint8_t kLight = 255;
/// Versions up to this one are one block at the lowest level of correction.
constexpr int kVersions = 5;
constexpr std::array<std::size_t, kVersions> kRoom{19, 34, 55, 80, 108};
constexpr std::array<std::size_t, kVersions> kCorrection{7, 10, 15, 20, 26};

std::uint8_t product(unsigned a, unsigned b) {
    unsigned result = 0;
    for (; b != 0; b >>= 1U) {
        if ((b & 1U) != 0) result ^= a;
        a = (a << 1U) ^ ((a & 0x80U) != 0 ? 0x11DU : 0U);
    }
    return static_cast<std::uint8_t>(result);
}

/// The Reed-Solomon remainder, over the field of x^8 + x^4 + x^3 + x^2 + 1.
Bytes correctionOf(const Bytes& bytes, std::size_t count) {
    Bytes generator{1};
    for (std::uint8_t root = 1; generator.size() <= count; root = product(root, 2)) {
        generator.push_back(0);
        for (std::size_t i = generator.size() - 1; i > 0; --i)
            generator[i] ^= product(generator[i - 1], root);
    }
    Bytes remainder(count, 0);
    for (const std::uint8_t byte : bytes) {
        const std::uint8_t factor = byte ^ remainder.front();
        remainder.erase(remainder.begin());
        remainder.push_back(0);
        for (std::size_t i = 0; i < count; ++i)
            remainder[i] ^= product(generator[i + 1], factor);
    }
    return remainder;
}

/// Level L and the mask, with the correction of their own.
unsigned formatOf(int mask) {
    const unsigned data = 1U << 3U | static_cast<unsigned>(mask);
    unsigned rest = data << 10U;
    for (int bit = 14; bit >= 10; --bit)
        rest ^= (rest >> static_cast<unsigned>(bit) & 1U) * (0x537U << static_cast<unsigned>(bit - 10));
    return (data << 10U | rest) ^ 0x5412U;
}

bool isMasked(int mask, int x, int y) {
    switch (mask) {
        case 0:
            return (x + y) % 2 == 0;
        case 1:
            return y % 2 == 0;
        case 2:
            return x % 3 == 0;
        case 3:
            return (x + y) % 3 == 0;
        case 4:
            return (y / 2 + x / 3) % 2 == 0;
        case 5:
            return x * y % 2 + x * y % 3 == 0;
        case 6:
            return (x * y % 2 + x * y % 3) % 2 == 0;
        default:
            return ((x + y) % 2 + x * y % 3) % 2 == 0;
    }
}

class Drawing {
  public:
    Drawing(int version, int mask)
        : mMask(mask),
          mSize(17 + 4 * version),
          mModules(mSize, mSize, CV_8U, cv::Scalar(kLight)),
          mIsTaken(mSize, mSize, CV_8U, cv::Scalar(0)) {
        for (int i = 0; i < mSize; ++i) {
            set(6, i, i % 2 == 0);
            set(i, 6, i % 2 == 0);
        }
        for (const cv::Point corner : {cv::Point(3, 3), cv::Point(mSize - 4, 3), cv::Point(3, mSize - 4)})
            drawRings(corner, 4, 3, 2);
        if (version > 1) drawRings({mSize - 7, mSize - 7}, 2, 2, 1);
        drawFormat();
    }

    /// Upwards and downwards in columns of two, from the right.
    void write(const Bytes& bytes) {
        std::size_t bit = 0;
        bool isUp = true;
        for (int right = mSize - 1; right > 0; right -= 2, isUp = !isUp) {
            if (right == 6) --right;
            for (int i = 0; i < 2 * mSize; ++i)
                writeModule(right - i % 2, isUp ? mSize - 1 - i / 2 : i / 2, bytes, bit);
        }
    }

    cv::Mat modules() const { return mModules; }

  private:
    void set(int x, int y, bool isDark) {
        mModules.at<std::uint8_t>(y, x) = isDark ? kDark : kLight;
        mIsTaken.at<std::uint8_t>(y, x) = 1;
    }

    /// Squares around a point: all is dark but the light one; beyond `dark` is the quiet edge.
    void drawRings(cv::Point centre, int reach, int dark, int light) {
        for (int y = std::max(0, centre.y - reach); y <= std::min(mSize - 1, centre.y + reach); ++y) {
            for (int x = std::max(0, centre.x - reach); x <= std::min(mSize - 1, centre.x + reach); ++x) {
                const int ring = std::max(std::abs(x - centre.x), std::abs(y - centre.y));
                set(x, y, ring <= dark && ring != light);
            }
        }
    }

    void drawFormat() {
        const unsigned format = formatOf(mMask);
        for (int i = 0; i < 15; ++i) {
            const bool isDark = (format >> static_cast<unsigned>(i) & 1U) != 0;
            set(8, i < 6 ? i : i < 8 ? i + 1 : mSize - 15 + i, isDark);
            set(i < 8 ? mSize - 1 - i : i == 8 ? 7 : 14 - i, 8, isDark);
        }
        set(8, mSize - 8, /*isDark=*/true);
    }

    void writeModule(int x, int y, const Bytes& bytes, std::size_t& bit) {
        if (mIsTaken.at<std::uint8_t>(y, x) != 0) return;
        const bool isSet = bit < bytes.size() * 8 && (bytes[bit / 8] >> (7 - bit % 8) & 1) != 0;
        ++bit;
        mModules.at<std::uint8_t>(y, x) = isSet != isMasked(mMask, x, y) ? kDark : kLight;
    }

    int mMask;
    int mSize;
    cv::Mat mModules;
    cv::Mat mIsTaken;
};

}  // namespace

std::size_t roomOfCode(int version) {
    return kRoom.at(static_cast<std::size_t>(version - 1));
}

cv::Mat drawnCode(int version, int mask, std::vector<std::uint8_t> bytes) {
    bytes.resize(roomOfCode(version), 0);
    const Bytes correction = correctionOf(bytes, kCorrection.at(static_cast<std::size_t>(version - 1)));
    bytes.insert(bytes.end(), correction.begin(), correction.end());
    Drawing drawing(version, mask);
    drawing.write(bytes);
    return drawing.modules();
}

}  // namespace fuzzing
