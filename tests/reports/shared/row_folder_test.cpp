#include "reports/shared/row_folder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/tally_test_fixture.h"

namespace {

using Method = CReportDataMethod;
using KorDMRec::SKorDMResultData;
using KorDMRec::SKorDMResultRow;

/// What a tree is made of, node by node.
void Describe(std::vector<std::wstring>& lines, const Report::NodeMap& children,
              const std::wstring& indent = {}) {
  for (const auto& node : children.InOrder()) {
    std::wstring line = indent + node->GetFiledKey().Text() + L"|" + node->GetKey();
    if (const auto* attribute = NodeAs<CReportAttribute>(node)) {
      line += L"|" + attribute->value + L"|" + attribute->sortKey->name;
    } else if (const auto* item = NodeAs<CReportCalItem>(node)) {
      line += L"|" + item->text3.Text();
    } else if (const auto* floor = NodeAs<CReportFloor>(node)) {
      line += L"|" + floor->floorText.Text();
    } else if (const auto* result = NodeAs<CReportResult>(node)) {
      line += L"|" + result->GetComponentText() + std::to_wstring(result->floorCount);
      line += L"|" + result->floorText.Text();
    }
    lines.push_back(line);
    Describe(lines, node->children, indent + L" ");
  }
}
std::vector<std::wstring> Description(const Report::NodeMap& children) {
  std::vector<std::wstring> lines;
  Describe(lines, children);
  return lines;
}

/// Dictionaries with texts that repeat, that run into each other and that are keys of two levels.
SKorDMResultData OddSet(unsigned seed, std::vector<std::wstring> codes) {
  std::mt19937 random(seed);
  const auto below = [&random](std::size_t count) { return static_cast<int>(random() % count); };
  SKorDMResultData data;
  data.sgds = {{1, L"一", L""}, {2, L"一a", L""}, {3, L"a@1@", L""}};
  data.floors = {{1, L"1", L"1"}, {2, L"1", L"a1"}, {3, L"D", L"2,5"}, {4, L"", L""}};
  data.specs = {{1, L"水"}, {2, L"电"}, {3, L"水"}};
  data.categories = {{1, L"管", L"件"}, {2, L"管\\件", L""}, {3, L"管", L"件"}, {4, L"", L""}};
  data.attrs = {{1, L"DN25", L"a"}, {2, L"DN25", L"b"}, {3, L"DN", L"25a"}, {4, L"", L""}};
  for (const std::wstring& code : codes) {
    data.sysCodes.push_back({0, code});
  }
  data.calItems = {
      {1, L"长", L"m", L"x", L"", 2.5, L"1+1"}, {2, L"长", L"m", L"y", L"", 2.5, L"1+1"},
      {3, L"长", L"m", L"z", L"", 2, L"1"},     {4, L"", L"", L"", L"", 0, L""},
      {5, L"长", L"m", L"x", L"", -0.0, L""},   {6, L"长", L"m", L"x", L"", 0, L"1@1"}};
  for (int i = 0; i < 6; ++i) {
    data.components.push_back({i, i == 0 ? L"" : L"c" + std::to_wstring(i), {}});
  }
  for (int i = 0; i < 200; ++i) {
    data.rows.push_back({below(data.sgds.size()), below(data.floors.size()),
                         below(data.components.size()), below(data.specs.size()),
                         below(data.categories.size()), below(data.attrs.size()),
                         below(data.sysCodes.size()), below(data.calItems.size()), 0});
  }
  return data;
}

class RowFolder : public tally_test::TallyTest {
 protected:
  RowFolder() { Open(tally_test::CTinyProject()); }
};

/// The tree of the look-ups made row by row: floors below the system codes, or results.
void FoldRowByRow(Report::NodeMap& root, const SKorDMResultData& data, bool floorsBelowCodes) {
  for (const SKorDMResultRow& row : data.rows) {
    const auto at = [](const auto& records, int index) -> const auto& {
      return records.at(static_cast<std::size_t>(index));
    };
    const auto& spec = at(data.specs, row.spec);
    const auto& floor = at(data.floors, row.floor);
    Report::NodeMap* to = &Method::GetSpec(root, spec)->children;
    to = &Method::GetCategory(*to, spec.name, at(data.categories, row.category))->children;
    CReportAttribute* attribute = Method::GetAttribute(*to, at(data.attrs, row.attr));
    if (attribute->sortKey == nullptr) {
      attribute->sortKey = std::make_shared<const SAttSortKey>(attribute->name, attribute->value);
    }
    to = &Method::GetCalItem(attribute->children, at(data.calItems, row.calItem))->children;
    if (!floorsBelowCodes) {
      to = &Method::GetFloor(*to, floor)->children;
    }
    IReportDataNode* node = Method::GetSysCode(*to, spec.name, at(data.sysCodes, row.sysCode));
    if (node != nullptr && floorsBelowCodes) {
      node = Method::GetFloor(node->children, floor);
    }
    if (node != nullptr) {
      Method::GetResult(node->children, at(data.sgds, row.sgd).name, floor,
                        at(data.calItems, row.calItem), at(data.components, row.component));
    }
  }
}

void ExpectSameTree(const SKorDMResultData& data, bool floorsBelowCodes) {
  Report::NodeMap expected;
  FoldRowByRow(expected, data, floorsBelowCodes);
  Report::NodeMap root;
  CRowFolder fold(root, data);
  fold.Spec().Category().Attribute().CalItem();
  if (floorsBelowCodes) {
    fold.SysCode().Floor();
  } else {
    fold.Floor().SysCode();
  }
  for (const SKorDMResultRow& row : data.rows) {
    fold.Add(row);
  }
  fold.Fold();
  EXPECT_EQ(Description(root), Description(expected));
}

TEST_F(RowFolder, MakesTheTreeOfTheLookUpsRowByRow) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    SCOPED_TRACE(seed);
    const SKorDMResultData data =
        OddSet(seed, {L"A", L"A\\*A", L"A\\B", L"", L"A\\B\\C", L"\\", L"AB\\C", L"A\\B"});
    ExpectSameTree(data, false);
    ExpectSameTree(data, true);
  }
}

