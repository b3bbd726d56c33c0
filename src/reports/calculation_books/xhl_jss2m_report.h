// Member calculation book.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2M_REPORT_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2M_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/calculation_books/calculation_book.h"

/// One row for each calculation item of the whole building; its formula adds up the floor texts, a
/// repeated one with its multiplier.
class TALLY_API CXhlJss2MReport final : public CCalculationBook {
 public:
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                              with `sectionMode` not 0
  ///   "@T" type                                 with the divided-node switch on
  ///   "@Cg" component kind path
  ///   "@A" attribute name, attribute value
  ///   "@CI" item, unit, formula (of the main item alone), empty, four quantities
  /// With the switch on, line work stands ahead of its section's "@P". Nothing for a discipline
  /// that has no data.
  void GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                     const Report::SNewCondition& requestCondition, int sectionMode);

 private:
  class CItemSums;
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2M_REPORT_H_
