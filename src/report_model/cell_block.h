// Cells of a report on their way up the walk.
#ifndef TALLY_REPORT_MODEL_CELL_BLOCK_H_
#define TALLY_REPORT_MODEL_CELL_BLOCK_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/export.h"
#include "report_model/report_types.h"
#include "report_model/row_memory.h"
#include "report_model/text_ref.h"

/// A link of a block: a row of cells, or without a chunk, an IKeptRows.
struct SCellRow {
  SCellRow* next = nullptr;
  CRowMemory::SChunk* chunk = nullptr;
  std::size_t count = 0;  ///< of cells
};

/// Rows that lie elsewhere, and are written from there.
class IKeptRows : public SCellRow {
 public:
  IKeptRows() = default;
  virtual ~IKeptRows() = default;
  IKeptRows(const IKeptRows&) = delete;
  IKeptRows& operator=(const IKeptRows&) = delete;

  virtual std::size_t CellCount() const = 0;
  /// Appends that many cells to `out`.
  virtual void Write(Report::CellArray& out) const = 0;
};

/// No rows, but a text for the slices of many. It may be written later than these are added, but
/// before the block is.
struct SKeptText final : IKeptRows {
  std::size_t CellCount() const override { return 0; }
  void Write(Report::CellArray& /*out*/) const override {}
  std::wstring text;
};

/// What one cell will hold, made in the call that adds its row. A text is viewed, unless it is a
/// temporary, which is copied; a number is printed as "%g" when the output is written.
class CCellSource {
 public:
  // NOLINTBEGIN(google-explicit-constructor): a row is stated as the list of what it shows.
  CCellSource(std::wstring_view text) : text_(text) {}
  CCellSource(const wchar_t* text) : text_(text) {}
  CCellSource(const std::wstring& text) : text_(text) {}
  CCellSource(const CTextRef& text) : text_(text) {}
  CCellSource(std::wstring&& text) : text_(text), isCopied_(true) {}
  CCellSource(double number) : number_(number), isNumber_(true) {}
  // NOLINTEND(google-explicit-constructor)

  /// A text that need not outlive the call that takes it.
  static CCellSource Copied(std::wstring_view text) {
    CCellSource cell(text);
    cell.isCopied_ = true;
    return cell;
  }
  /// `size` characters from `begin` on of a text that the block keeps.
  static CCellSource Slice(const SKeptText& kept, std::size_t begin, std::size_t size) {
    CCellSource cell(std::wstring_view(nullptr, size));
    cell.kept_ = &kept.text;
    cell.begin_ = begin;
    return cell;
  }

 private:
  friend class CCellBlock;
  std::wstring_view text_;
  const std::wstring* kept_ = nullptr;
  std::size_t begin_ = 0;
  double number_ = 0;
  bool isCopied_ = false;
  bool isNumber_ = false;
};

/// A cell array in the making: linked rows of what the cells will hold, so that a block goes behind
/// another one in constant time, and each text is made once, in the finished array. REQUIRES: the
/// viewed texts outlive the block. They are those of the tree, the result store and the request.
class TALLY_API CCellBlock {
 public:
  CCellBlock() = default;
  /// One row with copies of the cells.
  explicit CCellBlock(const Report::CellArray& cells);
  CCellBlock(CCellBlock&& other) noexcept
      : first_(std::exchange(other.first_, nullptr)),
        last_(std::exchange(other.last_, nullptr)),
        size_(std::exchange(other.size_, 0)) {}
  CCellBlock& operator=(CCellBlock&& other) noexcept {
    CCellBlock moved(std::move(other));
    Swap(moved);
    return *this;
  }
  CCellBlock(const CCellBlock& other);
  CCellBlock& operator=(const CCellBlock& other) { return *this = CCellBlock(other); }
  ~CCellBlock() {
    while (first_ != nullptr) {
      DropFirst();
    }
  }

  bool Empty() const { return first_ == nullptr; }
  /// The number of cells.
  std::size_t Size() const { return size_; }

  /// Appends a row; no cells, no row.
  void AddRow(std::span<const CCellSource> cells);
  /// The same, for a row that is stated at once.
  template <class... TCells>
  void AddCells(TCells&&... cells) {
    const CCellSource row[] = {CCellSource(std::forward<TCells>(cells))...};
    AddRow(row);
  }

  /// Keeps the text that the rows so far show slices of. REQUIRES: there are rows.
  void Keep(std::unique_ptr<SKeptText>&& text) { Link(text.release()); }
  /// Appends rows that lie elsewhere; no cells, no row.
  void AddKept(std::unique_ptr<IKeptRows>&& rows);

  /// Moves all of `block` behind this one's cells; `block` is empty afterwards.
  void Append(CCellBlock&& block);

  /// Writes all cells behind those of `out`; this block is empty afterwards. Where memory runs out,
  /// `out` is as it was.
  void MoveTo(Report::CellArray& out);

  /// Writes all cells behind those of `out`, and keeps the rows. Where memory runs out, `out` may
  /// have some of them.
  void WriteTo(Report::CellArray& out) const;

  /// All cells as they will be written.
  Report::CellArray Cells() const;

 private:
  // A text, or what `begin` tells: a number, or the slice of a kept text that begins there.
  struct SCell {
    union {
      const wchar_t* text;
      const std::wstring* kept;
      double number;
    };
    std::uint32_t begin;
    std::uint32_t size;
  };
  static constexpr std::uint32_t kText = std::numeric_limits<std::uint32_t>::max();
  static constexpr std::uint32_t kNumber = kText - 1;

  static SCell CellOf(const CCellSource& source);
  static std::span<const SCell> CellsOf(const SCellRow& row);
  static std::wstring_view TextOf(const SCell& cell);
  static const IKeptRows& KeptRows(const SCellRow& row) {
    return static_cast<const IKeptRows&>(row);
  }
  static void Write(Report::CellArray& out, const SCellRow& row);
  void Link(SCellRow* row) {
    (first_ == nullptr ? first_ : last_->next) = row;
    last_ = row;
  }
  void DropFirst();
  void Swap(CCellBlock& other) noexcept {
    std::swap(first_, other.first_);
    std::swap(last_, other.last_);
    std::swap(size_, other.size_);
  }

  // Owned, as are those behind it. A row's cells and the characters that it copied follow it in its
  // memory. A kept text stands behind the rows that show it.
  SCellRow* first_ = nullptr;
  SCellRow* last_ = nullptr;
  std::size_t size_ = 0;
};

#endif  // TALLY_REPORT_MODEL_CELL_BLOCK_H_
