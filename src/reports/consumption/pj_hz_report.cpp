#include "reports/consumption/pj_hz_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/text_numbers.h"
#include "report_mng/result_config.h"
#include "report_model/cell_block.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "reports/consumption/fittings_maker.h"
#include "reports/shared/node_choice.h"
#include "reports/shared/repeated_find.h"
#include "reports/shared/row_folder.h"
#include "reports/shared/section_choice.h"
#include "reports/shared/text_places.h"
#include "result_store/tally_data_mng.h"

namespace {

// One row element: what decides its place, and its heads. The texts belong to the tree, the result
// set and the request.
struct SPjHzData {
  bool LineSortDown = false;
  int FloorSortId = 0;
  int FloorGrade = 0;  // of the Floor text
  int SysCodeSortId = 0;
  int CategorySortId = 0;
  std::wstring_view Floor;
  std::wstring_view FloorName;
  std::wstring_view SysCode;
  const CReportCategory* Category = nullptr;
  const SFitting* Fitting = nullptr;

  bool operator<(const SPjHzData& other) const {
    if (FloorSortId != other.FloorSortId) {
      return FloorSortId < other.FloorSortId;
    }
    // Texts that differ are told apart by a number alone here: equal numbers merge.
    if (FloorGrade != other.FloorGrade) {
      return FloorGrade < other.FloorGrade;
    }
    if (Floor != other.Floor) {
      return false;
    }
    if (SysCodeSortId != other.SysCodeSortId) {
      return SysCodeSortId < other.SysCodeSortId;
    }
    if (Category != other.Category && Category->category != other.Category->category) {
      return CategorySortId < other.CategorySortId;
    }
    if (Fitting->linePlaces.ascending >= 0) {
      if (LinePlace() != other.LinePlace()) {
        return LinePlace() < other.LinePlace();
      }
    } else if (Fitting->line != other.Fitting->line) {
      return CompareNatural(Fitting->attribute->sortKey->narrowName,
                            other.Fitting->attribute->sortKey->narrowName, !LineSortDown) < 0;
    }
    return IsItemBefore(other);
  }

  int LinePlace() const {
    return LineSortDown ? Fitting->linePlaces.descending : Fitting->linePlaces.ascending;
  }

 private:
  bool IsItemBefore(const SPjHzData& other) const {
    if (Fitting->place >= 0) {
      return Fitting->place < other.Fitting->place;
    }
    if (Fitting->text1 != other.Fitting->text1) {
      return CompareAsNarrow(Fitting->text1, other.Fitting->text1) < 0;
    }
    if (Fitting->name != other.Fitting->name) {
      return CompareAsNarrow(Fitting->name, other.Fitting->name) < 0;
    }
    return CompareAsNarrow(Fitting->unit, other.Fitting->unit) < 0;
  }
};

// What a level shows of the system codes, for one request.
class CShownCodes {
 public:
  struct SCode {
    std::wstring text;  // with its remark
    int sortId = 0;
  };

  CShownCodes(std::wstring spec, int level) : spec_(std::move(spec)), level_(level) {}

  const SCode& Of(const CReportSysCode& sysCode) {
    if (last_ == nullptr || lastName_.data() != sysCode.fullName.data() ||
        lastName_.size() != sysCode.fullName.size()) {
      lastName_ = sysCode.fullName;
      last_ = &Find(lastName_);
    }
    return *last_;
  }

 private:
  const SCode& Find(std::wstring_view fullName) {
    const auto [at, isNew] = codes_.try_emplace(fullName);
    SCode& code = at->second;
    if (isNew && level_ > CPjHzReport::LevelFloor) {
      code.text =
          CReportDataMethod::GetSysCodeLevelName(fullName, CPjHzReport::GetSysCodeLevel(level_));
      const std::wstring path = code.text.substr(0, code.text.find(L"\\*"));
      code.sortId = CTallyDataMng::Instance()->GetSysCodeSortId(spec_, path);
      code.text += CReportDataMethod::GetSysCodeRemark(spec_, path);
    }
    return code;
  }

