#include "filter_trees/category_tree.h"

#include "result_store/tally_data_mng.h"

void CCategoryTree::CreatData() {
  for (const auto& record : CTallyDataMng::Instance()->GetSmallIndexTree()) {
    Add(record.spec, record.path);
  }
}
