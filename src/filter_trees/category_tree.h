// The project's component kinds, for a host's filter pane.
#ifndef TALLY_FILTER_TREES_CATEGORY_TREE_H_
#define TALLY_FILTER_TREES_CATEGORY_TREE_H_

#include "filter_trees/spec_text_tree.h"
#include "platform/export.h"

/// The component kind paths ("category\kind") of each discipline, from
/// CTallyDataMng::GetSmallIndexTree.
class TALLY_API CCategoryTree final : public CSpecTextTree {
 public:
  void CreatData() override;
  /// Replaces `map` by a copy.
  void GetCategoryMap(SpecTextMap& map) const { map = Texts(); }
};

#endif  // TALLY_FILTER_TREES_CATEGORY_TREE_H_