  const std::wstring spec_;
  const int level_;
  std::unordered_map<std::wstring_view, SCode> codes_;  // by full name
  std::wstring_view lastName_;
  const SCode* last_ = nullptr;
};

// What counts for an element at once: a result, or all those of a fitting.
struct SCount {
  double quantity = 0;
  std::wstring_view references;
};

// A floor that the filter selects, and what its elements begin with.
struct SChosenFloor {
  const CReportFloor* node;
  CPickedFloor picked;
  SPjHzData element;
};

// What a pass goes through.
class CFittingWalk {
 public:
  CFittingWalk(const CReportSpec& spec, const Report::SNewCondition& condition, int level,
               const CSectionChoice& sections, CShownCodes& codes)
      : spec_(spec),
        condition_(condition),
        showsFloors_(level != CPjHzReport::LevelItem),
        sections_(sections),
        sysCodes_(condition.sysCodes),
        codes_(codes) {}

  bool ShowsFloors() const { return showsFloors_; }
  /// Whether all results of a fitting count.
  bool TakesAll(const SChosenFloor& floor) const {
    return sections_.TakesAll() && !floor.picked.IsOther();
  }

  /// In the order of the walk. The elements have the floor text that the most results show.
  std::vector<SChosenFloor> Floors() const {
    std::vector<SChosenFloor> floors;
    ForEachChosenFloor<EPairKey::Floor>(
        spec_.children, condition_.floors,
        [&](const CReportFloor& node, const CPickedFloor& picked, const std::wstring&,
            const std::wstring&) {
          SPjHzData& element = floors.emplace_back(SChosenFloor{&node, picked, {}}).element;
          element.LineSortDown = CResultConfig::Instance()->GetLineSortDowm();
          if (showsFloors_) {
            element.FloorSortId = node.grade.grade;
            element.FloorName = node.name;
            SetFloor(element, picked.IsOther() ? picked.SecondText() : node.floorText.Text());
          }
        });
    return floors;
  }

  /// Calls `visit(const SPjHzData&)` for each fitting.
  template <class TVisit>
  void ForEachFitting(const SChosenFloor& floor, TVisit&& visit) {
    SPjHzData element = floor.element;
    ForEachCategoryBelow(sysCodes_, *floor.node, condition_,
                         [&](const CReportSysCode& holder, const CReportCategory& category) {
                           const CShownCodes::SCode& code = codes_.Of(holder);
                           element.SysCode = code.text;
                           element.SysCodeSortId = code.sortId;
                           element.CategorySortId = category.sortId;
                           element.Category = &category;
                           for (const SFitting& fitting : category.fittings) {
                             element.Fitting = &fitting;
                             visit(static_cast<const SPjHzData&>(element));
                           }
                         });
  }

  /// Calls `visit(const CReportResult&, const SCount&)` for each result of a fitting that counts.
  template <class TVisit>
  void ForEachResult(const SFitting& fitting, const CPickedFloor& picked, TVisit&& visit) const {
    std::size_t end = 0;
    ForEachChild<CReportResult>(fitting.item->children, [&](const CReportResult& result) {
      const std::size_t begin = end;
      end += result.referencesSize;
      if (sections_.Takes(result.sgdName) && picked.Takes(result)) {
        visit(result, SCount{result.Quantity(picked.CountFor(result)),
                             std::wstring_view(fitting.references).substr(begin, end - begin)});
      }
    });
  }

  static void SetFloor(SPjHzData& element, std::wstring_view floor) {
    element.Floor = floor;
    element.FloorGrade = CFloorResultData::CalFloorGrade(std::wstring(floor));
  }

 private:
  const CReportSpec& spec_;
  const Report::SNewCondition& condition_;
  const bool showsFloors_;
  const CSectionChoice& sections_;
  CSysCodeWalk sysCodes_;
  CShownCodes& codes_;
};

// The rows of elements. Their texts belong to the tree, the result set and the request.
class CFittingRows final : public IKeptRows {
 public:
  void Add(const SPjHzData& element, double quantity,
           std::span<const std::wstring_view> references) {
    rows_.push_back({element.Floor, element.FloorName, element.SysCode, element.Category,
                     element.Fitting, quantity, references_.size(), references.size()});
    references_.insert(references_.end(), references.begin(), references.end());
    constexpr std::size_t kFloorCells = 3;
    constexpr std::size_t kSysCodeCells = 2;
    constexpr std::size_t kFittingCells = 10;
    cellCount_ += (element.Floor.empty() ? 0 : kFloorCells) +
                  (element.SysCode.empty() ? 0 : kSysCodeCells) + kFittingCells;
  }

