// What the trees of system codes and of component kinds share.
#ifndef TALLY_FILTER_TREES_SPEC_TEXT_TREE_H_
#define TALLY_FILTER_TREES_SPEC_TEXT_TREE_H_

#include <map>
#include <string>
#include <vector>

#include "report_mng/ireport.h"

/// Texts for each discipline, in read order; repeats stay.
class CSpecTextTree : public IReport {
 public:
  using SpecTextMap = std::map<std::wstring, std::vector<std::wstring>>;
  void Clear() final { texts_.clear(); }

 protected:
  void Add(const std::wstring& recordSpec, std::wstring text);
  const SpecTextMap& Texts() const { return texts_; }

 private:
  SpecTextMap texts_;
};

#endif  // TALLY_FILTER_TREES_SPEC_TEXT_TREE_H_
