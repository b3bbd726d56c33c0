// At which levels a row shows.
#ifndef TALLY_REPORTS_SHARED_LEVEL_TEST_H_
#define TALLY_REPORTS_SHARED_LEVEL_TEST_H_

/// A test of the level, put to any number that a host passes.
class CLevelTest {
 public:
  static constexpr CLevelTest AtLeast(int level) { return {EKind::AtLeast, level}; }
  static constexpr CLevelTest Not(int level) { return {EKind::Not, level}; }

  constexpr bool Holds(int level) const {
    return kind_ == EKind::Not ? level != level_ : level >= level_;
  }

 private:
  enum class EKind { AtLeast, Not };
  constexpr CLevelTest(EKind kind, int level) : kind_(kind), level_(level) {}
  EKind kind_;
  int level_;
};

#endif  // TALLY_REPORTS_SHARED_LEVEL_TEST_H_