  std::size_t CellCount() const override { return cellCount_; }
  void Write(Report::CellArray& out) const override {
    const auto add = [&out](const auto&... texts) { (out.emplace_back(texts), ...); };
    for (const SRow& row : rows_) {
      if (!row.floor.empty()) {
        add(L"@F", row.floorName, row.floor);
      }
      if (!row.sysCode.empty()) {
        add(L"@S", row.sysCode);
      }
      const SFitting& fitting = *row.fitting;
      add(L"@Cg", row.category->category, L"@A", fitting.line, L"@CI", fitting.text1, fitting.name,
          fitting.unit);
      AppendNumber(out.emplace_back(), row.quantity);
      AppendReferences(out.emplace_back(), row);
    }
  }

 private:
  struct SRow {
    std::wstring_view floor;
    std::wstring_view floorName;
    std::wstring_view sysCode;
    const CReportCategory* category;
    const SFitting* fitting;
    double quantity;
    std::size_t firstReferences;
    std::size_t referencesCount;
  };

  void AppendReferences(std::wstring& text, const SRow& row) const {
    const auto parts = std::span(references_).subspan(row.firstReferences, row.referencesCount);
    text.reserve(std::accumulate(
        parts.begin(), parts.end(), std::size_t{0},
        [](std::size_t size, std::wstring_view part) { return size + part.size(); }));
    for (const std::wstring_view part : parts) {
      text += part;
    }
  }

  std::vector<SRow> rows_;
  std::vector<std::wstring_view> references_;  // that rows have joined
  std::size_t cellCount_ = 0;
};

// The elements of a pass where their ordering is known to be consistent: sorted by numbers.
class CPlacedFittings {
 public:
  explicit CPlacedFittings(CFittingWalk& walk) : walk_(walk) {}

  /// Writes all elements; false, with anything written, where it is not known.
  bool Write(CFittingRows& rows) {
    std::vector<SChosenFloor> floors = walk_.Floors();
    std::stable_sort(floors.begin(), floors.end(), IsBefore);
    for (auto begin = floors.begin(), end = begin; begin != floors.end(); begin = end) {
      while (end != floors.end() && !IsBefore(*begin, *end)) {
        if (end->element.Floor != begin->element.Floor || !AddFloor(*end)) {
          return false;
        }
        ++end;
      }
      WriteParts(rows);
    }
    // Counts are whole numbers: below this, sums are exact in whatever order they are added.
    constexpr double kExact = 9007199254740992.0;
    return total_ < kExact;
  }

 private:
  // What decides the place of an element among those of a floor.
  struct SPlace {
    std::uint64_t code = 0;  // and component category
    std::uint64_t item = 0;  // and before it, attribute
    std::size_t part = 0;

    bool operator<(const SPlace& other) const {
      return std::tie(code, item, part) < std::tie(other.code, other.item, other.part);
    }
    bool IsSameElement(const SPlace& other) const {
      return code == other.code && item == other.item;
    }
  };
  struct SPart {
    SPjHzData element;
    SCount count;
  };

  static bool IsBefore(const SChosenFloor& a, const SChosenFloor& b) {
    return a.element.FloorSortId != b.element.FloorSortId
               ? a.element.FloorSortId < b.element.FloorSortId
               : a.element.FloorGrade < b.element.FloorGrade;
  }

  bool AddFloor(const SChosenFloor& floor) {
    const bool takesAll = walk_.TakesAll(floor);
    const bool isAnyText = !walk_.ShowsFloors() || floor.picked.IsOther();
    bool isPlaced = true;
    walk_.ForEachFitting(floor, [&](const SPjHzData& element) {
      const SFitting& fitting = *element.Fitting;
      isPlaced = isPlaced && fitting.place >= 0 && fitting.categoryPlace >= 0 &&
                 fitting.linePlaces.ascending >= 0 && (isAnyText || fitting.hasFloorsText);
      if (!isPlaced) {
        return;
      }
      if (takesAll) {
        Add(element, {fitting.quantity, fitting.references});
        return;
      }
      walk_.ForEachResult(fitting, floor.picked,
                          [&](const CReportResult&, const SCount& count) { Add(element, count); });
    });
    return isPlaced;
  }

