// Which construction sections a request counts and shows.
#ifndef TALLY_REPORTS_SHARED_SECTION_CHOICE_H_
#define TALLY_REPORTS_SHARED_SECTION_CHOICE_H_

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "report_mng/report_status_mng.h"

/// The sections that CReportStatusMng::CheckIsValidSgd accepts, taken once for a request.
class CShownSections {
 public:
  CShownSections() : all_(!CReportStatusMng::Instance()->GetIsBySgd()) {
    std::set<std::wstring> names;
    CReportStatusMng::Instance()->GetDispSgd(names);
    names_.insert(names.begin(), names.end());
  }
  bool ShowsAll() const { return all_; }
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
  /// Whether results of every section count, whatever their name.
  bool TakesAll() const { return !splits_ && shown_.ShowsAll(); }
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

#endif  // TALLY_REPORTS_SHARED_SECTION_CHOICE_H_
