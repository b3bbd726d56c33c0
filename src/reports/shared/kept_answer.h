// Answers that a tree keeps.
#ifndef TALLY_REPORTS_SHARED_KEPT_ANSWER_H_
#define TALLY_REPORTS_SHARED_KEPT_ANSWER_H_

#include <memory>
#include <string>
#include <utility>

#include "report_mng/result_config.h"
#include "report_model/cell_block.h"

/// The rows of a discipline that answer a request which leaves nothing out, in their order and
/// summed up: the next request that asks for the same only writes them.
class CKeptAnswer {
 public:
  /// What such rows depend on.
  struct SKey {
    int level = 0;
    std::wstring totalItem = {};  ///< of a table with several
    bool isLineSortDown = CResultConfig::Instance()->GetLineSortDowm();

    bool operator==(const SKey&) const = default;
  };

  /// REQUIRES: all rows lie elsewhere (IKeptRows), as memory of a block's own is for one thread.
  /// They may refer to `texts`.
  CKeptAnswer(SKey&& key, std::shared_ptr<const void> texts, CCellBlock&& rows)
      : key_(std::move(key)), texts_(std::move(texts)), rows_(std::move(rows)) {}

  bool IsOf(const SKey& key) const { return key_ == key; }
  /// The rows, written from where they are.
  static CCellBlock RowsOf(std::shared_ptr<const CKeptAnswer> answer);

 private:
  class CRows;

  const SKey key_;
  const std::shared_ptr<const void> texts_;
  const CCellBlock rows_;
};

#endif  // TALLY_REPORTS_SHARED_KEPT_ANSWER_H_
