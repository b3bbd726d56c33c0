// The orderings of rows, and the sets that are kept by them. Not every ordering is consistent, and
// what a report shows then depends on the steps of a search; but no search may go wrong.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fuzz_check.h"
#include "fuzz_input.h"
#include "platform/code_page.h"
#include "report_model/narrow_order.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"

namespace {

constexpr std::size_t kMostBlocks = 32;

/// Which elements go before which, so that each two are compared once.
class CBelowTable {
 public:
  template <class TRecord>
  explicit CBelowTable(const std::vector<TRecord>& records)
      : count_(records.size()), below_(count_ * count_) {
    for (std::size_t a = 0; a < count_; ++a) {
      for (std::size_t b = 0; b < count_; ++b) {
        below_[a * count_ + b] = records[a] < records[b] ? 1 : 0;
      }
    }
  }

  bool IsBelow(std::size_t a, std::size_t b) const { return below_[a * count_ + b] != 0; }
  bool IsEqual(std::size_t a, std::size_t b) const { return !IsBelow(a, b) && !IsBelow(b, a); }

  /// Whether this is a strict weak ordering.
  bool IsConsistent() const {
    for (std::size_t a = 0; a < count_; ++a) {
      for (std::size_t b = 0; b < count_; ++b) {
        if ((IsBelow(a, b) && IsBelow(b, a)) || !IsTransitive(a, b)) {
          return false;
        }
      }
    }
    return true;
  }

  /// The first of each class of equal elements, in order. REQUIRES: the ordering is consistent.
  std::vector<std::size_t> FirstOfEach() const {
    std::vector<std::size_t> places(count_);
    for (std::size_t i = 0; i < count_; ++i) {
      places[i] = i;
    }
    std::stable_sort(places.begin(), places.end(),
                     [this](std::size_t a, std::size_t b) { return IsBelow(a, b); });
    places.erase(std::unique(places.begin(), places.end(),
                             [this](std::size_t a, std::size_t b) { return IsEqual(a, b); }),
                 places.end());
    return places;
  }

 private:
  bool IsTransitive(std::size_t a, std::size_t b) const {
    const bool isBelow = IsBelow(a, b);
    const bool isEqual = IsEqual(a, b);
    for (std::size_t c = 0; c < count_; ++c) {
      if ((isBelow && IsBelow(b, c) && !IsBelow(a, c)) ||
          (isEqual && IsEqual(b, c) && !IsEqual(a, c))) {
        return false;
      }
    }
    return true;
  }

  std::size_t count_;
  std::vector<char> below_;
};

/// Puts the blocks, the cell of each of which is its number, into a set and takes them out again.
template <class TRecord, class TFlatten>
void CheckSet(const std::vector<TRecord>& records, bool mustBeConsistent, TFlatten flatten) {
  std::set<TRecord> blocks;
  std::vector<std::wstring> kept;
  for (const TRecord& record : records) {
    Require(!(record < record), "nothing goes before itself");
    const std::size_t before = blocks.size();
    TRecord copy = record;
    std::wstring cell = copy.TakeCells().Cells().at(0);
    copy = record;
    if (PutBlock(blocks, std::move(copy))) {
      kept.push_back(std::move(cell));
    }
    Require(blocks.size() == before || kept.size() == blocks.size(), "a block goes in or is lost");
  }
  Require(kept.size() == blocks.size(), "the set has what went in");
  CCellBlock out;
  flatten(out, std::move(blocks));
  Report::CellArray cells = out.Cells();
  Require(cells.size() == kept.size(), "each block comes out once");

  const CBelowTable below(records);
  const bool isConsistent = below.IsConsistent();
  Require(isConsistent || !mustBeConsistent, "this ordering is strict and weak");
  if (isConsistent) {
    Report::CellArray expected;
    for (const std::size_t place : below.FirstOfEach()) {
      TRecord copy = records[place];
      expected.push_back(copy.TakeCells().Cells().at(0));
    }
    Require(cells == expected, "of equal blocks the first stays, and all come out in order");
  }
  std::sort(cells.begin(), cells.end());
  std::sort(kept.begin(), kept.end());
  Require(cells == kept, "what went in comes out");
}

CCellBlock Numbered(std::size_t number) {
  CCellBlock block;
  block.AddCells(std::to_wstring(number));
  return block;
}

/// Whether the narrow form tells all different texts apart.
bool AreToldApart(const std::vector<std::wstring>& texts) {
  const std::set<std::wstring> wide(texts.begin(), texts.end());
  std::set<std::string> narrow;
  for (const std::wstring& text : wide) {
    narrow.insert(ToNarrowText(text));
  }
  return narrow.size() == wide.size();
}

struct STexts {
  std::vector<std::wstring> all;

