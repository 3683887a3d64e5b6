#include "db/Record.h"

#include <deque>
#include <new>
#include <utility>

namespace qx::db {

namespace {
constexpr std::size_t keptBytes = std::size_t{16} << 20; // of closed drawings besides the last
}

struct RecordChain::Closed {
    Chunk* head;
    std::size_t bytes;
};

// Chunks of closed drawings stay within reach, those of the oldest only as long as all are small.
RecordChain::~RecordChain() {
    if (!head_) return;
    std::size_t bytes = 0;
    for (Chunk* chunk = head_; chunk; chunk = chunk->next, bytes += Chunk::bytes) chunk->drawing = nullptr;
    // Lasts longer than any static object that closes a drawing or asks an id.
    static std::deque<Closed>& closed = *new std::deque<Closed>;
    static std::size_t total = 0;
    for (; !closed.empty() && total > keptBytes; closed.pop_front()) {
        total -= closed.front().bytes;
        release(closed.front().head);
    }
    closed.push_back({head_, bytes});
    total += bytes;
}

void RecordChain::release(Chunk* chunk) {
    while (chunk) ::operator delete (std::exchange(chunk, chunk->next), std::align_val_t{Chunk::bytes});
}

Record* RecordChain::append() {
    if (!tail_ || tail_->used == Chunk::capacity) {
        static_assert(sizeof(Chunk) <= Chunk::bytes);
        void* memory = ::operator new (Chunk::bytes, std::align_val_t{Chunk::bytes});
        Chunk* fresh = new (memory) Chunk{};
        fresh->drawing = &drawing_;
        fresh->chain = this;
        fresh->number = chunks_.size();
        chunks_.push_back(fresh);
        (tail_ ? tail_->next : head_) = fresh;
        tail_ = fresh;
    }
    ++size_;
    return &tail_->records[tail_->used++];
}

} // namespace qx::db
