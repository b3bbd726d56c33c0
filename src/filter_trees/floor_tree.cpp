#include "filter_trees/floor_tree.h"

#include "result_store/tally_data_mng.h"

void CFloorTree::Clear() {
  floors_.clear();
}

void CFloorTree::CreatData() {
  Clear();
  for (const auto& record : CTallyDataMng::Instance()->GetFloorTree()) {
    PutBlock(floors_, CFloorResultData(record.name));
  }
}
