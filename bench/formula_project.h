// One floor with so many circuits that a formula scan that looks at all of them for each row shows.
#ifndef TALLY_BENCH_FORMULA_PROJECT_H_
#define TALLY_BENCH_FORMULA_PROJECT_H_

#include <string>
#include <vector>

#include "memory_operator.h"

/// Detail results on a single floor: `circuits` in one discipline and half as many in another, so
/// that one fold serves both. Every circuit is a result of its own of the main item under one
/// system code of three levels; `ofAttribute` of them, a positive number, share an attribute. At
/// level 5 each is a child that its attribute's formula lists; at level 4 those of an attribute are
/// one child.
class CFormulaProject final : public CMemoryOperator {
 public:
  CFormulaProject(int circuits, int ofAttribute) : circuits_(circuits), ofAttribute_(ofAttribute) {}

  static std::wstring FullSpec() { return L"给排水"; }
  static std::wstring HalfSpec() { return L"消防"; }

  bool ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data, const std::wstring& path) override;

 private:
  int circuits_;
  int ofAttribute_;
};

#endif  // TALLY_BENCH_FORMULA_PROJECT_H_
