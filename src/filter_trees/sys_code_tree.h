// The project's system codes, for a host's filter pane.
#ifndef TALLY_FILTER_TREES_SYS_CODE_TREE_H_
#define TALLY_FILTER_TREES_SYS_CODE_TREE_H_

#include "filter_trees/spec_text_tree.h"
#include "platform/export.h"

/// The system codes of each discipline, from CTallyDataMng::GetSysCodeTree: level names joined by
/// "&", completed by "&*" and the last name below three levels.
class TALLY_API CSysCodeTree final : public CSpecTextTree {
 public:
  void CreatData() override;
  /// Replaces `map` by a copy.
  void GetSysCodeMap(SpecTextMap& map) const { map = Texts(); }
};

#endif  // TALLY_FILTER_TREES_SYS_CODE_TREE_H_
