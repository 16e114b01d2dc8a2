#include "Picture/CardOutline.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace qv::recognition {
namespace {

constexpr int kSearchSide = 480;
constexpr float kSmallestShare = 0.12F;  // of the picture's area
constexpr float kLargestShare = 0.985F;
constexpr float kSmallestAspect = 1.2F;
constexpr float kLargestAspect = 2.3F;
constexpr float kSquarest = 0.55F;    // cosine of the sharpest corner
constexpr float kEdge = 22;           // gradient that counts as an edge, in grey levels per pixel
constexpr float kWeakestSide = 0.5F;  // share of a side that has to lie on an edge
constexpr float kMeanSide = 0.72F;
constexpr int kSamples = 48;
constexpr int kReach = 6;  // how far, in pixels, an edge may lie beside the first guess of a side

using Quad = std::vector<cv::Point2f>;

struct Candidate {
    Quad corners;
    float support = 0;  ///< mean share of the sides that lies on edges
    float score = 0;
};

cv::Mat shrunk(const cv::Mat& colour, double scale) {
    cv::Mat small;
    cv::resize(colour, small, {}, scale, scale, cv::INTER_AREA);
    cv::GaussianBlur(small, small, {5, 5}, 0);
    return small;
}

/// The strongest gradient over the three colours.
cv::Mat gradientOf(const cv::Mat& colour) {
    cv::Mat channels[3];
    cv::split(colour, channels);
    cv::Mat strongest = cv::Mat::zeros(colour.size(), CV_32F);
    for (const auto& channel : channels) {
        cv::Mat dx;
        cv::Mat dy;
        cv::Sobel(channel, dx, CV_32F, 1, 0, 3, 0.25);
        cv::Sobel(channel, dy, CV_32F, 0, 1, 3, 0.25);
        cv::Mat magnitude;
        cv::magnitude(dx, dy, magnitude);
        cv::max(strongest, magnitude, strongest);
    }
    return strongest;
}

/// How far every pixel's colour is from what lies along the frame.
cv::Mat differenceFromFrame(const cv::Mat& colour) {
    std::vector<std::uint8_t> frame[3];
    for (int y = 0; y < colour.rows; ++y) {
        for (int x = 0; x < colour.cols; x += (y < 4 || y >= colour.rows - 4) ? 1 : std::max(1, colour.cols - 1)) {
            for (int c = 0; c < 3; ++c)
                frame[c].push_back(colour.at<cv::Vec3b>(y, x)[c]);
        }
    }
    cv::Scalar usual;
    for (int c = 0; c < 3; ++c) {
        const auto middle = frame[c].begin() + static_cast<std::ptrdiff_t>(frame[c].size() / 2);
        std::nth_element(frame[c].begin(), middle, frame[c].end());
        usual[c] = *middle;
    }
    cv::Mat difference;
    cv::absdiff(colour, cv::Mat(colour.size(), colour.type(), usual), difference);
    cv::Mat channels[3];
    cv::split(difference, channels);
    return cv::max(cv::max(channels[0], channels[1]), channels[2]);
}

/// Pictures in black and white in which the card may be one shape.
std::vector<cv::Mat> shapesOf(const cv::Mat& colour, const cv::Mat& gradient) {
    std::vector<cv::Mat> shapes;
    for (const float level : {kEdge * 1.6F, kEdge * 0.8F, kEdge * 0.4F}) {
        cv::Mat edges = gradient > level;
        cv::dilate(edges, edges, cv::Mat::ones(3, 3, CV_8U));
        shapes.push_back(edges);
    }
    cv::Mat grey;
    cv::cvtColor(colour, grey, cv::COLOR_BGR2GRAY);
    for (const cv::Mat& light : {grey, differenceFromFrame(colour)}) {
        cv::Mat shape;
        cv::threshold(light, shape, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
        cv::morphologyEx(shape, shape, cv::MORPH_CLOSE, cv::Mat::ones(9, 9, CV_8U));
        cv::morphologyEx(shape, shape, cv::MORPH_OPEN, cv::Mat::ones(9, 9, CV_8U));
        shapes.push_back(shape);
    }
    return shapes;
}

/// The hull with just four corners left, if it has that form.
Quad quadOf(const std::vector<cv::Point>& contour) {
    std::vector<cv::Point> hull;
    cv::convexHull(contour, hull);
    const double perimeter = cv::arcLength(hull, true);
    for (const double coarseness : {0.01, 0.02, 0.03, 0.045, 0.06, 0.08}) {
        std::vector<cv::Point> corners;
        cv::approxPolyDP(hull, corners, coarseness * perimeter, true);
        if (corners.size() == 4) return {corners.begin(), corners.end()};
        if (corners.size() < 4) break;
    }
    return {};
}

bool isInside(const cv::Mat& picture, cv::Point2f point) {
    return point.x >= 0 && point.y >= 0 && point.x < static_cast<float>(picture.cols) &&
           point.y < static_cast<float>(picture.rows);
}

struct EdgePoint {
    cv::Point2f place;
    float strength = 0;
};

/// The strongest edge across a side, near one of its points.
EdgePoint edgeNear(const cv::Mat& gradient, cv::Point2f point, cv::Point2f across, int reach) {
    EdgePoint best{point, 0};
    for (int step = -reach; step <= reach; ++step) {
        const cv::Point2f place = point + across * static_cast<float>(step);
        if (!isInside(gradient, place)) continue;
        const float strength = gradient.at<float>(static_cast<int>(place.y), static_cast<int>(place.x));
        if (strength > best.strength) best = {place, strength};
    }
    return best;
}

std::vector<EdgePoint> edgesAlong(const cv::Mat& gradient, cv::Point2f from, cv::Point2f to, int reach) {
    const cv::Point2f along = to - from;
    const float length = std::max(1.F, std::hypot(along.x, along.y));
    const cv::Point2f across(-along.y / length, along.x / length);
    std::vector<EdgePoint> edges;
    for (int i = 0; i < kSamples; ++i) {
        const float share = 0.08F + 0.84F * static_cast<float>(i) / (kSamples - 1);
        edges.push_back(edgeNear(gradient, from + along * share, across, reach));
    }
    return edges;
}

float supportOf(const std::vector<EdgePoint>& edges, float level) {
    const auto strong =
        std::count_if(edges.begin(), edges.end(), [level](const auto& edge) { return edge.strength >= level; });
    return static_cast<float>(strong) / static_cast<float>(edges.size());
}

struct Line {
    cv::Point2f point;
    cv::Point2f direction;
};

Line fittedLine(const std::vector<EdgePoint>& edges, cv::Point2f from, cv::Point2f to) {
    std::vector<cv::Point2f> points;
    for (const auto& edge : edges) {
        if (edge.strength >= kEdge * 0.4F) points.push_back(edge.place);
    }
    if (points.size() < kSamples / 3) return {from, to - from};
    cv::Vec4f line;
    cv::fitLine(points, line, cv::DIST_HUBER, 0, 0.01, 0.01);
    return {{line[2], line[3]}, {line[0], line[1]}};
}

std::optional<cv::Point2f> crossing(const Line& a, const Line& b) {
    const float cross = a.direction.x * b.direction.y - a.direction.y * b.direction.x;
    const float scale = std::hypot(a.direction.x, a.direction.y) * std::hypot(b.direction.x, b.direction.y);
    if (std::abs(cross) < 0.2F * scale) return std::nullopt;
    const cv::Point2f between = b.point - a.point;
    const float t = (between.x * b.direction.y - between.y * b.direction.x) / cross;
    return a.point + a.direction * t;
}

/// Rounded or covered corners give a quadrilateral that cuts them off: its sides, laid along the edges they are near,
/// meet where the corners would be.
Quad refined(const Quad& quad, const cv::Mat& gradient) {
    std::vector<Line> lines;
    for (std::size_t i = 0; i < 4; ++i) {
        lines.push_back(
            fittedLine(edgesAlong(gradient, quad[i], quad[(i + 1) % 4], kReach), quad[i], quad[(i + 1) % 4]));
    }
    Quad corners;
    for (std::size_t i = 0; i < 4; ++i) {
        const auto corner = crossing(lines[(i + 3) % 4], lines[i]);
        if (!corner || std::hypot(corner->x - quad[i].x, corner->y - quad[i].y) > 0.08F * kSearchSide) return {};
        corners.push_back(*corner);
    }
    return corners;
}

float sideLength(const Quad& quad, std::size_t i) {
    const cv::Point2f side = quad[(i + 1) % 4] - quad[i];
    return std::hypot(side.x, side.y);
}

bool hasCardShape(const Quad& quad, cv::Size picture) {
    if (quad.size() != 4 || !cv::isContourConvex(quad)) return false;
    const float share = static_cast<float>(cv::contourArea(quad)) / static_cast<float>(picture.area());
    if (share < kSmallestShare || share > kLargestShare) return false;
    for (std::size_t i = 0; i < 4; ++i) {
        const cv::Point2f a = quad[(i + 3) % 4] - quad[i];
        const cv::Point2f b = quad[(i + 1) % 4] - quad[i];
        if (std::abs(a.dot(b)) > kSquarest * std::hypot(a.x, a.y) * std::hypot(b.x, b.y)) return false;
    }
    const float across = (sideLength(quad, 0) + sideLength(quad, 2)) / 2;
    const float along = (sideLength(quad, 1) + sideLength(quad, 3)) / 2;
    const float aspect = std::max(across, along) / std::max(1.F, std::min(across, along));
    return aspect >= kSmallestAspect && aspect <= kLargestAspect;
}

/// Sides of opposite length differ by no more than perspective makes them.
bool isPlausibleView(const Quad& quad) {
    for (std::size_t i = 0; i < 2; ++i) {
        const float a = sideLength(quad, i);
        const float b = sideLength(quad, i + 2);
        if (std::max(a, b) > 1.45F * std::min(a, b)) return false;
    }
    return true;
}

/// How much of the line that leads on from `to`, past a corner, lies on an edge as strong as the side before it.
float goesOn(const cv::Mat& gradient, cv::Point2f from, cv::Point2f to) {
    auto edges = edgesAlong(gradient, from, to, 2);
    const auto middle = edges.begin() + kSamples / 2;
    std::nth_element(edges.begin(), middle, edges.end(),
                     [](const auto& a, const auto& b) { return a.strength < b.strength; });
    const float level = std::max(kEdge * 0.4F, 0.6F * middle->strength);
    const cv::Point2f along = to - from;
    return supportOf(edgesAlong(gradient, to + along * 0.02F, to + along * 0.2F, 2), level);
}

/// A card's edges end at its corners. Where two of them lead on beyond the side between them, that side only parts one
/// panel of the card from another.
bool isPanel(const Quad& quad, const cv::Mat& gradient) {
    for (std::size_t i = 0; i < 4; ++i) {
        const float first = goesOn(gradient, quad[(i + 3) % 4], quad[i]);
        const float second = goesOn(gradient, quad[(i + 2) % 4], quad[(i + 1) % 4]);
        if (std::min(first, second) >= 0.7F) return true;
    }
    return false;
}

Candidate weighed(const Quad& quad, const cv::Mat& gradient) {
    Candidate candidate{quad, 0, 0};
    float weakest = 1;
    for (std::size_t i = 0; i < 4; ++i) {
        const float support = supportOf(edgesAlong(gradient, quad[i], quad[(i + 1) % 4], 2), kEdge * 0.4F);
        candidate.support += support / 4;
        weakest = std::min(weakest, support);
    }
    if (weakest < kWeakestSide || candidate.support < kMeanSide) return candidate;
    candidate.score = candidate.support * std::sqrt(static_cast<float>(cv::contourArea(quad)));
    return candidate;
}

/// Clockwise, beginning with the corner nearest to the top left.
Outline ordered(Quad quad) {
    cv::Point2f centre;
    for (const auto& corner : quad)
        centre += corner * 0.25F;
    std::sort(quad.begin(), quad.end(), [centre](auto a, auto b) {
        return std::atan2(a.y - centre.y, a.x - centre.x) < std::atan2(b.y - centre.y, b.x - centre.x);
    });
    const auto first = std::min_element(quad.begin(), quad.end(), [](auto a, auto b) { return a.x + a.y < b.x + b.y; });
    std::rotate(quad.begin(), first, quad.end());
    return {quad[0], quad[1], quad[2], quad[3]};
}

Candidate bestCandidate(const cv::Mat& small) {
    const cv::Mat gradient = gradientOf(small);
    Candidate best;
    for (const auto& shape : shapesOf(small, gradient)) {
        std::vector<std::vector<cv::Point>> contours;
        cv::findContours(shape, contours, cv::RETR_LIST, cv::CHAIN_APPROX_SIMPLE);
        for (const auto& contour : contours) {
            if (static_cast<float>(cv::boundingRect(contour).area()) <
                kSmallestShare * static_cast<float>(small.size().area()))
                continue;
            const Quad rough = quadOf(contour);
            if (!hasCardShape(rough, small.size())) continue;
            const Quad quad = refined(rough, gradient);
            if (!hasCardShape(quad, small.size()) || !isPlausibleView(quad)) continue;
            const Candidate candidate = weighed(quad, gradient);
            if (candidate.score > best.score && !isPanel(quad, gradient)) best = candidate;
        }
    }
    return best;
}

}  // namespace

std::optional<Outline> findOutline(const cv::Mat& colour) {
    const double scale = static_cast<double>(kSearchSide) / std::max(colour.cols, colour.rows);
    if (scale * std::min(colour.cols, colour.rows) < 32) return std::nullopt;
    const Candidate best = bestCandidate(shrunk(colour, scale));
    if (best.score <= 0) return std::nullopt;
    Outline outline = ordered(best.corners);
    for (auto& corner : outline)
        corner *= 1 / static_cast<float>(scale);
    return outline;
}

Unwarped unwarp(const cv::Mat& picture, const Outline& outline, int side) {
    const Quad quad(outline.begin(), outline.end());
    const float width = (sideLength(quad, 0) + sideLength(quad, 2)) / 2;
    const float height = (sideLength(quad, 1) + sideLength(quad, 3)) / 2;
    const float scale = static_cast<float>(side) / std::max(width, height);
    const cv::Size size(std::max(1, cvRound(width * scale)), std::max(1, cvRound(height * scale)));
    const auto w = static_cast<float>(size.width);
    const auto h = static_cast<float>(size.height);
    const Quad target{{0, 0}, {w, 0}, {w, h}, {0, h}};
    Unwarped result;
    const cv::Mat toTarget = cv::getPerspectiveTransform(quad, target);
    cv::warpPerspective(picture, result.picture, toTarget, size, cv::INTER_CUBIC, cv::BORDER_REPLICATE);
    result.toSource = PlaneMap(cv::Matx33d(cv::Mat(toTarget.inv()).ptr<double>()));
    return result;
}

}  // namespace qv::recognition
