#include "control/chunk_pool.h"

#include <new>

namespace kova_import::chunk_pool {

namespace {

/// A chunk that waits for its next use holds its successor.
struct WaitingChunk {
    WaitingChunk *next = nullptr;
};

constinit WaitingChunk *first_waiting = nullptr;

} // namespace

void *take() {
    if (first_waiting == nullptr)
        return ::operator new(chunk_bytes);
    WaitingChunk *const chunk = first_waiting;
    first_waiting = chunk->next;
    return chunk;
}

void give_back(void *chunk) noexcept { first_waiting = ::new (chunk) WaitingChunk{first_waiting}; }

void release() noexcept {
    while (first_waiting != nullptr)
        ::operator delete(take());
}

} // namespace kova_import::chunk_pool
