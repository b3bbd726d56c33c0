// The extent of one component of the example project, and what its calculation items come to.
#ifndef TALLY_HOST_DEMO_RUN_H_
#define TALLY_HOST_DEMO_RUN_H_

#include <cstdint>
#include <string>
#include <vector>

#include "host/demo_building.h"

namespace demo {

/// SplitMix64: the same numbers on every machine.
class CRandom {
 public:
  explicit CRandom(std::uint64_t seed) : state_(seed) {}
  /// A number from 0 up to below `limit`, which must be positive.
  int Below(int limit);

 private:
  std::uint64_t state_;
};

struct SAmount {
  double quantity = 0;
  std::string expression;
};

/// Straight pieces, the first of them level and the others rising, all laid `times` times.
class CRun {
 public:
  explicit CRun(CRandom& random);

  CRun Level() const;
  CRun Rising() const;  ///< without pieces where nothing rises
  bool Rises() const { return pieces_.size() > 1; }

  /// What `item` of a component of this extent comes to, in the item's unit.
  SAmount Measured(const SItemRule& item, const SPart& part, const SSize& size) const;

 private:
  CRun() = default;
  std::string Text() const;
  SAmount TimesLength(std::int64_t millionths) const;

  std::vector<int> pieces_;  ///< cm
  int times_ = 1;
};

}  // namespace demo

#endif  // TALLY_HOST_DEMO_RUN_H_
