#include "report_model/row_memory.h"

#include <cstddef>
#include <new>

namespace {

using SChunk = CRowMemory::SChunk;

// Small enough to come from the heap that texts come from, so that its pages stay warm.
constexpr std::size_t kChunkSize = std::size_t{16} * 1024;
constexpr std::size_t kRoom = kChunkSize - sizeof(SChunk);
constexpr std::size_t kLargestShared = kRoom / 8;

// The chunk being filled. Without a destructor of its own, so that taking a row need not ask
// whether there is one to run.
struct SFilling {
  SChunk* chunk;
  std::byte* next;
  std::size_t left;
};
constinit thread_local SFilling filling{nullptr, nullptr, 0};

void Fill(SChunk* chunk) {
  filling = {chunk, static_cast<std::byte*>(static_cast<void*>(chunk + 1)), kRoom};
}

SChunk* NewChunk(std::size_t room) {
  return ::new (::operator new(sizeof(SChunk) + room)) SChunk();
}

// Leaves the thread's chunk to its rows, if it has any.
class CThreadEnd {
 public:
  CThreadEnd() = default;
  CThreadEnd(const CThreadEnd&) = delete;
  CThreadEnd& operator=(const CThreadEnd&) = delete;
  ~CThreadEnd() {
    SChunk* chunk = filling.chunk;
    filling = {nullptr, nullptr, 0};
    if (chunk != nullptr && chunk->rows == 0) {
      ::operator delete(chunk);
    }
  }
  void Note() {}
};
thread_local CThreadEnd threadEnd;

}  // namespace

CRowMemory::SPlace CRowMemory::Take(std::size_t size) {
  size = (size + alignof(SChunk) - 1) / alignof(SChunk) * alignof(SChunk);
  if (size > kLargestShared) {
    SChunk* chunk = NewChunk(size);
    chunk->rows = 1;
    return {chunk + 1, chunk};
  }
  if (size > filling.left) {
    // The full chunk is left to its rows: had it none, it would have been begun anew.
    Fill(NewChunk(kRoom));
    threadEnd.Note();
  }
  const SPlace place{filling.next, filling.chunk};
  filling.next += size;
  filling.left -= size;
  ++filling.chunk->rows;
  return place;
}

void CRowMemory::GiveBack(SChunk* chunk) noexcept {
  if (--chunk->rows > 0) {
    return;
  }
  if (chunk == filling.chunk) {
    Fill(chunk);
  } else {
    ::operator delete(chunk);
  }
}
