#include "host/report_choices.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>

#include "host/host_error.h"
#include "host/joined.h"
#include "host/report_state.h"
#include "host/status_command.h"
#include "host/suggestion.h"
#include "platform/portable/utf8_text.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "result_store/tally_data_mng.h"

namespace {

using Texts = std::vector<std::string>;

std::optional<int> ReadWholeInt(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

std::vector<std::wstring> WideTexts(const Texts& texts) {
  std::vector<std::wstring> wide(texts.size());
  std::transform(texts.begin(), texts.end(), wide.begin(), WideFromUtf8);
  return wide;
}

Texts Utf8Texts(const std::vector<std::wstring>& texts) {
  Texts utf8(texts.size());
  std::transform(texts.begin(), texts.end(), utf8.begin(), Utf8FromWide);
  return utf8;
}

std::string List(const Texts& texts, std::string_view separator = ", ") {
  std::string list;
  for (const std::string& text : texts) {
    list += list.empty() ? text : Joined(separator, text);
  }
  return list;
}

bool Contains(const Texts& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

void AddOnce(Texts& texts, const std::string& text) {
  if (!Contains(texts, text)) {
    texts.push_back(text);
  }
}

void RequireSpecs(const Texts& chosen, const Texts& known, const std::string& owner) {
  for (const std::string& spec : chosen) {
    if (!Contains(known, spec)) {
      throw CHostError(
          Joined("--spec: no discipline '", spec, "' in ", owner, KnownWords(spec, known)));
    }
  }
}

const SCatalogReport& NamedReport(const std::string& name) {
  if (const SCatalogReport* report = FindReport(name)) {
    return *report;
  }
  Texts names;
  for (const SCatalogReport& line : ReportCatalog()) {
    AddOnce(names, line.name);
  }
  throw CHostError(Joined("--report: no report '", name, "'", KnownWords(name, names)));
}

const SCatalogReport& Variant(const SCatalogReport& report, const std::string& variant) {
  Texts variants;
  for (const SCatalogReport& line : ReportCatalog()) {
    if (line.type != report.type || line.variantName == nullptr) {
      continue;
    }
    if (variant == line.variantName) {
      return line;
    }
    variants.emplace_back(line.variantName);
  }
  if (variants.empty()) {
    throw CHostError(Joined("--variant: ", report.name, " has no variants"));
  }
  if (const std::optional<int> number = ReadWholeInt(variant)) {
    return *FindReport(report.type, *number);
  }
  throw CHostError(Joined("--variant: no variant '", variant, "' of ", report.name,
                          KnownWords(variant, variants)));
}

// "calculation-book member"
std::string FullName(const SCatalogReport& report) {
  return report.variantName == nullptr ? report.name : Joined(report.name, " ", report.variantName);
}

Texts ColumnIds(const std::vector<const SReportLayout*>& layouts) {
  Texts ids;
  for (const SReportLayout* layout : layouts) {
    for (const SColumn& column : CColumns(*layout)) {
      AddOnce(ids, column.cell->id);
    }
  }
  return ids;
}

template <class TTexts>
std::string Utf8List(const TTexts& texts) {
  return List(Utf8Texts({texts.begin(), texts.end()}), "、");
}

std::string FloorList(const std::vector<Report::SFloorPair>& floors) {
  Texts texts;
  for (const Report::SFloorPair& pair : floors) {
    const std::string drawing = Utf8FromWide(pair.drawingFloor);
    const std::string floor = Utf8FromWide(pair.floor);
    texts.push_back(drawing == floor ? drawing : Joined(drawing, "=", floor));
  }
  return List(texts, "、");
}

}  // namespace

std::vector<std::wstring> SpecsOf(const COpenProject& project, const SCatalogReport& report) {
  Report::CellArray stored;
  CTallyDataMng::Instance()->GetReportSpecAry(stored, report.type);
  project.RequireResultSet(report.type);
  std::vector<std::wstring> specs;
  for (const std::wstring& spec : stored) {
    if (std::find(specs.begin(), specs.end(), spec) == specs.end()) {
      specs.push_back(spec);
    }
  }
  return specs;
}

CReportChoices::CReportChoices(const SReportArguments& arguments)
    : arguments_(arguments),
      status_(arguments.status.has_value() ? ReadStatusFile(*arguments.status) : SReportStatus()) {}

const SCatalogReport& CReportChoices::Report() const {
  const SCatalogReport& report = NamedReport(arguments_.report);
  return arguments_.variant.has_value() ? Variant(report, *arguments_.variant) : report;
}

const SFormat& CReportChoices::Format() const {
  if (const SFormat* format = FindFormat(arguments_.format)) {
    return *format;
  }
  Texts names;
  for (const SFormat& format : Formats()) {
    names.emplace_back(format.name);
  }
  throw CHostError(Joined("--format: no format '", arguments_.format, "'",
                          KnownWords(arguments_.format, names)));
}

int CReportChoices::Level(const SCatalogReport& report) const {
  const int deepest = report.DeepestLevel();
  if (!arguments_.level.has_value()) {
    // A status may come from a host with other levels; the nearest is meant.
    const auto at = status_.reports.find(report.title);
    return at == status_.reports.end() ? deepest : std::clamp(at->second.expandLevel, 0, deepest);
  }
  const std::string name = FullName(report);
  if (deepest == 0) {
    throw CHostError(Joined("--level: ", name, " has no levels"));
  }
  const std::optional<int> level = ReadWholeInt(*arguments_.level);
  if (!level.has_value() || *level < 0 || *level > deepest) {
    throw CHostError(Joined("--level: '", *arguments_.level, "' is not a level of ", name,
                            ", which are 0 to ", std::to_string(deepest)));
  }
  return *level;
}

Report::SNewCondition CReportChoices::Condition(const std::wstring& spec) const {
  Report::SNewCondition condition;
  if (const auto at = status_.conditions.find(spec); at != status_.conditions.end()) {
    condition = at->second;
  }
  if (!arguments_.floors.empty()) {
    condition.floors.clear();
  }
  for (const std::string& floor : arguments_.floors) {
    const std::size_t sign = floor.rfind('=');
    const std::string drawing = floor.substr(0, sign);
    const std::string selected = sign == std::string::npos ? drawing : floor.substr(sign + 1);
    condition.floors.push_back({WideFromUtf8(drawing), WideFromUtf8(selected)});
  }
  if (!arguments_.categories.empty()) {
    condition.categories.clear();
  }
  for (const std::string& category : arguments_.categories) {
    condition.categories.insert(WideFromUtf8(category));
  }
  if (!arguments_.sysCodes.empty()) {
    condition.sysCodes = WideTexts(arguments_.sysCodes);
  }
  return condition;
}

// Where --columns is given. No id or heading holds a comma.
std::vector<std::wstring> CReportChoices::ColumnNames() const {
  std::vector<std::wstring> names;
  std::string_view rest = *arguments_.columns;
  while (true) {
    const std::size_t end = rest.find(',');
    names.push_back(WideFromUtf8(rest.substr(0, end)));
    if (end == std::string_view::npos) {
      return names;
    }
    rest.remove_prefix(end + 1);
  }
}

void CReportChoices::RequireColumns(const std::vector<const SReportLayout*>& layouts,
                                    const std::string& owner) const {
  for (const std::wstring& name : ColumnNames()) {
    if (std::none_of(layouts.begin(), layouts.end(),
                     [&](const SReportLayout* layout) { return HasColumn(*layout, name); })) {
      const std::string word = Utf8FromWide(name);
      throw CHostError(Joined("--columns: no column '", word, "' in ", owner,
                              KnownWords(word, ColumnIds(layouts))));
    }
  }
}

CColumns CReportChoices::Columns(const SCatalogReport& report) const {
  const SReportLayout& layout = *FindLayout(report.type, report.variant);
  CColumns columns(layout);
  if (!arguments_.columns.has_value()) {
    if (const auto at = status_.reports.find(report.title); at != status_.reports.end()) {
      columns.Apply(at->second.columns);
    }
    return columns;
  }
  if (!arguments_.all) {
    RequireColumns({&layout}, FullName(report));
  } else {
    std::vector<const SReportLayout*> layouts;
    for (const SReportLayout& any : ReportLayouts()) {
      layouts.push_back(&any);
    }
    RequireColumns(layouts, "any report");
  }
  columns.Choose(ColumnNames());
  return columns;
}

std::vector<std::wstring> CReportChoices::Specs(const COpenProject& project,
                                                const SCatalogReport& report) const {
  const std::vector<std::wstring> all = SpecsOf(project, report);
  const Texts names = Utf8Texts(all);
  RequireSpecs(arguments_.specs, names, Joined(report.name, " of '", arguments_.file, "'"));
  Texts wanted;
  for (const std::string& spec : arguments_.specs) {
    AddOnce(wanted, spec);
  }
  std::vector<std::wstring> chosen = wanted.empty() ? all : WideTexts(wanted);
  if (!Format().holdsManySpecs && chosen.size() > 1) {
    throw CHostError(Joined("--format: ", Format().name,
                            " are those of one discipline; choose it with --spec out of ",
                            List(names)));
  }
  return chosen;
}

std::vector<std::vector<std::wstring>> CReportChoices::AllSpecs(const COpenProject& project) const {
  Texts known;
  std::vector<std::vector<std::wstring>> chosen;
  for (const SCatalogReport& report : ReportCatalog()) {
    std::vector<std::wstring>& specs = chosen.emplace_back();
    for (const std::wstring& spec : SpecsOf(project, report)) {
      const std::string name = Utf8FromWide(spec);
      AddOnce(known, name);
      if (arguments_.specs.empty() || Contains(arguments_.specs, name)) {
        specs.push_back(spec);
      }
    }
  }
  RequireSpecs(arguments_.specs, known, Joined("any report of '", arguments_.file, "'"));
  return chosen;
}

std::vector<std::wstring> CReportChoices::Sections() const {
  if (!arguments_.sections.empty()) {
    return WideTexts(arguments_.sections);
  }
  if (arguments_.bySection && status_.dispSgd.empty()) {
    return CTallyDataMng::Instance()->GetSgdNameTree();
  }
  return status_.dispSgd;
}

void CReportChoices::SetState() const {
  CReportStatusMng* manager = CReportStatusMng::Instance();
  SetDividedNode(arguments_.divided || status_.isDividedNode);
  manager->SetIsBySgd(!arguments_.sections.empty() || status_.isBySgd);
  manager->SetDispSgd(Sections());
  if (arguments_.sortDown.has_value()) {
    CResultConfig::Instance()->SetLineSortDowm(*arguments_.sortDown);
  }
}

std::vector<std::pair<std::string, std::string>> CReportChoices::CommonTexts() const {
  std::vector<std::pair<std::string, std::string>> texts;
  // The shown sections count only where one of the switches asks for them.
  const bool isBySection = arguments_.bySection || CReportStatusMng::Instance()->GetIsBySgd();
  const std::vector<std::wstring> sections = Sections();
  if (isBySection && !sections.empty()) {
    texts.emplace_back("施工段", Utf8List(sections));
  }
  texts.emplace_back("按施工段分列", arguments_.bySection ? "是" : "否");
  texts.emplace_back("计算书按类型划分",
                     CReportStatusMng::Instance()->GetIsDividedNode() ? "是" : "否");
  texts.emplace_back("管径排序",
                     CResultConfig::Instance()->GetLineSortDowm() ? "从大到小" : "从小到大");
  return texts;
}

std::vector<std::pair<std::string, std::string>> CReportChoices::FilterTexts(
    const std::wstring& spec) const {
  const Report::SNewCondition condition = Condition(spec);
  std::vector<std::pair<std::string, std::string>> texts;
  if (!condition.floors.empty()) {
    texts.emplace_back("楼层", FloorList(condition.floors));
  }
  if (!condition.categories.empty()) {
    texts.emplace_back("构件类型", Utf8List(condition.categories));
  }
  if (!condition.sysCodes.empty()) {
    texts.emplace_back("系统编号", Utf8List(condition.sysCodes));
  }
  return texts;
}
