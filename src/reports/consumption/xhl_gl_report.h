// Quantity overview.
#ifndef TALLY_REPORTS_CONSUMPTION_XHL_GL_REPORT_H_
#define TALLY_REPORTS_CONSUMPTION_XHL_GL_REPORT_H_

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "reports/shared/node_report.h"

/// One figure for each attribute within each group of the overview table (CReportXHlGlTypeData).
/// Folds the main calculation items of the set of CTallyDataMng::GetXhlGlData. It has no levels.
class TALLY_API CXhlGlReport final : public CNodeReport {
 public:
  void CreatData() override;

  /// Appends the rows of discipline `spec` to `rows`:
  ///   "@P" section                             with `bySgd` not 0
  ///   "@A" attribute name, unit, quantity
  /// The groups show in the order of the rows alone. Nothing for a discipline that has no data.
  virtual void GetGlData(Report::CellArray& rows, const std::wstring& requestSpec,
                         const Report::SNewCondition& requestCondition, int bySgd);

 private:
  class CQuantityWalk;

  struct SSum {
    std::wstring_view unit;  ///< of the last item that counts, for the sum of all
    double quantity = 0;
  };
  /// An attribute of a group.
  struct SLine {
    const CReportAttribute* attribute = nullptr;
    std::wstring_view name;
    int place = 0;  ///< of equal ones, which share it, the first that has a row shows
    SSum whole;     ///< where nothing is left out

    std::string NaturalKey(bool smallerFirst) const {
      return CNaturalOrderProof::Key(attribute->sortKey->naturalName, smallerFirst);
    }
  };
  /// A group that can show.
  struct SGroup {
    const std::wstring* name = nullptr;
    int sortId = 0;
    int place = 0;                    ///< as a line's
    bool isOrdered = false;           ///< whether its lines are known to have an order
    std::vector<SLine> smallerFirst;  ///< as the tree has them without an order
    std::vector<SLine> largerFirst;
  };

  void MakeGroups();
  static std::vector<SLine> LinesOf(const CReportType& group);
  static void AddGroup(CCellBlock& rows, const SGroup& group, CQuantityWalk& walk);

  /// Of each discipline, in the order in which they show. They view the tree.
  std::map<std::wstring, std::vector<SGroup>> groups_;
};

#endif  // TALLY_REPORTS_CONSUMPTION_XHL_GL_REPORT_H_
