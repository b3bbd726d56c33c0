// Floor calculation book.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2F_REPORT_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2F_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/calculation_books/calculation_book.h"

/// One row for each calculation item of each floor; its formula adds up the system codes of the
/// first level and multiplies by the floors that the floor text stands for.
class TALLY_API CXhlJss2FReport final : public CCalculationBook {
 public:
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                              with `sectionMode` not 0
  ///   "@F" floor node, selected floor
  ///   "@T" type                                 with the divided-node switch on
  ///   "@Cg" component kind path
  ///   "@A" attribute name, attribute value
  ///   "@CI" item, unit, formula (of the main item alone), references, four quantities
  /// Nothing for a discipline that has no data.
  void GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                     const Report::SNewCondition& requestCondition, int sectionMode);

 private:
  /// The system code level at which a calculation item's quantities are added up.
  static constexpr int s_iSysCodeLevel = 1;

  /// Makes no nodes below calculation items. False, with nothing folded, where the order of the
  /// tree is not that of its codes.
  bool FoldByCode();
  /// Makes all nodes first.
  void FoldByTree();
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2F_REPORT_H_
