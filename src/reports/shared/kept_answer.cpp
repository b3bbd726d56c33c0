#include "reports/shared/kept_answer.h"

#include <cstddef>

class CKeptAnswer::CRows final : public IKeptRows {
 public:
  explicit CRows(std::shared_ptr<const CKeptAnswer>&& answer) : answer_(std::move(answer)) {}

  std::size_t CellCount() const override { return answer_->rows_.Size(); }
  void Write(Report::CellArray& out) const override { answer_->rows_.WriteTo(out); }

 private:
  const std::shared_ptr<const CKeptAnswer> answer_;
};

CCellBlock CKeptAnswer::RowsOf(std::shared_ptr<const CKeptAnswer> answer) {
  CCellBlock rows;
  rows.AddKept(std::make_unique<CRows>(std::move(answer)));
  return rows;
}
