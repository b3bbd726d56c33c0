// Small numbers in the place of texts that rows are sorted by.
#ifndef TALLY_REPORTS_SHARED_TEXT_PLACES_H_
#define TALLY_REPORTS_SHARED_TEXT_PLACES_H_

#include <string_view>
#include <unordered_map>
#include <vector>

#include "report_model/report_data_node.h"

/// The places of texts in an order of their narrow forms, if it is proved to be one in which only
/// equal texts are equal. First every text is added, then all are placed. Views the texts.
class CTextPlaces {
 public:
  enum class EOrder {
    Plain,   ///< that of the bytes; the places are the ascending ones
    Natural  ///< CompareNatural
  };

  void Add(std::wstring_view text) { places_.try_emplace(text); }
  /// Answers whether there is such an order.
  bool Place(EOrder order);
  /// REQUIRES: the text was added. No places where there is no such order.
  const SAttPlaces& Of(std::wstring_view text) const { return places_.find(text)->second; }

 private:
  bool SetPlaces(EOrder order, bool ascending, int SAttPlaces::*place);
  bool IsOrder(EOrder order) const;

  std::unordered_map<std::wstring_view, SAttPlaces> places_;
};

/// The nodes of one class below `children`, in the order of a walk, for the end of a fold. Nodes
/// below them are not looked at.
template <class TNode>
void CollectNodes(const Report::NodeMap& children, std::vector<TNode*>& nodes) {
  std::vector<const Report::NodeMap*> levels{&children};
  std::vector<Report::NodeMap::Place> places{children.InOrder().begin()};
  while (!levels.empty()) {
    if (places.back() == levels.back()->InOrder().end()) {
      levels.pop_back();
      places.pop_back();
      continue;
    }
    IReportDataNode* node = (places.back()++)->get();
    if (auto* found = NodeAs<TNode>(node)) {
      nodes.push_back(found);
    } else {
      levels.push_back(&node->children);
      places.push_back(node->children.InOrder().begin());
    }
  }
}

/// Gives the attributes of each discipline the places of their names in natural order; answers all
/// of them.
std::vector<CReportAttribute*> PlaceAttributeNames(const Report::NodeMap& disciplines);

#endif  // TALLY_REPORTS_SHARED_TEXT_PLACES_H_
