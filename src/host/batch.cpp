#include "host/batch.h"

#include <cstddef>
#include <ios>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <variant>

#include "filter_trees/category_tree.h"
#include "filter_trees/floor_tree.h"
#include "filter_trees/sys_code_tree.h"
#include "host/report_state.h"
#include "host/status_json.h"
#include "platform/portable/utf8_text.h"
#include "report_mng/report_mng.h"
#include "report_mng/report_status_mng.h"
#include "report_mng/result_config.h"
#include "result_store/tally_data_mng.h"

namespace {

ERecordSet TreeSetOf(Report::ETreeType type) {
  switch (type) {
    case Report::TreeFloor:
      return ERecordSet::FloorTree;
    case Report::TreeSysCode:
      return ERecordSet::SysCodeTree;
    default:
      return ERecordSet::CategoryTree;
  }
}

// Drops the calculation books where a status file turned the switch that they were folded by, even
// if reading it failed after that.
class CBooksInStep {
 public:
  CBooksInStep() = default;
  CBooksInStep(const CBooksInStep&) = delete;
  CBooksInStep& operator=(const CBooksInStep&) = delete;
  ~CBooksInStep() {
    if (CReportStatusMng::Instance()->GetIsDividedNode() != wasDivided_) {
      CReportMng::Instance()->ClearXHLSysJSSReportData();
    }
  }

 private:
  bool wasDivided_ = CReportStatusMng::Instance()->GetIsDividedNode();
};

void SetReport(const std::wstring& name, const SReportChange& change) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  if (change.visible) {
    status->SetReportVisible(name, *change.visible);
  }
  if (change.expandLevel) {
    status->SetReportExpand(name, *change.expandLevel);
  }
  if (change.columns) {
    status->SetReportColStatus(name, *change.columns);
  }
}

}  // namespace

void CBatch::Run(std::istream& input) {
  constexpr auto kWholeLine = std::numeric_limits<std::streamsize>::max();
  input.exceptions(std::ios::badbit);  // without it, a line without memory would look like the end
  std::string line;
  while (true) {
    try {
      if (!std::getline(input, line)) {
        return;
      }
    } catch (const std::bad_alloc&) {
      line = {};
      input.clear();
      input.ignore(kWholeLine, '\n');
      WriteError("memory", "");
      output_.Write("\n");
      output_.Flush();
      continue;
    } catch (const std::ios::failure& failure) {
      throw CHostError(std::string("cannot read standard input: ") + failure.code().message());
    }
    Answer(line);
  }
}

void CBatch::Answer(std::string_view line) {
  // An answer begins only when all that may fail is done, so none is left half written.
  try {
    std::visit([this](const auto& call) { Serve(call); }, ReadBatchCall(line));
  } catch (const CRequestError& error) {
    WriteError("request", error.what());
  } catch (const CReadError& error) {
    WriteError("read", error.what());
  } catch (const CXmlError& error) {
    WriteXmlError(error);
  } catch (const std::out_of_range&) {
    WriteError("out_of_range", "a row names a record that its table lacks");
  } catch (const std::bad_alloc&) {
    WriteError("memory", "");
  } catch (const std::length_error&) {
    WriteError("memory", "");
  }
  output_.Write("\n");
  output_.Flush();
}

void CBatch::SetState(const SRowsCall& call) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  status->SetIsBySgd(call.status.isBySgd);
  status->SetDispSgd(call.status.dispSgd);
  CResultConfig::Instance()->SetLineSortDowm(call.lineSortDown);
  SetDividedNode(call.status.isDividedNode);
}

void CBatch::Serve(const SRowsCall& call) {
  SetState(call);
  const SCatalogReport* entry = FindReport(call.report, call.variant);
  IReport* report =
      entry == nullptr ? nullptr : CReportMng::Instance()->GetReportData(call.report, call.variant);
  if (report == nullptr) {
    output_.Write(R"({"rows":null})");
    return;
  }
  project_.RequireResultSet(call.report);
  Report::CellArray rows;
  entry->appendRows(*report, call.rows, rows);
  output_.Write(R"({"rows":)");
  WriteTexts(rows);
  output_.Write("}");
}

void CBatch::Serve(const SSpecsCall& call) {
  Report::CellArray specs;
  CTallyDataMng::Instance()->GetReportSpecAry(specs, call.report);
  project_.RequireResultSet(call.report);
  output_.Write(R"({"specs":)");
  WriteTexts(specs);
  output_.Write("}");
}

