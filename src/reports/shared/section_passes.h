// The passes of a request over the construction sections.
#ifndef TALLY_REPORTS_SHARED_SECTION_PASSES_H_
#define TALLY_REPORTS_SHARED_SECTION_PASSES_H_

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "report_mng/report_status_mng.h"
#include "report_model/cell_block.h"
#include "report_model/report_types.h"

/// The sections that CReportStatusMng::CheckIsValidSgd accepts, taken once for a request.
class CShownSections {
 public:
  CShownSections() : all_(!CReportStatusMng::Instance()->GetIsBySgd()) {
    std::set<std::wstring> names;
    CReportStatusMng::Instance()->GetDispSgd(names);
    names_.insert(names.begin(), names.end());
  }
  bool Shows(std::wstring_view sgdName) const { return all_ || names_.contains(sgdName); }

 private:
  bool all_;
  std::set<std::wstring, std::less<>> names_;
};

/// Which results a pass counts: those of its own section where the request splits by section, and
/// of the sections shown.
class CSectionChoice {
 public:
  explicit CSectionChoice(int bySgd) : splits_(bySgd != 0) {}
  /// Starts the pass of `section`.
  void SetSection(const std::wstring& section) { section_ = section; }
  bool Takes(std::wstring_view sgdName) const {
    return (!splits_ || sgdName == section_) && shown_.Shows(sgdName);
  }

 private:
  bool splits_;
  CShownSections shown_;
  std::wstring section_;
};

/// Which sections get their "@P" heading.
enum class ESectionHeading { OverRows, Always };

/// Calls `pass(sections)` once for each displayed section in text order, once with the empty text
/// if there is none, and appends the block that it answers to `rows`; `sections` tells which
/// results the pass counts. With `bySgd` 0 the first pass is the only one and has no heading;
/// otherwise "@P" and the section's name stand over each block.
template <class TPass>
void RunSectionPasses(Report::CellArray& rows, int bySgd, TPass&& pass,
                      ESectionHeading heading = ESectionHeading::OverRows) {
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

#endif  // TALLY_REPORTS_SHARED_SECTION_PASSES_H_
