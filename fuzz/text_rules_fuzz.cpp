// The rules of texts: floor expressions, system codes, attribute lines, numbers, code pages, the
// keys of nodes.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fake_services.h"
#include "fuzz_check.h"
#include "fuzz_input.h"
#include "platform/app_profile.h"
#include "platform/code_page.h"
#include "platform/portable/utf8_text.h"
#include "platform/text_numbers.h"
#include "platform/text_tool.h"
#include "platform/xml_service.h"
#include "report_model/floor_text.h"
#include "report_model/formula_text.h"
#include "report_model/narrow_order.h"
#include "report_model/report_data_method.h"
#include "report_model/row_results.h"
#include "result_store/category_path.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/report_type_data.h"
#include "result_store/report_xhl_gl_type_data.h"

namespace {

using Method = CReportDataMethod;

bool IsAscii(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= 0 && c < 0x80; });
}

std::wstring Joined(const std::vector<std::wstring>& parts, wchar_t separator) {
  std::wstring text;
  for (const std::wstring& part : parts) {
    text += part;
    text += separator;
  }
  return text.substr(0, text.empty() ? 0 : text.size() - 1);
}

void CheckSplit(const std::wstring& text, wchar_t separator) {
  std::vector<std::wstring> parts = {L"kept"};
  KorString::Split(text, parts, separator);
  Require(parts[0] == L"kept", "Split appends");
  parts.erase(parts.begin());
  Require(parts.empty() == text.empty(), "the empty text alone has no components");
  Require(Joined(parts, separator) == text, "the components make up the text");
}

void CheckFloors(const std::wstring& text) {
  constexpr int kMostFloors = 5000;
  std::wstring unified = text;
  UnifySeparators(unified);
  const int count = Method::GetFloorCount(text);
  Require(Method::GetFloorCount(unified) == count, "full-width separators count as the plain ones");
  CFloorResultData floor(text);
  Require(floor.GetFloorName() == text, "a floor keeps its name");
  Require(floor.GetSortId() == CFloorResultData::CalFloorGrade(unified), "the grade is the same");
  if (count <= kMostFloors) {
    Report::CellArray floors;
    const bool isSeveral = Method::GetIsBzcContainFloorAry(floors, text);
    Require(floors.size() == static_cast<std::size_t>(count), "as many floors as were counted");
    Require(isSeveral || floors.size() <= 1, "one floor at most unless the text says so");
  }
}

void CheckSysCode(const std::wstring& path, int level) {
  const std::wstring name = Method::GetSysCodeName(path);
  Require(name.starts_with(path), "a path is completed behind its end");
  Require(Method::GetNewSysCodeName(path).starts_with(path), "so it is with &");
  Require(Method::GetSysCodeLevel(path) >= 0, "levels are counted");
  if (level >= 0) {
    Require(path.starts_with(Method::GetSysCodeLevelName(path, level)), "levels from the first on");
  } else {
    Require(Method::GetSysCodeLevelName(path, level).empty(), "no level, no name");
  }
  Require(Method::GetSysCodeRemark(L"", path).empty(), "no project, no remark");
  std::vector<std::set<std::wstring, std::less<>>> levels;
  Method::GetFJSysCodeVec({path, name}, levels);
  Require(levels.size() <= SYSCODE_LEVEL_COUNT, "three levels at most");

  Report::NodeMap specs;
  const KorDMRec::SKorDMSpecRec spec{1, L"spec"};
  CReportSpec* root = Method::GetSpec(specs, spec);
  Report::NodeMap& children = root->children;
  const KorDMRec::SKorDMSysCodeRec record{1, path};
  const CReportSysCode* node = Method::GetSysCode(children, L"", record);
  Require((node == nullptr) == path.empty(), "every path but the empty one has a node");
  Require(node == Method::GetSysCode(children, L"", record), "the second look-up finds the first");
  std::vector<std::wstring> parts;
  KorString::Split(name, parts, L'\\');
  if (node != nullptr) {
    Require(Method::FindSysCodeItem(root, parts) == node, "the node is found by its levels");
  }
  ClearNodes(specs);
}

void CheckAttribute(const std::wstring& text, const std::wstring& prefix) {
  std::wstring value = L"kept";
  std::wstring line = L"kept";
  if (Method::GetAttParamValue(value, line, text, prefix)) {
    Require(line.starts_with(prefix), "the line begins with the prefix");
    Require(line.substr(line.find(L':') + 1) == value, "the value stands behind the first colon");
  } else {
    Require(value == L"kept", "the value stays");
  }
  Report::CellArray lines;
  KorString::Split(text, lines, L'\n');
  Require(text.find(Method::GetValue(lines, prefix)) != text.npos, "the value is a part of a line");
}

