#include "heap_use.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

// Plain numbers: the benchmarks run on one thread, and counting shall cost next to nothing.
std::size_t current = 0;
std::size_t peak = 0;

void* Counted(void* block) {
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  current += malloc_usable_size(block);
  peak = std::max(peak, current);
  return block;
}

void Release(void* block) noexcept {
  if (block != nullptr) {
    current -= malloc_usable_size(block);
    std::free(block);
  }
}

}  // namespace

std::size_t CHeapUse::Current() {
  return current;
}
std::size_t CHeapUse::Peak() {
  return peak;
}
void CHeapUse::RestartPeak() {
  peak = current;
}
void CHeapUse::Settle() {
  constexpr std::size_t kLarge = 64 * 1024;
  void* volatile block = std::malloc(kLarge);
  std::free(block);
}

// The forms for arrays and those that do not throw call these.

void* operator new(std::size_t size) {
  return Counted(std::malloc(std::max<std::size_t>(size, 1)));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto unit = static_cast<std::size_t>(alignment);
  return Counted(
      std::aligned_alloc(unit, (std::max<std::size_t>(size, 1) + unit - 1) / unit * unit));
}

void operator delete(void* block) noexcept {
  Release(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  Release(block);
}
void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
  Release(block);
}
void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  Release(block);
}