void CBatch::Serve(const STreeCall& call) {
  IReport* tree = CReportMng::Instance()->GetTreeData(call.tree);
  if (tree == nullptr) {
    output_.Write(R"({"tree":null})");
    return;
  }
  project_.RequireSet(TreeSetOf(call.tree));
  if (call.tree == Report::TreeFloor) {
    WriteFloors(*tree);
  } else {
    WriteTextMap(call.tree, *tree);
  }
}

void CBatch::Serve(const SOpenCall& call) {
  project_.Reopen(call.isQdMode);
  output_.Write(R"({"ok":true})");
}

void CBatch::Serve(const SStatusReadCall& call) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  const CBooksInStep books;
  const bool isRead = status->ReadReportStatus(call.path);
  WriteStatus(isRead ? R"({"ok":true,"state":)" : R"({"ok":false,"state":)");
}

void CBatch::Serve(const SStatusSetCall& call) {
  CReportStatusMng* status = CReportStatusMng::Instance();
  if (call.isDividedNode) {
    SetDividedNode(*call.isDividedNode);
  }
  if (call.isBySgd) {
    status->SetIsBySgd(*call.isBySgd);
  }
  if (call.dispSgd) {
    status->SetDispSgd(*call.dispSgd);
  }
  if (call.curSpec) {
    status->SetCurSpec(*call.curSpec);
  }
  if (call.curReport) {
    status->SetCurReport(*call.curReport);
  }
  for (const auto& [name, report] : call.reports) {
    SetReport(name, report);
  }
  for (const auto& [spec, condition] : call.conditions) {
    status->SetTreeStatus(spec, condition);
  }
  for (const auto& [spec, tree] : call.trees) {
    status->SetTJTJTree(spec, tree.sysCode, tree.floor, tree.member);
  }
  output_.Write(R"({"ok":true})");
}

void CBatch::Serve(const SStatusSaveCall&) {
  CReportStatusMng::Instance()->SaveReportStatus();
  output_.Write(R"({"ok":true})");
}

void CBatch::Serve(const SStatusGetCall&) {
  WriteStatus(R"({"state":)");
}

void CBatch::WriteStatus(std::string_view before) {
  SReportStatus status;
  CReportStatusMng::Instance()->GetStatus(status);
  output_.Write(before);
  WriteStatusJson(status, output_);
  output_.Write("}");
}

void CBatch::WriteTexts(const Report::CellArray& texts) {
  const char* separator = "[";
  for (const std::wstring& text : texts) {
    output_.Write(separator);
    output_.WriteJsonText(text);
    separator = ",";
  }
  output_.Write(texts.empty() ? "[]" : "]");
}

void CBatch::WriteFloors(IReport& tree) {
  output_.Write(R"({"floors":[)");
  const char* separator = "";
  for (const CFloorResultData& floor : dynamic_cast<CFloorTree&>(tree).GetFloorData()) {
    output_.Write(separator);
    output_.Write(R"({"name":)");
    output_.WriteJsonText(floor.GetFloorName());
    output_.Write(R"(,"grade":)");
    output_.Write(std::to_string(floor.GetSortId()));
    output_.Write("}");
    separator = ",";
  }
  output_.Write("]}");
}

void CBatch::WriteTextMap(Report::ETreeType type, IReport& tree) {
  CSpecTextTree::SpecTextMap map;
  if (type == Report::TreeSysCode) {
    dynamic_cast<CSysCodeTree&>(tree).GetSysCodeMap(map);
  } else {
    dynamic_cast<CCategoryTree&>(tree).GetCategoryMap(map);
  }
  output_.Write(R"({"map":{)");
  const char* separator = "";
  for (const auto& [spec, texts] : map) {
    output_.Write(separator);
    output_.WriteJsonText(spec);
    output_.Write(":");
    WriteTexts(texts);
    separator = ",";
  }
  output_.Write("}}");
}

void CBatch::WriteError(std::string_view kind, std::string_view message) {
  output_.Write(R"({"error":{"kind":")");
  output_.Write(kind);
  output_.Write("\"");
  if (!message.empty()) {
    output_.Write(R"(,"message":)");
    output_.WriteJsonText(WideFromUtf8(message));
  }
  output_.Write("}}");
}

void CBatch::WriteXmlError(const CXmlError& error) {
  output_.Write(R"({"error":{"kind":"xml","code":)");
  output_.Write(std::to_string(error.Code()));
  output_.Write(R"(,"message":)");
  output_.WriteJsonText(WideFromUtf8(error.what()));
  output_.Write("}}");
}
