#include "host/demo_run.h"

#include "host/joined.h"

namespace demo {

namespace {

/// `number` divided by 10 to the power of `decimals`, without trailing zeros.
std::string Decimal(std::int64_t number, int decimals) {
  std::string fraction;
  for (int i = 0; i < decimals; ++i, number /= 10) {
    if (!fraction.empty() || number % 10 != 0) {
      fraction.insert(fraction.begin(), static_cast<char>('0' + number % 10));
    }
  }
  return Joined(std::to_string(number), fraction.empty() ? "" : ".", fraction);
}

// Factors of one metre in millionths of the item's unit; perimeters in 0.1 mm, thicknesses in mm.

std::int64_t SurfaceFactor(int perimeter) {
  return std::int64_t{perimeter} * 100;
}

std::int64_t JacketFactor(int perimeter, int thickness) {
  return (perimeter + std::int64_t{62832} * thickness / 1000) * 100;
}

std::int64_t InsulationFactor(int perimeter, int thickness) {
  return (perimeter + std::int64_t{31416} * thickness / 1000) * thickness / 100 * 10;
}

SAmount Pieces(int count) {
  return {static_cast<double>(count), std::to_string(count)};
}

}  // namespace

int CRandom::Below(int limit) {
  state_ += 0x9E3779B97F4A7C15u;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  z ^= z >> 31;
  return static_cast<int>(z % static_cast<std::uint64_t>(limit));
}

CRun::CRun(CRandom& random) {
  const int form = random.Below(6);
  const int count = form < 2 ? 1 : form < 5 ? 2 : 3;
  for (int i = 0; i < count; ++i) {
    pieces_.push_back(60 + 10 * random.Below(i == 0 ? 90 : 30));
  }
  if (form == 1) {
    times_ = 2;
  }
}

CRun CRun::Level() const {
  CRun level = *this;
  level.pieces_.resize(1);
  return level;
}

CRun CRun::Rising() const {
  CRun rising;
  rising.pieces_.assign(pieces_.begin() + 1, pieces_.end());
  rising.times_ = times_;
  return rising;
}

std::string CRun::Text() const {
  std::string text;
  for (const int piece : pieces_) {
    text += Joined(text.empty() ? "" : "+", Decimal(piece, 2));
  }
  if (times_ > 1) {
    const bool inBrackets = pieces_.size() > 1;
    text = Joined(inBrackets ? "(" : "", text, inBrackets ? ")*" : "*", std::to_string(times_));
  }
  return text;
}

SAmount CRun::TimesLength(std::int64_t millionths) const {
  std::int64_t length = 0;
  for (const int piece : pieces_) {
    length += piece;
  }
  SAmount amount{static_cast<double>(length * times_ * millionths) / 1e8, Text()};
  if (millionths != 1000000) {
    if (pieces_.size() > 1) {
      amount.expression = Joined("(", amount.expression, ")");
    }
    amount.expression += Joined("*", Decimal(millionths, 6));
  }
  return amount;
}

SAmount CRun::Measured(const SItemRule& item, const SPart& part, const SSize& size) const {
  switch (item.measure) {
    case EMeasure::kLength:
      return TimesLength(1000000);
    case EMeasure::kSurface:
      return TimesLength(SurfaceFactor(size.figure));
    case EMeasure::kInsulation:
      return TimesLength(InsulationFactor(size.figure, part.insulation));
    case EMeasure::kJacket:
      return TimesLength(JacketFactor(size.figure, part.insulation));
    case EMeasure::kTimesLength:
      return TimesLength(std::int64_t{item.factor} * 1000);
    case EMeasure::kPieces:
      return Pieces(item.factor);
    case EMeasure::kBySize:
      return {static_cast<double>(size.figure) / 1e3, Decimal(size.figure, 3)};
    case EMeasure::kTimesSize:
      return {static_cast<double>(std::int64_t{size.figure} * item.factor) / 1e6,
              Decimal(size.figure, 3) + "*" + Decimal(item.factor, 3)};
  }
  return {};
}

}  // namespace demo
