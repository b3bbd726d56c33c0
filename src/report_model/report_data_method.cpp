#include "report_model/report_data_method.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/code_page.h"
#include "platform/text_numbers.h"
#include "platform/text_tool.h"
#include "report_model/floor_text.h"
#include "result_store/tally_data_mng.h"

namespace {

constexpr wchar_t kPathSeparator = L'\\';
constexpr wchar_t kCodeSeparator = L'&';
constexpr std::wstring_view kPseudoLevel = L"\\*";

Report::CellArray SplitText(std::wstring_view text, wchar_t separator) {
  Report::CellArray parts;
  KorString::Split(text, parts, separator);
  return parts;
}

// A path of other than three levels gets a leaf that repeats its last level behind a "*".
std::wstring CompletePath(const std::wstring& path, wchar_t separator) {
  const Report::CellArray parts = SplitText(path, separator);
  if (parts.empty() || parts.size() == SYSCODE_LEVEL_COUNT) {
    return path;
  }
  return path + separator + L'*' + parts.back();
}

bool Contains(std::wstring_view text, std::wstring_view part) {
  return text.find(part) != text.npos;
}

// A floor expression taken apart; the texts are views of the text it was read from.
struct SFloorExpression {
  enum class EForm { None, Single, Range, List };
  EForm form = EForm::None;
  std::wstring_view first;
  std::wstring_view rest;
};

SFloorExpression ReadFloorExpression(std::wstring_view text) {
  using EForm = SFloorExpression::EForm;
  if (text.empty()) {
    return {};
  }
  std::size_t comma = text.npos;
  std::size_t slash = text.npos;
  for (std::size_t i = 0; i < text.size() && (comma == text.npos || slash == text.npos); ++i) {
    const wchar_t c = UnifiedSeparator(text[i]);
    if (c == L',' && comma == text.npos) {
      comma = i;
    } else if (c == L'/' && slash == text.npos) {
      slash = i;
    }
  }
  if (comma != text.npos && comma > 0) {
    return {EForm::Range, text.substr(0, comma), text.substr(comma + 1)};
  }
  if (slash != text.npos && slash > 0) {
    return {EForm::List, text.substr(0, slash), text.substr(slash + 1)};
  }
  if (comma == text.npos && slash == text.npos) {
    return {EForm::Single, text, {}};
  }
  return {};
}

// Hands on the items of a list that are not empty.
template <class TVisit>
void ForEachListItem(std::wstring_view rest, TVisit&& visit) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= rest.size(); ++i) {
    if (i == rest.size() || UnifiedSeparator(rest[i]) == L'/') {
      if (i > begin) {
        visit(rest.substr(begin, i - begin));
      }
      begin = i + 1;
    }
  }
}

std::wstring UnifiedText(std::wstring_view text) {
  std::wstring unified(text);
  UnifySeparators(unified);
  return unified;
}

}  // namespace

std::wstring CReportDataMethod::GetTypeCalItem(Report::EReportType type) {
  return type == Report::ReportPipeJRBW ? L"保温体积" : L"";
}

int CReportDataMethod::GetExpandSysCodeLevel(Report::ELevelType level) {
  switch (level) {
    case Report::LevelSysCode1:
      return 1;
    case Report::LevelSysCode2:
      return 2;
    case Report::LevelSysCode3:
    case Report::LevelDetail:
      return 3;
    default:
      return 0;
  }
}

std::wstring CReportDataMethod::GetSysCodeName(const std::wstring& path) {
  return CompletePath(path, kPathSeparator);
}

std::wstring CReportDataMethod::GetNewSysCodeName(const std::wstring& path) {
  return CompletePath(path, kCodeSeparator);
}

int CReportDataMethod::GetSysCodeLevel(const std::wstring& path) {
  const Report::CellArray parts = SplitText(path, kPathSeparator);
  const int levels = static_cast<int>(parts.size());
  return levels > 0 && parts.back().starts_with(L'*') ? levels - 1 : levels;
}

std::wstring CReportDataMethod::GetSysCodeLevelName(std::wstring_view path, int level) {
  if (level == SYSCODE_LEVEL_COUNT) {
    return std::wstring(path);
  }
  std::wstring name;
  const Report::CellArray parts = SplitText(path, kPathSeparator);
  for (int i = 0; i < level && i < static_cast<int>(parts.size()); ++i) {
    if (i > 0) {
      name += kPathSeparator;
    }
    name += parts[static_cast<std::size_t>(i)];
  }
  return name;
}

