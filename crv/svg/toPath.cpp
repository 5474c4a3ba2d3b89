#include "crv/svg.h"
#include "crv/svg/internal/number.h"
#include "crv/svg/internal/straight.h"

#include <cmath>

namespace crv {

namespace {

using internal::Cubic;

/// Equal also in the sign of zeros, which the text keeps.
bool isSameBits(double a, double b) { return a == b && std::signbit(a) == std::signbit(b); }

bool isStraight(Cubic const& c) {
  Cubic const line = internal::straightThrough(c.p[0], c.p[3]);
  for (int i = 1; i <= 2; ++i) {
    if (!isSameBits(line.p[i].x, c.p[i].x) || !isSameBits(line.p[i].y, c.p[i].y)) return false;
  }
  return true;
}

void appendPoint(internal::Point const& p, std::string& out) {
  // A minus sign separates numbers, so no space is needed before it.
  auto const isNumber = [](char c) { return (c >= '0' && c <= '9') || c == '.'; };
  if (!out.empty() && isNumber(out.back()) && !std::signbit(p.x)) out += ' ';
  internal::appendNumber(p.x, out);
  if (!std::signbit(p.y)) out += ' ';
  internal::appendNumber(p.y, out);
}

void appendSegment(Cubic const& c, std::string& out) {
  bool const straight = isStraight(c);
  out += straight ? 'L' : 'C';
  for (int i = straight ? 3 : 1; i <= 3; ++i) appendPoint(c.p[i], out);
}

void appendCurve(Curve const& curve, std::string& out) {
  std::string text;
  bool hasGap = false;
  internal::Point start{0.0, 0.0}, pen{0.0, 0.0};
  for (unsigned long i = 0; i < curve.length(); ++i) {
    Cubic const c = internal::cubic(curve[static_cast<int>(i)]);
    if (!isFinite(c)) return;
    bool const isFirst = i == 0;
    if (isFirst) start = c.p[0];
    if (isFirst || !areEqual(pen, c.p[0])) {
      hasGap = hasGap || !isFirst;
      text += 'M';
      appendPoint(c.p[0], text);
    }
    appendSegment(c, text);
    pen = c.p[3];
  }
  if (curve.length() != 0 && curve.strictIsClosed() != 0 && !hasGap && areEqual(pen, start)) {
    text += 'Z';
  }
  out += text;
}

}  // namespace

std::string toPath(Curve const& curve) {
  std::string text;
  appendCurve(curve, text);
  return text;
}

std::string toPath(std::vector<Curve> const& curves) {
  std::string text;
  for (Curve const& curve : curves) appendCurve(curve, text);
  return text;
}

}  // namespace crv