// "A\B\C\D" goes on where "A\B\C" ends, so that results or floors stand beside D.
TEST_F(RowFolder, ACodeMayHaveTheKeyOfWhatStandsBesideIt) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    SCOPED_TRACE(seed);
    const SKorDMResultData data =
        OddSet(seed, {L"A\\B\\C", L"A\\B\\C\\D", L"A\\B\\C\\1", L"A\\B\\C\\一1@1@2"});
    ExpectSameTree(data, false);
    ExpectSameTree(data, true);
  }
}

// 300 records take nine bits in each of 15 levels. The category stands in bits that would be lost.
TEST_F(RowFolder, PathsThatDoNotFitInto128BitsMakeTheSameTree) {
  constexpr int kRecords = 300;
  constexpr int kFloorLevels = 14;
  SKorDMResultData data = OddSet(1, {L"A"});
  data.categories.clear();
  data.floors.clear();
  data.rows.clear();
  for (int i = 0; i < kRecords; ++i) {
    data.categories.push_back({i, L"k" + std::to_wstring(i), L""});
    data.floors.push_back({i, L"f" + std::to_wstring(i), L"1"});
  }
  for (int i = kRecords - 1; i >= 0; --i) {
    data.rows.push_back({.category = i});
    data.rows.push_back({.floor = i});
  }
  Report::NodeMap root;
  Report::NodeMap expected;
  CRowFolder fold(root, data);
  fold.Category();
  for (int level = 0; level < kFloorLevels; ++level) {
    fold.Floor();
  }
  for (const SKorDMResultRow& row : data.rows) {
    fold.Add(row);
    const auto& category = data.categories[static_cast<std::size_t>(row.category)];
    const auto& floor = data.floors[static_cast<std::size_t>(row.floor)];
    Report::NodeMap* to = &Method::GetCategory(expected, data.specs[0].name, category)->children;
    for (int level = 0; level < kFloorLevels; ++level) {
      to = &Method::GetFloor(*to, floor)->children;
    }
    Method::GetResult(*to, data.sgds[0].name, floor, data.calItems[0], data.components[0]);
  }
  fold.Fold();
  EXPECT_EQ(root.size(), 300U);
  EXPECT_EQ(Description(root), Description(expected));
}

TEST_F(RowFolder, GroupsAreLevelsOfTheReportsOwn) {
  const SKorDMResultData data = OddSet(1, {L"A"});
  const std::vector<std::wstring> names{L"b", L"a", L"b"};
  Report::NodeMap root;
  CRowFolder fold(root, data);
  fold.Level({}, [&names](auto& to, auto& of) {
    return Method::GetDuctHType(to, names[of.group], L"", L"");
  });
  fold.Add(data.rows[0], 0);
  fold.Add(data.rows[0], 1);
  fold.Add(data.rows[1], 2);
  fold.Fold();
  ASSERT_EQ(root.size(), 2U);
  EXPECT_EQ(root.begin()->second->GetKey(), L"a");
  EXPECT_EQ(root.begin()->second->children.size(), 1U);
}

TEST_F(RowFolder, CountsComponentsWhereNoTextsAreAskedFor) {
  // The second code's name may be the key of a result beside it, so its rows are taken unsorted.
  SKorDMResultData data = OddSet(1, {L"A\\B\\C", L"A\\B\\C\\一1@1@2"});
  data.rows = {{.component = 1}, {.component = 2, .calItem = 1}, {.component = 1}};
  for (const bool hasSecondCode : {false, true}) {
    if (hasSecondCode) {
      data.rows.push_back({.component = 3, .sysCode = 1});
    }
    Report::NodeMap root;
    CRowFolder fold(root, data);
    fold.SysCode().CountComponentsOnly();
    for (const SKorDMResultRow& row : data.rows) {
      fold.Add(row);
    }
    fold.Fold();
    const IReportDataNode* at = root.InOrder().front().get();
    while (!at->children.empty()) {
      at = at->children.InOrder().front().get();
    }
    const auto* result = NodeAs<CReportResult>(at);
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->components.size(), 3U);
    EXPECT_EQ(result->GetComponentText(), L"");
    EXPECT_EQ(result->Quantity(1), 7.5);
  }
}

TEST_F(RowFolder, ABadIndexIsOutOfRange) {
  SKorDMResultData data = OddSet(1, {L"A"});
  data.rows[3].attr = -1;
  Report::NodeMap root;
  CRowFolder fold(root, data);
  fold.Spec();
  EXPECT_NO_THROW(fold.Add(data.rows[2]));
  EXPECT_THROW(fold.Add(data.rows[3]), std::out_of_range);
  EXPECT_FALSE(fold.HasRecords(data.rows[3]));
}

}  // namespace
