// A report with a tree of nodes.
#ifndef TALLY_REPORTS_SHARED_NODE_REPORT_H_
#define TALLY_REPORTS_SHARED_NODE_REPORT_H_

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "platform/code_page.h"
#include "report_mng/ireport.h"
#include "report_model/cell_block.h"
#include "report_model/report_data_node.h"
#include "reports/shared/kept_answer.h"
#include "reports/shared/section_choice.h"

class CNodeReport : public IReport {
 public:
  /// Frees the tree.
  void Clear() final { ClearNodes(root); }

  /// The size of the tree, for measurements.
  std::size_t NodeCount() const { return root.CountAll(); }

 protected:
  CNodeReport() : codePage_(ICodePage::Instance()->GetThreadCodePage()) {}

  /// What every row operation begins with: finds the discipline's node and stores the request.
  /// Null, with the stored request left as it was, for a discipline without a node.
  const CReportSpec* BeginRequest(const std::wstring& requestSpec,
                                  const Report::SNewCondition& requestCondition) {
    const auto* node = FindChild<CReportSpec>(root, requestSpec);
    if (node != nullptr) {
      UpdateCondition(requestSpec, requestCondition);
    }
    return node;
  }

  /// What every row operation goes on with. Calls `pass(sections)` once for each displayed
  /// construction section in text order, once with the empty text if there is none, and appends the
  /// block that it answers to `rows`; `sections` tells which results the pass counts. With `bySgd`
  /// 0 the first pass is the only one and has no heading; otherwise "@P" and the section's name
  /// stand over each block.
  template <class TPass>
  void RunSectionPasses(Report::CellArray& rows, int bySgd, TPass&& pass,
                        ESectionHeading heading = ESectionHeading::OverRows) const {
    const CFoldCodePage codePage(codePage_);
    std::set<std::wstring> names;
    CReportStatusMng::Instance()->GetDispSgd(names);
    if (names.empty()) {
      names.emplace();
    }
    CSectionChoice sections(bySgd);
    for (const std::wstring& name : names) {
      sections.SetSection(name);
      CCellBlock block = pass(static_cast<const CSectionChoice&>(sections));
      if (bySgd == 0) {
        block.MoveTo(rows);
        return;
      }
      if (heading == ESectionHeading::Always || !block.Empty()) {
        rows.emplace_back(L"@P");
        rows.push_back(name);
        block.MoveTo(rows);
      }
    }
  }

  /// The same, but what leaves nothing out is kept with the discipline: it is answered from there
  /// while the key is equal. `pass` answers rows that may refer to `texts` and to the tree, and
  /// have no memory of the block's own.
  template <class TPass>
  void RunKeptPasses(Report::CellArray& rows, const CReportSpec& node, CKeptAnswer::SKey&& key,
                     std::shared_ptr<const void> texts, int bySgd, TPass&& pass,
                     ESectionHeading heading = ESectionHeading::OverRows) const {
    const bool takesAll =
        condition.floors.empty() && condition.sysCodes.empty() && condition.categories.empty();
    RunSectionPasses(
        rows, bySgd,
        [&](const CSectionChoice& sections) {
          if (!takesAll || !sections.TakesAll()) {
            return pass(sections);
          }
          if (node.answer == nullptr || !node.answer->IsOf(key)) {
            node.answer = nullptr;
            node.answer = std::make_shared<const CKeptAnswer>(std::move(key), std::move(texts),
                                                              pass(sections));
          }
          return CKeptAnswer::RowsOf(node.answer);
        },
        heading);
  }

  Report::NodeMap root;  ///< the disciplines

 private:
  // A report keeps to the code page that it was folded in: part of its order was made there.
  class CFoldCodePage {
   public:
    explicit CFoldCodePage(int codePage) : before_(ICodePage::Instance()->GetThreadCodePage()) {
      ICodePage::Instance()->SetThreadCodePage(codePage);
    }
    ~CFoldCodePage() { ICodePage::Instance()->SetThreadCodePage(before_); }
    CFoldCodePage(const CFoldCodePage&) = delete;
    CFoldCodePage& operator=(const CFoldCodePage&) = delete;

   private:
    const int before_;
  };

  const int codePage_;
};

#endif  // TALLY_REPORTS_SHARED_NODE_REPORT_H_
