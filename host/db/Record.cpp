#include "db/Record.h"

#include <new>

namespace qx::db {

// The header takes the place of a few records at the start of each aligned block of memory.
struct RecordChain::Chunk {
    static constexpr std::size_t bytes = std::size_t{1} << 16;
    static constexpr std::size_t capacity = (bytes - 4 * sizeof(void*)) / sizeof(Record);

    Drawing* drawing;
    Chunk* next = nullptr;
    std::size_t used = 0;
    Record records[capacity];
};

RecordChain::Chunk* RecordChain::chunkOf(const Record* record) {
    static_assert(sizeof(Chunk) <= Chunk::bytes);
    return reinterpret_cast<Chunk*>(reinterpret_cast<std::uintptr_t>(record) & ~(Chunk::bytes - 1));
}

RecordChain::~RecordChain() {
    for (Chunk* chunk = head_; chunk; chunk = chunk->next) chunk->drawing = nullptr;
}

Record* RecordChain::append() {
    if (!tail_ || tail_->used == Chunk::capacity) {
        void* memory = ::operator new(Chunk::bytes, std::align_val_t{Chunk::bytes});
        Chunk* fresh = new (memory) Chunk{&drawing_};
        (tail_ ? tail_->next : head_) = fresh;
        tail_ = fresh;
    }
    ++size_;
    return &tail_->records[tail_->used++];
}

Record* RecordChain::first() const { return head_ ? head_->records : nullptr; }

Record* RecordChain::next(const Record* record) {
    Chunk* chunk = chunkOf(record);
    const std::size_t index = static_cast<std::size_t>(record - chunk->records) + 1;
    if (index < chunk->used) return chunk->records + index;
    return chunk->next ? chunk->next->records : nullptr;
}

Drawing* RecordChain::drawingOf(const Record* record) { return chunkOf(record)->drawing; }

} // namespace qx::db