void CheckPipeLine(const std::wstring& name, const std::wstring& attributes,
                   const std::wstring& spec, const std::wstring& kind) {
  const std::wstring text = Method::GetPipeLineName(name, attributes, spec, kind);
  Require(text.starts_with(name), "a pipe line's name begins the text");
  Report::NodeMap children;
  CReportAttribute* node = Method::GetPjAttribute(children, spec, kind, {1, name, attributes});
  Require(node != nullptr, "a fitting has an attribute node");
  Require(FindChild<CReportAttribute>(children, node->GetKey()) == node, "filed under its name");
}

void CheckNodes(const std::wstring& a, const std::wstring& b, const std::wstring& c,
                const std::wstring& d, double quantity, int number) {
  const KorDMRec::SKorDMFloorRec floor{1, a, b};
  const KorDMRec::SKorDMCalItemRec item{1, a, b, c, d, quantity, c};
  const KorDMRec::SKorDMCalItemDetailQRec detailItem{1, a, b, quantity, 1, 2, 3, d};
  const KorDMRec::SKorDMPjCalItemRec pjItem{1, a, b, c, number};
  const KorDMRec::SKorDMComponentRec component{1, d, {}};
  const KorDMRec::SKorDMCategoryRec category{1, b, c};
  const KorDMRec::SKorDMQdDeRec qdDe{1, a, b, c, d};
  Report::NodeMap children;
  for (int pass = 0; pass < 2; ++pass) {
    Method::GetFloor(children, floor);
    Method::GetType(children, a, b);
    Method::GetType(children, {1, a}, category);
    Method::GetCategory(children, a, b, c);
    Method::GetCategory(children, d, category);
    Method::GetSysCodeNode(children, a, b, c);
    Method::GetAttribute(children, a, b);
    Method::GetAttribute(children, {1, c, d});
    Method::GetCalItem(children, item);
    Method::GetCalItem(children, detailItem);
    Method::GetPjCalItem(children, pjItem);
    Method::GetResult(children, c, floor, item, component);
    Method::GetResultDetail(children, d, floor, detailItem, component);
    Method::GetPjResult(children, d, floor, pjItem, component);
    Method::GetBrushPaint(children, number, number / 2, a, b);
    Method::GetDuctHType(children, a, b, c);
    Method::GetPipeJRBW(children, b, c, d);
    Method::GetChapter(children, qdDe, number % 2 != 0);
    Method::GetQdDeItem(children, qdDe, number % 2 == 0);
  }
  for (const auto& [key, child] : children) {
    Require(
        child->GetKey().size() <= 2 * key.size() + a.size() + b.size() + c.size() + d.size() + 32,
        "a key is made of the texts");
  }
  ClearNodes(children);
}

/// A decimal number for the C library: only what the grammars have in common.
bool IsPlainNumber(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(), [](wchar_t c) {
    return std::wcschr(L"0123456789.eE+- ", c) != nullptr && c != 0;
  });
}

void CheckNumbers(const std::wstring& text, double value, int number) {
  const double read = ReadLeadingNumber(text);
  Require(!std::isnan(read), "a text is always some number");
  if (IsPlainNumber(text)) {
    const std::string narrow(text.begin(), text.end());
    Require(read == std::strtod(narrow.c_str(), nullptr), "numbers read as in C");
    Require(read == ReadLeadingNumber(narrow), "narrow numbers read as wide ones");
  }
  char printed[64];
  std::snprintf(printed, sizeof printed, "%g", value);
  const std::wstring numberText = NumberText(value);
  Require(std::isnan(value) ? numberText == L"nan" : Utf8FromWide(numberText) == printed,
          "numbers print as in C");
  Require(ReadLeadingInt(IntText(number)) == number, "an int comes back");
  const long long wide = std::wcstoll(text.c_str(), nullptr, 10);
  if (IsPlainNumber(text)) {
    const long long lowest = std::numeric_limits<int>::min();
    const long long highest = std::numeric_limits<int>::max();
    Require(ReadLeadingInt(text) == std::clamp(wide, lowest, highest), "ints read as in C");
  }
}

void CheckVersions(const std::wstring& a, const std::wstring& b) {
  const CKorVersion versionA(a);
  const CKorVersion versionB(b);
  Require(versionA.ToString() == a, "a version keeps its text");
  Require(!(versionA < versionA), "no version is below itself");
  Require(!(versionA < versionB && versionB < versionA), "versions have an order");
}

void CheckBoolean(const std::wstring& text) {
  try {
    XmlBoolean(text);
  } catch (const CXmlError& error) {
    Require(error.Code() == CXmlError::kTypeMismatch, "a failed conversion");
  }
}

