// The project's floors, for a host's filter pane.
#ifndef TALLY_FILTER_TREES_FLOOR_TREE_H_
#define TALLY_FILTER_TREES_FLOOR_TREE_H_

#include <set>

#include "platform/export.h"
#include "report_mng/ireport.h"
#include "report_model/row_results.h"

/// Floors by height, from CTallyDataMng::GetFloorTree. Of two floors of equal grade and number the
/// one read first stays.
class TALLY_API CFloorTree final : public IReport {
 public:
  void Clear() override;
  void CreatData() override;
  /// The floors; their blocks are empty. Valid as long as the tree.
  const std::set<CFloorResultData>& GetFloorData() const { return floors_; }

 private:
  std::set<CFloorResultData> floors_;
};

#endif  // TALLY_FILTER_TREES_FLOOR_TREE_H_
