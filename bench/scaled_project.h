// The example building at any size, made in memory from a seed.
#ifndef TALLY_BENCH_SCALED_PROJECT_H_
#define TALLY_BENCH_SCALED_PROJECT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "memory_operator.h"

/// In what a scaled project departs from the example building. Each departs in one point alone.
enum class EProjectShape {
  Example,
  DeepCodes,       ///< system codes of ten to twelve levels, five below each one of the example
  ManyAttributes,  ///< forty attributes for each one of the example: some 6,000
  OneFloor,        ///< everything on a single floor
  OneKind,         ///< a single component kind
};

/// The name of a shape, for command lines.
const char* ShapeName(EProjectShape shape);
/// The shape of that name; throws a std::runtime_error that lists the names for any other.
EProjectShape ShapeOfName(const std::string& name);

/// Five disciplines, 40 floors and 60 system codes whatever the size, with the kinds, attributes,
/// items, bills and quotas of the example project (host/demo_building.h). Every result set has
/// about `rows` rows, so that figures of different reports compare. Where a component has its
/// several items there is about one item record for 2.5 rows and one component for 3. The same
/// arguments give the same records. A read makes its set anew and keeps nothing; the vectors that
/// it fills must be empty. A shape other than the example's changes what it says.
class CScaledProject final : public CMemoryOperator {
 public:
  CScaledProject(std::int64_t rows, std::uint64_t seed,
                 EProjectShape shape = EProjectShape::Example)
      : rows_(rows), seed_(seed), shape_(shape) {}

  bool ReadCategoryData(std::vector<KorDMRec::SKorDMAllSmallIndexRec>& records,
                        const std::wstring& path) override;
  bool ReadSysCodeData(std::vector<KorDMRec::SKorDMAllSysCodeRec>& records,
                       const std::wstring& path) override;
  bool ReadFloorData(std::vector<KorDMRec::SKorDMFloorRec>& records,
                     const std::wstring& path) override;
  bool ReadSgdAttData(std::vector<std::wstring>& names, const std::wstring& path) override;
  bool ReadXhlData(KorDMRec::SKorDMResultData& data, const std::wstring& path,
                   bool summary) override;
  bool ReadXhlDetailData(KorDMRec::SKorDMDetailResultData& data, const std::wstring& path) override;
  bool ReadCgData(KorDMRec::SKorDMResultData& data, const std::wstring& path) override;
  bool ReadPjData(KorDMRec::SKorDMPjResultData& data, const std::wstring& path) override;
  bool ReadQdDeData(KorDMRec::SKorDMQdDeResultData& data, const std::wstring& path,
                    bool isQdMode) override;

 private:
  std::int64_t rows_;
  std::uint64_t seed_;
  EProjectShape shape_;
};

#endif  // TALLY_BENCH_SCALED_PROJECT_H_
