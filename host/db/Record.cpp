#include "db/Record.h"

#include <new>

namespace qx::db {

// Chunks of closed drawings stay within reach, one behind the other.
RecordChain::~RecordChain() {
    static Chunk* closed = nullptr;
    if (!head_) return;
    for (Chunk* chunk = head_; chunk; chunk = chunk->next) chunk->drawing = nullptr;
    tail_->next = closed;
    closed = head_;
}

Record* RecordChain::append() {
    if (!tail_ || tail_->used == Chunk::capacity) {
        static_assert(sizeof(Chunk) <= Chunk::bytes);
        void* memory = ::operator new (Chunk::bytes, std::align_val_t{Chunk::bytes});
        Chunk* fresh = new (memory) Chunk{};
        fresh->drawing = &drawing_;
        (tail_ ? tail_->next : head_) = fresh;
        tail_ = fresh;
    }
    ++size_;
    return &tail_->records[tail_->used++];
}

} // namespace qx::db
