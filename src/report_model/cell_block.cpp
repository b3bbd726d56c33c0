#include "report_model/cell_block.h"

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

#include "platform/text_numbers.h"

CCellBlock::CCellBlock(const Report::CellArray& cells) {
  std::vector<CCellSource> row;
  row.reserve(cells.size());
  for (const std::wstring& cell : cells) {
    row.push_back(CCellSource::Copied(cell));
  }
  AddRow(row);
}

CCellBlock::CCellBlock(const CCellBlock& other) {
  std::vector<CCellSource> copy;
  for (const SCellRow* row = other.first_; row != nullptr; row = row->next) {
    copy.clear();
    if (row->chunk == nullptr) {
      Report::CellArray cells;
      KeptRows(*row).Write(cells);
      Append(CCellBlock(cells));
      continue;
    }
    for (const SCell& cell : CellsOf(*row)) {
      copy.push_back(cell.begin == kNumber ? CCellSource(cell.number)
                                           : CCellSource::Copied(TextOf(cell)));
    }
    AddRow(copy);
  }
}

void CCellBlock::AddRow(std::span<const CCellSource> cells) {
  if (cells.empty()) {
    return;
  }
  std::size_t copied = 0;
  for (const CCellSource& cell : cells) {
    // More characters than a cell can count take more memory than there is.
    if (std::max(cell.begin_, cell.text_.size()) >= kNumber) {
      throw std::bad_alloc();
    }
    copied += cell.isCopied_ ? cell.text_.size() : 0;
  }
  static_assert(sizeof(SCellRow) % alignof(SCell) == 0 && alignof(SCell) >= alignof(wchar_t));
  const CRowMemory::SPlace place =
      CRowMemory::Take(sizeof(SCellRow) + cells.size() * sizeof(SCell) + copied * sizeof(wchar_t));
  auto* row = ::new (place.row) SCellRow{nullptr, place.chunk, cells.size()};
  auto* to = static_cast<SCell*>(static_cast<void*>(row + 1));
  auto* text = static_cast<wchar_t*>(static_cast<void*>(to + cells.size()));
  for (const CCellSource& source : cells) {
    auto* cell = ::new (to++) SCell(CellOf(source));
    if (source.isCopied_) {
      cell->text = text;
      text = std::uninitialized_copy(source.text_.begin(), source.text_.end(), text);
    }
  }
  Link(row);
  size_ += cells.size();
}

void CCellBlock::AddKept(std::unique_ptr<IKeptRows>&& rows) {
  rows->count = rows->CellCount();
  if (rows->count > 0) {
    size_ += rows->count;
    Link(rows.release());
  }
}

void CCellBlock::Append(CCellBlock&& block) {
  if (block.Empty()) {
    return;
  }
  (first_ == nullptr ? first_ : last_->next) = std::exchange(block.first_, nullptr);
  last_ = std::exchange(block.last_, nullptr);
  size_ += std::exchange(block.size_, 0);
}

void CCellBlock::MoveTo(Report::CellArray& out) {
  const std::size_t before = out.size();
  const std::size_t size = before + size_;
  if (size > out.capacity()) {
    out.reserve(std::max(size, 2 * out.capacity()));
  }
  try {
    // Each row's memory goes as soon as it is written, so that the request's own memory falls while
    // the output fills.
    while (first_ != nullptr) {
      Write(out, *first_);
      DropFirst();
    }
  } catch (...) {
    out.resize(before);
    throw;
  }
}

void CCellBlock::WriteTo(Report::CellArray& out) const {
  for (const SCellRow* row = first_; row != nullptr; row = row->next) {
    Write(out, *row);
  }
}

Report::CellArray CCellBlock::Cells() const {
  Report::CellArray cells;
  cells.reserve(size_);
  WriteTo(cells);
  return cells;
}

CCellBlock::SCell CCellBlock::CellOf(const CCellSource& source) {
  if (source.isNumber_) {
    return {.number = source.number_, .begin = kNumber, .size = 0};
  }
  const auto size = static_cast<std::uint32_t>(source.text_.size());
  if (source.kept_ != nullptr) {
    return {.kept = source.kept_, .begin = static_cast<std::uint32_t>(source.begin_), .size = size};
  }
  return {.text = source.text_.data(), .begin = kText, .size = size};
}

std::span<const CCellBlock::SCell> CCellBlock::CellsOf(const SCellRow& row) {
  return {static_cast<const SCell*>(static_cast<const void*>(&row + 1)), row.count};
}

std::wstring_view CCellBlock::TextOf(const SCell& cell) {
  return {cell.begin == kText ? cell.text : cell.kept->data() + cell.begin, cell.size};
}

void CCellBlock::Write(Report::CellArray& out, const SCellRow& row) {
  if (row.chunk == nullptr) {
    KeptRows(row).Write(out);
    return;
  }
  for (const SCell& cell : CellsOf(row)) {
    if (cell.begin == kNumber) {
      AppendNumber(out.emplace_back(), cell.number);
    } else {
      out.emplace_back(TextOf(cell));
    }
  }
}

void CCellBlock::DropFirst() {
  SCellRow* row = first_;
  first_ = row->next;
  size_ -= row->count;
  if (row->chunk == nullptr) {
    delete static_cast<IKeptRows*>(row);
  } else {
    CRowMemory::GiveBack(row->chunk);
  }
}