  void Add(const SPjHzData& element, const SCount& count) {
    constexpr std::uint32_t kSign = 0x80000000U;
    places_.push_back(
        {Joined(static_cast<std::uint32_t>(element.SysCodeSortId) ^ kSign,
                element.Fitting->categoryPlace),
         Joined(static_cast<std::uint32_t>(element.LinePlace()), element.Fitting->place),
         parts_.size()});
    parts_.push_back({element, count});
    total_ += count.quantity;
  }
  static std::uint64_t Joined(std::uint32_t first, int second) {
    constexpr unsigned kWord = 32;
    return std::uint64_t{first} << kWord | static_cast<std::uint32_t>(second);
  }

  // Elements are what the first of their parts tells, and add their parts in the order of the walk.
  void WriteParts(CFittingRows& rows) {
    std::sort(places_.begin(), places_.end());
    for (auto begin = places_.begin(), end = begin; begin != places_.end(); begin = end) {
      double quantity = 0;
      references_.clear();
      for (; end != places_.end() && end->IsSameElement(*begin); ++end) {
        const SCount& count = parts_[end->part].count;
        quantity += count.quantity;
        references_.push_back(count.references);
      }
      rows.Add(parts_[begin->part].element, quantity, references_);
    }
    places_.clear();
    parts_.clear();
  }

  CFittingWalk& walk_;
  std::vector<SPlace> places_;
  std::vector<SPart> parts_;
  std::vector<std::wstring_view> references_;
  double total_ = 0;
};

// The elements of a pass, whatever their ordering.
class CFittings {
 public:
  explicit CFittings(CFittingWalk& walk) : walk_(walk) {}

  void Write(CFittingRows& rows) {
    for (const SChosenFloor& floor : walk_.Floors()) {
      walk_.ForEachFitting(floor,
                           [&](const SPjHzData& element) { AddItem(element, floor.picked); });
    }
    for (const SElement& element : elements_) {
      rows.Add(element, element.quantity, element.references);
    }
  }

 private:
  struct SElement : SPjHzData {
    explicit SElement(const SPjHzData& data) : SPjHzData(data) {}
    // No part of the key.
    mutable double quantity = 0;
    mutable std::vector<std::wstring_view> references;
  };
  using Elements = std::set<SElement>;

  void AddItem(const SPjHzData& data, const CPickedFloor& picked) {
    SElement element(data);
    TRepeatedFind<Elements> find;
    walk_.ForEachResult(*data.Fitting, picked,
                        [&](const CReportResult& result, const SCount& count) {
                          if (walk_.ShowsFloors() && picked.TextFor(result) != element.Floor) {
                            CFittingWalk::SetFloor(element, picked.TextFor(result));
                            find = {};
                          }
                          auto at = find(elements_, element);
                          if (at == elements_.end()) {
                            // Where the ordering is not consistent, the set may refuse what was not
                            // found.
                            bool isIn = false;
                            std::tie(at, isIn) = elements_.insert(element);
                            if (!isIn) {
                              return;
                            }
                          }
                          at->quantity += count.quantity;
                          at->references.push_back(count.references);
                        });
  }

  CFittingWalk& walk_;
  Elements elements_;
};

}  // namespace

int CPjHzReport::GetSysCodeLevel(int level) {
  return level >= LevelSysCode1 && level <= LevelSysCode3 ? level - LevelFloor : 0;
}

void CPjHzReport::CreatData() {
  const auto& data = CTallyDataMng::Instance()->GetPjHzData();
  CRowFolder fold(root, data);
  fold.Spec().Floor().SysCode().Category().PjAttribute().PjCalItem();
  for (const auto& row : data.rows) {
    fold.Add(row);
  }
  fold.Fold();
  PlaceAttributeNames(root);
  MakeFittings(root);
}

void CPjHzReport::GetPjHzData(Report::CellArray& rows, const std::wstring& requestSpec,
                              const Report::SNewCondition& requestCondition, int level, int bySgd) {
  const CReportSpec* node = BeginRequest(requestSpec, requestCondition);
  if (node == nullptr) {
    return;
  }
  auto codes = std::make_shared<CShownCodes>(spec, level);
  const auto pass = [&](const CSectionChoice& sections) {
    CFittingWalk walk(*node, condition, level, sections, *codes);
    auto fittings = std::make_unique<CFittingRows>();
    if (!CPlacedFittings(walk).Write(*fittings)) {
      fittings = std::make_unique<CFittingRows>();
      CFittings(walk).Write(*fittings);
    }
    CCellBlock block;
    block.AddKept(std::move(fittings));
    return block;
  };
  RunKeptPasses(rows, *node, {level}, codes, bySgd, pass, ESectionHeading::Always);
}
