#include "reports/shared/result_order.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "result_store/db_records.h"

namespace {

template <class TData>
int CompareKeys(const TData& data, const KorDMRec::SKorDMResultRow& a,
                const KorDMRec::SKorDMResultRow& b) {
  const auto keyOf = [&](const auto& row) {
    return CReportDataMethod::GetResultKey(data.sgds[static_cast<std::size_t>(row.sgd)].name,
                                           data.floors[static_cast<std::size_t>(row.floor)],
                                           data.calItems[static_cast<std::size_t>(row.calItem)])
        .Text();
  };
  return keyOf(a).compare(keyOf(b));
}

int SignOf(int order) {
  return order == 0 ? 0 : order < 0 ? -1 : 1;
}

// Compares each row with each by the order and by the texts of their keys.
template <class TData>
void ExpectKeyOrder(const TData& data) {
  CResultOrder order(data);
  for (const auto& row : data.rows) {
    order.Add(row);
  }
  order.Rank();
  for (const auto& a : data.rows) {
    for (const auto& b : data.rows) {
      EXPECT_EQ(SignOf(order.Compare(a, b)), SignOf(CompareKeys(data, a, b)))
          << a.sgd << " " << a.floor << " " << a.calItem << ", " << b.sgd << " " << b.floor << " "
          << b.calItem;
    }
  }
}

// A row for each section, floor and item.
template <class TData>
void AddEachRow(TData& data) {
  for (std::size_t sgd = 0; sgd < data.sgds.size(); ++sgd) {
    for (std::size_t floor = 0; floor < data.floors.size(); ++floor) {
      for (std::size_t item = 0; item < data.calItems.size(); ++item) {
        auto& row = data.rows.emplace_back();
        row.sgd = static_cast<int>(sgd);
        row.floor = static_cast<int>(floor);
        row.calItem = static_cast<int>(item);
      }
    }
  }
}

KorDMRec::SKorDMResultData DataOf(const std::vector<std::wstring>& sgds,
                                  const std::vector<std::wstring>& floors) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  KorDMRec::SKorDMResultData data;
  for (const std::wstring& sgd : sgds) {
    data.sgds.push_back({0, sgd, {}});
  }
  for (const std::wstring& floor : floors) {
    data.floors.push_back({0, L"not in the key", floor});
  }
  const auto addItem = [&data](std::wstring expression, double quantity) {
    data.calItems.push_back({0, L"not in the key", {}, {}, {}, quantity, std::move(expression)});
  };
  for (const wchar_t* expression :
       {L"", L"1", L"12", L"1@", L"1@1", L"12.345678901234567", L"12.3456789012345678", L"1米"}) {
    addItem(expression, 1);
    addItem(expression, 12);
  }
  addItem(L"1", 1);           // once more
  addItem(L"1", 1.00000001);  // prints the same
  addItem(L"0", 0);
  addItem(L"0", -0.0);
  addItem(L"0", kNaN);
  addItem(L"0", -kNaN);
  addItem(L"12.3456789012345678", 1);
  AddEachRow(data);
  return data;
}

TEST(ResultOrder, IsThatOfTheKeys) {
  ExpectKeyOrder(DataOf({L"", L"一区", L"二区"}, {L"1", L"2", L"1,3"}));
}

TEST(ResultOrder, TakesRecordsOfOneTextForOne) {
  ExpectKeyOrder(DataOf({L"a", L"a", L"ab"}, {L"bc", L"c", L"c"}));
}

TEST(ResultOrder, ReadsOnWhereASectionAndFloorBeginAnother) {
  ExpectKeyOrder(DataOf({L"", L"a"}, {L"1", L"1@", L"1@1", L"1@12@"}));
}

TEST(ResultOrder, IsThatOfTheKeysWithManySectionsAndFloors) {
  auto data = DataOf({L"b", L"a", L"ab"}, {L"2", L"1"});
  data.sgds.resize(500);
  data.floors.resize(500);
  ExpectKeyOrder(data);
}

TEST(ResultOrder, OfDetailsLooksAtTheFirstQuantity) {
  KorDMRec::SKorDMDetailResultData data;
  data.sgds.resize(1);
  data.floors.resize(1);
  data.calItems = {{0, L"", L"", 2, 1, 0, 0, L"1"},
                   {0, L"", L"", 1, 2, 0, 0, L"1"},
                   {0, L"", L"", 1, 3, 0, 0, L"1"}};
  AddEachRow(data);
  ExpectKeyOrder(data);
}

TEST(ResultOrder, OfFittingsIsThatOfSectionAndFloorAlone) {
  KorDMRec::SKorDMPjResultData data;
  data.sgds = {{0, L"", L""}, {0, L"a", L""}, {0, L"ab", L""}};
  data.floors = {{0, L"", L"1"}, {0, L"", L"12"}, {0, L"", L"b1"}};
  data.calItems = {{0, L"x", L"", L"", 1}, {0, L"y", L"", L"", 2}};
  AddEachRow(data);
  ExpectKeyOrder(data);
}

}  // namespace