std::wstring CReportDataMethod::GetSysCodeRemark(const std::wstring& spec,
                                                 const std::wstring& path) {
  const std::wstring remark =
      CTallyDataMng::Instance()->GetSysCodeRemark(spec, path.substr(0, path.find(kPseudoLevel)));
  return remark.empty() ? remark : L"(" + remark + L")";
}

bool CReportDataMethod::GetAttParamValue(std::wstring& value, std::wstring& line,
                                         const std::wstring& text, const std::wstring& prefix) {
  for (const std::wstring& candidate : SplitText(text, L'\n')) {
    if (candidate.starts_with(prefix)) {
      line = candidate;
      const std::size_t colon = candidate.find(L':');
      if (colon == candidate.npos) {
        return false;
      }
      value = candidate.substr(colon + 1);
      return true;
    }
  }
  return false;
}

std::wstring CReportDataMethod::GetValue(const Report::CellArray& lines, const std::wstring& key) {
  for (const std::wstring& line : lines) {
    if (Contains(line, key)) {
      const std::size_t colon = line.find(L':');
      return colon == line.npos ? line : line.substr(colon + 1);
    }
  }
  return {};
}

bool CReportDataMethod::GetIsBzcContainFloorAry(Report::CellArray& floors,
                                                const std::wstring& text) {
  using EForm = SFloorExpression::EForm;
  const std::wstring unified = UnifiedText(text);
  const SFloorExpression floor = ReadFloorExpression(unified);
  switch (floor.form) {
    case EForm::None:
      return false;
    case EForm::Single:
      floors.push_back(text);
      return false;
    case EForm::List:
      floors.emplace_back(floor.first);
      ForEachListItem(floor.rest, [&](std::wstring_view item) { floors.emplace_back(item); });
      return true;
    case EForm::Range:
      break;
  }
  floors.emplace_back(floor.first);
  // In 64 bits, so that the ends of the range cannot run over.
  const std::int64_t last = ReadLeadingInt(floor.rest);
  for (std::int64_t i = std::int64_t{ReadLeadingInt(floor.first)} + 1; i < last; ++i) {
    floors.push_back(IntText(static_cast<int>(i)));
  }
  floors.emplace_back(floor.rest);
  return true;
}

int CReportDataMethod::GetFloorCount(std::wstring_view text) {
  using EForm = SFloorExpression::EForm;
  const SFloorExpression floor = ReadFloorExpression(text);
  std::int64_t count = 0;
  switch (floor.form) {
    case EForm::None:
      break;
    case EForm::Single:
      count = 1;
      break;
    case EForm::List:
      count = 1;
      ForEachListItem(floor.rest, [&](std::wstring_view) { ++count; });
      break;
    case EForm::Range:
      // The two ends stand for a floor each, whatever lies between.
      count = 2 + std::max<std::int64_t>(0, std::int64_t{ReadLeadingInt(floor.rest)} -
                                                ReadLeadingInt(floor.first) - 1);
      break;
  }
  return static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
}

int CReportDataMethod::NumSmall(const std::string& a, const std::string& b, int start) {
  const auto run = [start](std::string_view text) {
    text.remove_prefix(static_cast<std::size_t>(start));
    return text.substr(0, text.find_first_not_of("0123456789."));
  };
  const std::string_view runA = run(a);
  const std::string_view runB = run(b);
  if (ReadLeadingNumber(runA) > ReadLeadingNumber(runB)) {
    return -1;
  }
  return runA == runB ? 0 : 1;
}

int CReportDataMethod::AttSort(const std::wstring& a, const std::wstring& b, bool ascending) {
  return CompareNatural(ToNarrowText(a), ToNarrowText(b), ascending);
}

