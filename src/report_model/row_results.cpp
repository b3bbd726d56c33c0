#include "report_model/row_results.h"

#include <cmath>
#include <limits>

#include "platform/code_page.h"
#include "platform/text_numbers.h"
#include "report_model/floor_text.h"

void CFloorResultData::SetFloor(const std::wstring& floor) {
  name_ = floor;
  grade_ = SFloorGrade(floor);
}

int CFloorResultData::CalFloorGrade(std::wstring floor) {
  constexpr int kNoNumber = -10000;
  UnifySeparators(floor);
  std::size_t end = floor.find(L',');
  if (end == floor.npos) {
    end = floor.find(L'/');
  }
  const bool several = end != floor.npos;
  const double grade =
      std::trunc(ReadLeadingNumber(std::wstring_view(floor).substr(0, end)) * 100.0);
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  int number = 0;
  if (grade >= kHighest) {
    number = kHighest;
  } else if (grade <= kLowest) {
    number = kLowest;
  } else {
    number = static_cast<int>(grade);
  }
  if (number == 0) {
    number = kNoNumber;
  }
  return several && number > kLowest ? number - 1 : number;
}

CCalItemResultData::CCalItemResultData(std::wstring itemName, std::wstring itemUnit,
                                       CCellBlock&& block)
    : SRowBlock{std::move(block)},
      name(std::move(itemName)),
      unit(std::move(itemUnit)),
      narrowName(ToNarrowText(name)),
      narrowUnit(ToNarrowText(unit)) {}

bool CCalItemResultData::operator<(const CCalItemResultData& other) const {
  if (name != other.name) {
    return narrowName < other.narrowName;
  }
  return narrowUnit < other.narrowUnit;
}

CAttResultData::CAttResultData(bool largerFirst, const std::wstring& value,
                               const std::wstring& name, CCellBlock&& block)
    : CAttResultData(largerFirst, std::make_shared<const SAttSortKey>(name, value),
                     std::move(block)) {}

CAttResultData::CAttResultData(bool largerFirst, std::shared_ptr<const SAttSortKey> attKey,
                               CCellBlock&& block)
    : SRowBlock{std::move(block)}, sortFlag(largerFirst), key(std::move(attKey)) {}

bool CAttResultData::operator<(const CAttResultData& other) const {
  if (key->name != other.key->name) {
    return CompareNatural(key->naturalName, other.key->naturalName, !sortFlag) < 0;
  }
  return key->narrowValue < other.key->narrowValue;
}

CBrushPaintData::CBrushPaintData(int categorySortId, int paintCoat, std::wstring paintName,
                                 CCellBlock&& block)
    : SRowBlock{std::move(block)},
      sortId(categorySortId),
      coat(paintCoat),
      name(std::move(paintName)),
      narrowName(ToNarrowText(name)) {}

bool CBrushPaintData::operator<(const CBrushPaintData& other) const {
  if (sortId != other.sortId) {
    return sortId < other.sortId;
  }
  if (name != other.name) {
    return narrowName < other.narrowName;
  }
  return coat < other.coat;
}

CQDDEData::CQDDEData(std::wstring itemCode, std::wstring itemName, std::wstring itemFeature,
                     std::wstring itemUnit, CCellBlock&& block)
    : SRowBlock{std::move(block)},
      code(std::move(itemCode)),
      name(std::move(itemName)),
      feature(std::move(itemFeature)),
      unit(std::move(itemUnit)),
      naturalCode(NarrowWithoutBlanks(code)) {}

bool CQDDEData::operator<(const CQDDEData& other) const {
  if (code != other.code) {
    return CompareNatural(naturalCode, other.naturalCode, true) < 0;
  }
  if (name != other.name) {
    return CompareAsNarrow(name, other.name) < 0;
  }
  if (feature != other.feature) {
    return CompareAsNarrow(feature, other.feature) < 0;
  }
  return CompareAsNarrow(unit, other.unit) < 0;
}
