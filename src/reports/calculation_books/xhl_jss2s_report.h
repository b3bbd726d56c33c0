// System calculation book.
#ifndef TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2S_REPORT_H_
#define TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2S_REPORT_H_

#include <string>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/calculation_books/calculation_book.h"

/// The systems of each floor, as deep as the level opens, down to single circuits. The formula of a
/// main item's row adds up the children of its system code.
class TALLY_API CXhlJss2SReport final : public CCalculationBook {
 public:
  /// What the rows show. Any other number opens no system code level, as 1, but keeps the rows of
  /// the deeper ones.
  enum ELevelType : int {
    LevelNode = 1,      ///< component rows summed over all systems
    LevelSysCode1 = 2,  ///< system codes at their first level
    LevelSysCode2 = 3,
    LevelSysCode3 = 4,
    LevelLoop = 5,  ///< the third level, and one row for each circuit
  };

  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                                          with `sectionMode` not 0
  ///   "@F" floor node, selected floor
  ///   "@T" type                                             with the divided-node switch on
  /// and for each sum
  ///   "@S" system code with remark                          not at level 1
  ///   "@Cg" component kind path
  ///   "@A" attribute name, attribute value
  ///   "@CI" item, unit, formula, references, four quantities
  ///   or "@L" item, unit, circuit, formula, references, four quantities, at level 5
  /// Types other than line work are shown as at level 1. Nothing for a discipline that has no data.
  virtual void GetSysJssData(Report::CellArray& rows, const std::wstring& requestSpec,
                             const Report::SNewCondition& requestCondition, int level,
                             int sectionMode);

  /// System code levels that a level opens: 2 to 5 give 1, 2, 3, 3, any other 0.
  static int GetSysCodeLevel(int level);
};

#endif  // TALLY_REPORTS_CALCULATION_BOOKS_XHL_JSS2S_REPORT_H_
