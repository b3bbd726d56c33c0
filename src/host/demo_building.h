// The building that the example project tells of: a small office block and what is built into it.
#ifndef TALLY_HOST_DEMO_BUILDING_H_
#define TALLY_HOST_DEMO_BUILDING_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace demo {

/// Detail rows of the plain example.
inline constexpr std::int64_t kPlainRows = 3000;

/// Index into Disciplines().
enum EDiscipline : std::size_t { kPlumbing, kElectrical, kVentilation, kFire, kLowCurrent };
std::span<const char* const> Disciplines();

std::span<const char* const> Sections();

struct SFloor {
  std::string name;
  std::string text;    ///< the floors that it stands for
  bool plant = false;  ///< basement or roof: plant rooms instead of offices
};

/// The floors of a project of `rows` detail rows, at most 40, in the project's order.
std::vector<SFloor> Floors(std::int64_t rows);

/// Systems of one kind: `path` followed by `stem` and a number. With an empty stem `path` is itself
/// the only system.
struct SSystemGroup {
  EDiscipline discipline;
  const char* path;  ///< level names joined by "\"
  const char* remark;
  const char* stem;
  int count;             ///< systems in the plain example
  bool numbered = true;  ///< false: unknown to the project's list of system codes
};
std::span<const SSystemGroup> SystemGroups();

struct SSystem {
  std::size_t group;  ///< index into SystemGroups()
  std::string path;   ///< level names joined by "\"
};

/// The systems of a project of `rows` detail rows, at most 60, group by group.
std::vector<SSystem> Systems(std::int64_t rows);

/// What a calculation item measures.
enum class EMeasure {
  kLength,       ///< the run's length
  kSurface,      ///< length times the perimeter
  kInsulation,   ///< length times the cross-section of the insulation
  kJacket,       ///< length times the perimeter over the insulation
  kTimesLength,  ///< length times `factor`
  kPieces,       ///< `factor` pieces, whatever the length
  kBySize,       ///< the size's own figure
  kTimesSize,    ///< the size's own figure times `factor`
};

struct SItemRule {
  const char* name;
  const char* unit;
  EMeasure measure;
  int factor;  ///< thousandths, or pieces for kPieces
  const char* quotaCode;
  const char* quotaName;  ///< both unused in a part's first item, whose quota is the part's own
};

struct SSize {
  const char* text;
  int figure;  ///< perimeter of a run in 0.1 mm; weight or the like of a piece in thousandths
};

struct SFitting {
  const char* type;
  const char* name;
};

struct SBill {
  const char* code;
  const char* name;
  int ownItems = 1;  ///< items of the part that the bill counts itself; the others have quotas only
  bool foreign = false;  ///< of a bill library that the project does not use
};

struct SQuota {
  const char* chapter;  ///< beginning of the code
  int number;           ///< of the smallest size
  const char* name;
  bool foreign = false;
};

enum class EZone { kAnywhere, kRooms, kPlant };

/// One kind of component as this building uses it.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): the table reads best in this order
struct SPart {
  EDiscipline discipline;
  const char* category;
  const char* kind;
  const char* label;  ///< what the attribute's name begins with, before the size
  const char* lines;  ///< the attribute's lines "name:value"
  std::span<const SSize> sizes;
  int insulation;  ///< thickness in mm
  std::size_t firstGroup;
  std::size_t groupCount;            ///< groups of systems that it occurs in
  std::span<const SItemRule> items;  ///< the main item first
  std::span<const SFitting> fittings;
  SBill bill;
  SQuota quota;
  int weight;  ///< how often it occurs
  EZone zone = EZone::kAnywhere;
  bool inOverview = true;
  bool numbered = true;  ///< false: unknown to the project's list of component kinds
};
std::span<const SPart> Parts();

struct SChapter {
  const char* prefix;
  int number;
  const char* name;
};
std::span<const SChapter> BillChapters();
std::span<const SChapter> QuotaChapters();

struct SMark {
  const char* code;
  int seq;
  const char* name;
  const char* value;
};
std::span<const SMark> BillMarks();

struct SSetting {
  const char* name;
  const char* value;
};
std::span<const SSetting> Settings();

extern const char* const kBillLibrary;
extern const char* const kForeignBillLibrary;
extern const char* const kQuotaLibrary;
extern const char* const kForeignQuotaLibrary;

}  // namespace demo

#endif  // TALLY_HOST_DEMO_BUILDING_H_
