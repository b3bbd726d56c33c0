// A sequence that mostly has one item.
#ifndef TALLY_REPORT_MODEL_FEW_ITEMS_H_
#define TALLY_REPORT_MODEL_FEW_ITEMS_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

/// Items side by side, as in a vector, in two thirds of its room: a single one needs no memory of
/// its own. Trees have millions of such sequences. What changes it makes its spans and iterators
/// invalid, and throws std::bad_alloc where memory runs out, the sequence then being as it was.
template <class T>
class CFewItems {
  static_assert(std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T>);

 public:
  // The room is given to items when there are some.
  CFewItems() noexcept {}  // NOLINT(modernize-use-equals-default)
  ~CFewItems() {
    clear();
    if (!IsInside()) {
      std::allocator<T>().deallocate(room_.items, capacity_);
    }
  }
  CFewItems(const CFewItems&) = delete;
  CFewItems& operator=(const CFewItems&) = delete;

  bool empty() const { return size_ == 0; }
  std::size_t size() const { return size_; }
  std::span<T> Items() { return {Begin(), size_}; }
  std::span<const T> Items() const { return {Begin(), size_}; }
  const T* begin() const { return Begin(); }
  const T* end() const { return Begin() + size_; }
  T& back() { return Begin()[size_ - 1]; }
  const T& back() const { return Begin()[size_ - 1]; }

  /// Makes room for `count` items in all.
  void reserve(std::size_t count) {
    if (count > Capacity()) {
      MoveTo(count);
    }
  }
  void push_back(T item) { insert(size_, std::move(item)); }
  /// REQUIRES: `place` is at most the size.
  void insert(std::size_t place, T item) {
    if (size_ == Capacity()) {
      MoveTo(2 * Capacity());
    }
    T* const end = Begin() + size_;
    if (place == size_) {
      std::construct_at(end, std::move(item));
    } else {
      T* const at = Begin() + place;
      std::construct_at(end, std::move(end[-1]));
      std::move_backward(at, end - 1, end);
      *at = std::move(item);
    }
    ++size_;
  }
  /// REQUIRES: it is not empty.
  void pop_back() noexcept {
    --size_;
    std::destroy_at(Begin() + size_);
  }
  void clear() noexcept {
    while (!empty()) {
      pop_back();
    }
  }

 private:
  union URoom {
    URoom() noexcept : items(nullptr) {}
    ~URoom() {}  // NOLINT(modernize-use-equals-default)
    URoom(const URoom&) = delete;
    URoom& operator=(const URoom&) = delete;

    T item;
    T* items;
  };

  bool IsInside() const { return capacity_ == 0; }
  std::size_t Capacity() const { return IsInside() ? 1 : capacity_; }
  T* Begin() { return IsInside() ? &room_.item : room_.items; }
  const T* Begin() const { return IsInside() ? &room_.item : room_.items; }

  void MoveTo(std::size_t capacity) {
    if (capacity > std::numeric_limits<std::uint32_t>::max()) {
      throw std::bad_alloc();
    }
    T* const items = std::allocator<T>().allocate(capacity);
    std::uninitialized_move(Begin(), Begin() + size_, items);
    std::destroy(Begin(), Begin() + size_);
    if (!IsInside()) {
      std::allocator<T>().deallocate(room_.items, capacity_);
    }
    std::construct_at(&room_.items, items);
    capacity_ = static_cast<std::uint32_t>(capacity);
  }

  URoom room_;
  std::uint32_t size_ = 0;
  std::uint32_t capacity_ = 0;  // of `room_.items`; 0 where the room is that of `room_.item`
};

#endif  // TALLY_REPORT_MODEL_FEW_ITEMS_H_