void CheckCodePages(const std::wstring& text, std::size_t cut) {
  const std::wstring_view front = std::wstring_view(text).substr(0, std::min(cut, text.size()));
  const std::wstring_view back = std::wstring_view(text).substr(front.size());
  for (const int codePage : {936, 1252, 54936, 65001}) {
    Require(ICodePage::Instance()->SetThreadCodePage(codePage), "four code pages");
    const std::string narrow = ToNarrowText(text);
    if (IsAscii(text)) {
      Require(narrow == Utf8FromWide(text), "ASCII is the same everywhere");
    }
    Require(sizeof(wchar_t) == 2 || narrow == ToNarrowText(front) + ToNarrowText(back),
            "each character is converted alone");
    Require(CompareAsNarrow(text, text) == 0, "a text equals itself");
    Require(NarrowWithoutBlanks(text).find(' ') == std::string::npos, "no blanks");
  }
  Require(!ICodePage::Instance()->SetThreadCodePage(static_cast<int>(cut) + 2000000), "no others");
  ICodePage::Instance()->SetThreadCodePage(936);
}

void CheckUtf8(std::string_view bytes) {
  const std::wstring wide = WideFromUtf8(bytes);
  const std::string back = Utf8FromWide(wide);
  Require(WideFromUtf8(back) == wide, "Unicode text comes back");
  if (wide.find(L'\uFFFD') == wide.npos) {
    Require(back == bytes, "well-formed UTF-8 comes back");
  }
}

void CheckOrders(const std::wstring& a, const std::wstring& b, int start) {
  Require(Method::AttSort(a, a, true) == 0, "a text equals itself");
  Method::AttSort(a, b, false);
  Method::AttSort(b, a, true);
  const std::string narrowA = ToNarrowText(a);
  const std::string narrowB = ToNarrowText(b);
  const std::size_t shorter = std::min(narrowA.size(), narrowB.size());
  const std::size_t at = static_cast<unsigned>(start) % (shorter + 1);
  const int order = Method::NumSmall(narrowA, narrowB, static_cast<int>(at));
  Require(order >= -1 && order <= 1, "a sign");
  Require(Method::NumSmall(narrowA, narrowA, static_cast<int>(at)) == 0, "a run equals itself");
}

void CheckTables(const std::wstring& spec, const std::wstring& category, const std::wstring& kind) {
  CReportTypeData::Instance()->IsPipeType(spec, category, kind);
  CReportTypeData::Instance()->GetCategoryType(spec, category, kind);
  CReportMainCalItemData::Instance()->GetMainCalItem(spec, category, kind);
  CReportXHlGlTypeData::Instance()->GetCategoryType(spec, category, kind);
  CReportXHlGlTypeData::Instance()->GetSortId(spec, category, kind);
  CTallyDataMng::Instance()->GetBigCategorySortId(spec, category);
  Require(CTallyDataMng::Instance()->GetCategorySortId(spec, CategoryPath(category, kind)) ==
              CTallyDataMng::kUnknownSortId,
          "no project, no number");
  Require(Method::GetEngFloor(kind).empty(), "no project, no floor");
  Method::GetTypeByName(kind);
}

void CheckCells(const std::wstring& a, const std::wstring& b, double quantity) {
  Report::SResultData target{quantity, a, b};
  const Report::SResultData source{1, b, a};
  Method::UnionItemQuantity(target, source);
  Require(a == b || target.components == b, "a sum keeps to its unit");
  Report::CellArray cells;
  Method::GetItemQuantity(cells, target);
  Method::GetSysItemQ(cells, target);
  Require(cells.size() == 5, "two cells and three");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const CFakeServices services;
  CFuzzInput input(data, size);
  const int number = input.Int();
  const double quantity = input.Double();
  CheckUtf8(input.Rest());
  const std::wstring a = input.Text();
  const std::wstring b = input.Text();
  const std::wstring c = input.Text();
  const std::wstring d = input.Text();

  for (const wchar_t separator : {L'\\', L'&', L'\n', L'/', L','}) {
    CheckSplit(a, separator);
  }
  CheckFloors(a);
  CheckSysCode(a, number % 8);
  CheckAttribute(a, b);
  CheckPipeLine(a, b, c, d);
  CheckNodes(a, b, c, d, quantity, number);
  CheckNumbers(a, quantity, number);
  CheckVersions(a, b);
  CheckBoolean(a);
  CheckCodePages(a, static_cast<unsigned>(number) % 64);
  CheckOrders(a, b, number);
  CheckTables(a, b, c);
  CheckCells(a, b, quantity);
  Multiplied(a, number, b);
  MultipliedInBrackets(a, number, b, c);
  Method::GetExpandSysCodeLevel(static_cast<Report::ELevelType>(number));
  Method::GetTypeCalItem(static_cast<Report::EReportType>(number));
  return 0;
}
