// Looking one element up again and again.
#ifndef TALLY_REPORTS_SHARED_REPEATED_FIND_H_
#define TALLY_REPORTS_SHARED_REPEATED_FIND_H_

#include <cstddef>

/// Finds one element in a set from which nothing is taken: as long as nothing has been put in
/// either, the answer is the one before. That holds for orderings that are not consistent too.
template <class TSet>
class TRepeatedFind {
 public:
  typename TSet::iterator operator()(const TSet& set, const typename TSet::key_type& element) {
    if (!isKnown_ || set.size() != size_) {
      at_ = set.find(element);
      size_ = set.size();
      isKnown_ = true;
    }
    return at_;
  }

 private:
  typename TSet::iterator at_;
  std::size_t size_ = 0;
  bool isKnown_ = false;
};

#endif  // TALLY_REPORTS_SHARED_REPEATED_FIND_H_