Report::EReportType CReportDataMethod::GetTypeByName(const std::wstring& title) {
  using Named = std::pair<std::wstring_view, Report::EReportType>;
  static constexpr std::array kNames{
      Named{L"消耗量汇总表", Report::ReportXhlHz},
      Named{L"超高量汇总表", Report::ReportXhlCgHz},
      Named{L"系统计算书", Report::ReportSysJss},
      Named{L"工程量概览表", Report::ReportXhlGl},
      Named{L"配件汇总表", Report::ReportPjHz},
      Named{L"绝热保温表", Report::ReportPipeJRBW},
      Named{L"刷油工作量表", Report::ReportBrushPaint},
      Named{L"风管壁厚表", Report::ReportDuctH},
      Named{L"定额汇总表", Report::ReportDeHz},
      Named{L"清单汇总表", Report::ReportQdHz},
      Named{L"清单定额汇总表", Report::ReportQdDeHz},
  };
  for (const auto& [name, type] : kNames) {
    if (name == title) {
      return type;
    }
  }
  return Report::ReportNone;
}

void CReportDataMethod::GetItemQuantity(Report::CellArray& cells,
                                        const Report::SResultData& result) {
  cells.push_back(result.unit);
  cells.push_back(NumberText(result.quantity));
}

void CReportDataMethod::GetSysItemQ(Report::CellArray& cells, const Report::SResultData& result) {
  GetItemQuantity(cells, result);
  cells.push_back(result.components);
}

void CReportDataMethod::UnionItemQuantity(Report::SResultData& target,
                                          const Report::SResultData& source) {
  if (target.unit == source.unit) {
    target.quantity += source.quantity;
    target.components += source.components;
  }
}

std::wstring CReportDataMethod::GetPipeLineName(const std::wstring& name,
                                                const std::wstring& attributes,
                                                const std::wstring& spec,
                                                const std::wstring& kind) {
  for (const std::wstring_view whole : {L"机械", L"（沟槽式）", L"（螺纹式）"}) {
    if (Contains(name, whole)) {
      return name;
    }
  }
  if (attributes.empty()) {
    return name + L" 沟槽连接";
  }
  const Report::CellArray lines = SplitText(attributes, L'\n');
  std::wstring text = name;
  const auto append = [&text](const std::wstring& value) {
    text += L' ';
    text += value;
  };
  const auto appendIfGiven = [&](const std::wstring& value) {
    if (!value.empty()) {
      append(value);
    }
  };
  if (spec == L"电气" || spec == L"弱电") {
    append(GetValue(lines, L"材质:"));
  }
  if (kind == L"风管") {
    append(GetValue(lines, L"材质:"));
  }
  appendIfGiven(GetValue(lines, L"连接方式:"));
  appendIfGiven(GetValue(lines, L"样式:"));
  return text;
}

std::wstring CReportDataMethod::GetEngFloor(const std::wstring& floor) {
  for (const KorDMRec::SKorDMFloorRec& record : CTallyDataMng::Instance()->GetFloorTree()) {
    if (record.floorText == floor) {
      return record.name;
    }
  }
  return {};
}

void CReportDataMethod::GetFJSysCodeVec(const std::vector<std::wstring>& paths,
                                        std::vector<std::set<std::wstring, std::less<>>>& levels) {
  std::array<std::set<std::wstring, std::less<>>, SYSCODE_LEVEL_COUNT> sets;
  for (const std::wstring& path : paths) {
    Report::CellArray parts = SplitText(path, kPathSeparator);
    for (std::size_t i = 0; i < parts.size() && i < sets.size(); ++i) {
      sets[i].insert(std::move(parts[i]));
    }
  }
  for (auto& set : sets) {
    if (!set.empty()) {
      levels.push_back(std::move(set));
    }
  }
}

void CReportDataMethod::ChangeFloorResult(CCellBlock& out, std::set<CFloorResultData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeSysResult(CCellBlock& out, std::set<CFloorResultData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeSysResult(CCellBlock& out, std::set<CSysResultData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeTypeResult(CCellBlock& out, std::set<CTypeResultData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeCategoryResult(CCellBlock& out,
                                             std::set<CCategoryResultData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeCalItemResult(CCellBlock& out,
                                            std::set<CCalItemResultData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeAttResult(CCellBlock& out, std::set<CAttResultData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeChapterResult(CCellBlock& out, std::set<CChapterData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeBrushPaintResult(CCellBlock& out,
                                               std::set<CBrushPaintData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
void CReportDataMethod::ChangeQDDEResult(CCellBlock& out, std::set<CQDDEData>&& blocks) {
  TakeBlocks(out, std::move(blocks));
}