  /// One of a few texts that the input begins with, so that equal ones are met.
  const std::wstring& Pick(CFuzzInput& input) const { return all[input.Below(all.size())]; }
};

void CheckFloors(CFuzzInput& input, const STexts& texts) {
  std::vector<CFloorResultData> records;
  while (!input.AtEnd() && records.size() < kMostBlocks) {
    CFloorResultData floor(texts.Pick(input));
    floor.SetResult(Numbered(records.size()));
    records.push_back(std::move(floor));
  }
  if (input.Flag()) {
    CheckSet(records, true, &CReportDataMethod::ChangeFloorResult);
  } else {
    CheckSet(records, true, [](CCellBlock& out, std::set<CFloorResultData>&& blocks) {
      CReportDataMethod::ChangeSysResult(out, std::move(blocks));
    });
  }
}

template <class TRecord>
void CheckNumbered(CFuzzInput& input, const STexts& texts,
                   void (*flatten)(CCellBlock&, std::set<TRecord>&&)) {
  std::vector<TRecord> records;
  while (!input.AtEnd() && records.size() < kMostBlocks) {
    const int sortId = input.Flag() ? input.Int() : static_cast<int>(input.Byte());
    records.emplace_back(sortId, texts.Pick(input), Numbered(records.size()));
  }
  CheckSet(records, true, flatten);
}

void CheckCalItems(CFuzzInput& input, const STexts& texts) {
  std::vector<CCalItemResultData> records;
  while (!input.AtEnd() && records.size() < kMostBlocks) {
    const std::wstring& name = texts.Pick(input);
    records.emplace_back(name, texts.Pick(input), Numbered(records.size()));
  }
  CheckSet(records, AreToldApart(texts.all), &CReportDataMethod::ChangeCalItemResult);
}

void CheckAttributes(CFuzzInput& input, const STexts& texts) {
  const bool largerFirst = input.Flag();
  std::vector<CAttResultData> records;
  while (!input.AtEnd() && records.size() < kMostBlocks) {
    const std::wstring& value = texts.Pick(input);
    records.emplace_back(largerFirst, value, texts.Pick(input), Numbered(records.size()));
  }
  CheckSet(records, false, &CReportDataMethod::ChangeAttResult);
}

void CheckCoats(CFuzzInput& input, const STexts& texts) {
  std::vector<CBrushPaintData> records;
  while (!input.AtEnd() && records.size() < kMostBlocks) {
    const int sortId = static_cast<int>(input.Below(4));
    const int coat = input.Flag() ? input.Int() : static_cast<int>(input.Below(4));
    records.emplace_back(sortId, coat, texts.Pick(input), Numbered(records.size()));
  }
  CheckSet(records, AreToldApart(texts.all), &CReportDataMethod::ChangeBrushPaintResult);
}

void CheckItems(CFuzzInput& input, const STexts& texts) {
  std::vector<CQDDEData> records;
  while (!input.AtEnd() && records.size() < kMostBlocks) {
    const std::wstring& code = texts.Pick(input);
    const std::wstring& name = texts.Pick(input);
    const std::wstring& feature = texts.Pick(input);
    records.emplace_back(code, name, feature, texts.Pick(input), Numbered(records.size()));
  }
  CheckSet(records, false, &CReportDataMethod::ChangeQDDEResult);
}

/// What the orderings are made of, for each two of the texts.
void CheckCompares(const STexts& texts) {
  for (const std::wstring& a : texts.all) {
    for (const std::wstring& b : texts.all) {
      const std::string narrowA = ToNarrowText(a);
      const std::string narrowB = ToNarrowText(b);
      Require((CompareAsNarrow(a, b) < 0) == (CompareAsNarrow(b, a) > 0), "plain order");
      const int up = CompareNatural(narrowA, narrowB, true);
      const int down = CompareNatural(narrowB, narrowA, true);
      Require((up == 0) == (narrowA == narrowB), "equal as texts alone");
      Require((up < 0) != (down < 0) || up == down, "each way round, but for equal numbers");
      Require(up >= 0 || down >= 0 || (narrowA != narrowB), "nothing goes before itself");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int kCodePages[] = {936, 1252, 54936, 65001};
  CFuzzInput input(data, size);
  ICodePage::Instance()->SetThreadCodePage(kCodePages[input.Below(std::size(kCodePages))]);
  const std::size_t ordering = input.Below(9);
  STexts texts;
  for (std::size_t count = 1 + input.Below(8); count > 0; --count) {
    texts.all.push_back(input.Text());
  }
  switch (ordering) {
    case 0:
      CheckFloors(input, texts);
      break;
    case 1:
      CheckNumbered<CSysResultData>(input, texts, [](CCellBlock& out, auto&& blocks) {
        CReportDataMethod::ChangeSysResult(out, std::move(blocks));
      });
      break;
    case 2:
      CheckNumbered<CTypeResultData>(input, texts, &CReportDataMethod::ChangeTypeResult);
      break;
    case 3:
      CheckNumbered<CCategoryResultData>(input, texts, &CReportDataMethod::ChangeCategoryResult);
      break;
    case 4:
      CheckNumbered<CChapterData>(input, texts, &CReportDataMethod::ChangeChapterResult);
      break;
    case 5:
      CheckCalItems(input, texts);
      break;
    case 6:
      CheckAttributes(input, texts);
      break;
    case 7:
      CheckCoats(input, texts);
      break;
    default:
      CheckItems(input, texts);
      break;
  }
  CheckCompares(texts);
  ICodePage::Instance()->SetThreadCodePage(936);
  return 0;
}
