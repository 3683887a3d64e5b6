#include "db/Record.h"

#include <new>
#include <vector>

namespace qx::db {

RecordChain::~RecordChain() {
    static std::vector<Chunk*> ofClosedDrawings; // within reach of whoever looks for lost memory
    if (head_) ofClosedDrawings.push_back(head_);
    for (Chunk* chunk = head_; chunk; chunk = chunk->next) chunk->drawing = nullptr;
}

Record* RecordChain::append() {
    if (!tail_ || tail_->used == Chunk::capacity) {
        static_assert(sizeof(Chunk) <= Chunk::bytes);
        void* memory = ::operator new(Chunk::bytes, std::align_val_t{Chunk::bytes});
        Chunk* fresh = new (memory) Chunk{};
        fresh->drawing = &drawing_;
        (tail_ ? tail_->next : head_) = fresh;
        tail_ = fresh;
    }
    ++size_;
    return &tail_->records[tail_->used++];
}

} // namespace qx::db
