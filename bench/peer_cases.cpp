#include "peer_cases.h"

#include <cstddef>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <utility>

#include "answer_check.h"
#include "platform/portable/utf8_text.h"
#include "report_model/report_data_method.h"
#include "report_table.h"
#include "result_store/report_main_cal_item_data.h"
#include "result_store/tally_data_mng.h"
#include "rows/row_layouts.h"

namespace {

using Json = nlohmann::json;

const SBenchReport& Summary() {
  static const SBenchReport report = [] {
    for (const SBenchReport& known : ReportTable()) {
      if (known.catalog->type == Report::ReportXhlHz) {
        return known;
      }
    }
    throw std::runtime_error("there is no consumption summary");
  }();
  return report;
}

const KorDMRec::SKorDMResultData& Records() {
  return CTallyDataMng::Instance()->GetXhlHzData();
}

template <class TRecord>
const TRecord& At(const std::vector<TRecord>& records, int index) {
  return records.at(static_cast<std::size_t>(index));
}

std::wstring MainItem(const KorDMRec::SKorDMResultRow& row) {
  const auto& kind = At(Records().categories, row.category);
  return CReportMainCalItemData::Instance()->GetMainCalItem(At(Records().specs, row.spec).name,
                                                            kind.category, kind.kind);
}

Json MainItems() {
  Json items = Json::array();
  std::set<std::pair<int, int>> known;
  for (const auto& row : Records().rows) {
    if (known.emplace(row.spec, row.category).second) {
      const auto& kind = At(Records().categories, row.category);
      items.push_back({Utf8FromWide(At(Records().specs, row.spec).name),
                       Utf8FromWide(kind.category), Utf8FromWide(kind.kind),
                       Utf8FromWide(MainItem(row))});
    }
  }
  return items;
}

// At the top level the engine counts the main item of each kind alone.
bool Counts(const SPeerCase& peerCase, const KorDMRec::SKorDMResultRow& row) {
  const auto& condition = peerCase.condition;
  return (peerCase.specs.size() > 1 ||
          At(Records().specs, row.spec).name == peerCase.specs.front()) &&
         (condition.floors.empty() ||
          At(Records().floors, row.floor).name == condition.floors.front().floor) &&
         (peerCase.level > 0 || At(Records().calItems, row.calItem).name == MainItem(row));
}

// `takesCode`: for each system code whether the filter takes it.
Json PlainLoop(const SPeerCase& peerCase, const std::vector<bool>& takesCode) {
  std::size_t rows = 0;
  double sum = 0;
  for (const auto& row : Records().rows) {
    if (takesCode.at(static_cast<std::size_t>(row.sysCode)) && Counts(peerCase, row)) {
      ++rows;
      sum += At(Records().calItems, row.calItem).quantity *
             FloorsOf(At(Records().floors, row.floor).floorText);
    }
  }
  return {{"records", rows}, {"sum", sum}};
}

std::vector<std::wstring> LevelsOf(const std::wstring& path) {
  std::vector<std::wstring> levels(1);
  for (const wchar_t c : path) {
    if (c == L'\\') {
      levels.emplace_back();
    } else {
      levels.back() += c;
    }
  }
  return levels;
}

// A path selects by its first three levels. Codes of other than three have a leaf more.
std::vector<bool> TakenCodes(const std::vector<std::wstring>& paths) {
  constexpr std::size_t kFilteredLevels = 3;
  std::vector<bool> taken;
  for (const auto& code : Records().sysCodes) {
    bool takes = true;
    for (const std::wstring& path : paths) {
      const std::vector<std::wstring> wanted = LevelsOf(path);
      const std::vector<std::wstring> levels =
          LevelsOf(CReportDataMethod::GetSysCodeName(code.name));
      for (std::size_t i = 0; i < levels.size() && i < wanted.size() && i < kFilteredLevels; ++i) {
        takes = takes && levels[i] == wanted[i];
      }
    }
    taken.push_back(takes);
  }
  return taken;
}

Json RowsOf(const SPeerCase& peerCase) {
  const SReportLayout* layout = FindLayout(Summary().catalog->type, Summary().variant);
  Json rows = Json::array();
  for (const std::wstring& spec : peerCase.specs) {
    rows.push_back({"spec", Utf8FromWide(spec)});
    const Report::CellArray cells = Request(Summary(), spec, peerCase.level, peerCase.condition);
    for (const SRow& row : CutRows(*layout, cells)) {
      Json texts = {Utf8FromWide(row.layout->marker)};
      for (std::size_t cell = 0; cell < row.cells.size(); ++cell) {
        if (row.layout->cells[cell].type != ECellType::References) {
          texts.push_back(Utf8FromWide(row.cells[cell]));
        }
      }
      rows.push_back(std::move(texts));
    }
  }
  return rows;
}

}  // namespace

std::vector<SPeerCase> PeerCases() {
  const ERecordSet set = Summary().set;
  const std::wstring biggest = BiggestSpec(set);
  std::vector<std::wstring> all;
  for (const SSpecRows& spec : RowsBySpec(set)) {
    all.push_back(spec.spec);
  }
  std::vector<SPeerCase> cases;
  const auto add = [&cases](const std::string& name, const std::vector<std::wstring>& specs,
                            const Report::SNewCondition& condition) {
    cases.push_back({name + "-0", specs, condition, 0});
    cases.push_back({name + "-deepest", specs, condition, Summary().catalog->DeepestLevel()});
  };
  add("all", all, {});
  add("discipline", {biggest}, {});
  add("floor", {biggest}, OneFloor(set, biggest).condition);
  add("code", {biggest}, OneSysCode(set, biggest).condition);
  return cases;
}

Report::CellArray AnswerOf(const SPeerCase& peerCase) {
  Report::CellArray cells;
  for (const std::wstring& spec : peerCase.specs) {
    Report::CellArray more = Request(Summary(), spec, peerCase.level, peerCase.condition);
    if (cells.empty()) {
      cells = std::move(more);
    } else {
      cells.insert(cells.end(), std::make_move_iterator(more.begin()),
                   std::make_move_iterator(more.end()));
    }
  }
  return cells;
}

void WriteAnswers(const std::string& file) {
  Json answers = {{"mainItems", MainItems()}, {"cases", Json::object()}};
  for (const SPeerCase& peerCase : PeerCases()) {
    const auto& condition = peerCase.condition;
    const std::vector<bool> takesCode = TakenCodes(condition.sysCodes);
    Json answer = PlainLoop(peerCase, takesCode);
    if (!condition.floors.empty()) {
      answer["floor"] = Utf8FromWide(condition.floors.front().floor);
    }
    if (!condition.sysCodes.empty()) {
      answer["codes"] = Json::array();
      for (std::size_t code = 0; code < takesCode.size(); ++code) {
        if (takesCode[code]) {
          answer["codes"].push_back(Utf8FromWide(Records().sysCodes[code].name));
        }
      }
    }
    if (peerCase.specs.size() == 1) {
      answer["spec"] = Utf8FromWide(peerCase.specs.front());
    }
    answer["rows"] = RowsOf(peerCase);
    answers["cases"][peerCase.name] = std::move(answer);
  }
  std::ofstream out(file, std::ios::binary);
  out << answers.dump() << '\n';
  out.close();
  if (!out) {
    throw std::runtime_error("cannot write " + file);
  }
}
