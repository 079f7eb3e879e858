// Memory that runs short where a test wants it to. Elsewhere than in sanitized builds this takes
// the place of malloc itself, so that what the C++ library needs besides, as for an exception, can
// fail too. The sanitizers have a malloc of their own; there it takes the place of operator new.

#include "tests/faults/fault_points.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace kova_test {

namespace {

constinit FaultPoint faults;
constinit bool library_runs = false;
constinit long in_use = 0;

bool is_granted() { return !library_runs || !faults.fails(); }

void *counted(void *block) {
    if (block != nullptr)
        ++in_use;
    return block;
}

void give_back(const void *block) {
    if (block != nullptr)
        --in_use;
}

} // namespace

FaultPoint &memory_faults() { return faults; }

long blocks_in_use() { return in_use; }

bool set_library_runs(bool runs) { return std::exchange(library_runs, runs); }

} // namespace kova_test

using kova_test::counted;
using kova_test::give_back;
using kova_test::is_granted;

#if defined(KOVA_SANITIZED)

void *operator new(std::size_t size) {
    void *const block = is_granted() ? counted(std::malloc(size)) : nullptr;
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void *operator new[](std::size_t size) { return ::operator new(size); }

void operator delete(void *block) noexcept {
    give_back(block);
    std::free(block);
}

void operator delete[](void *block) noexcept { ::operator delete(block); }
void operator delete(void *block, std::size_t /*size*/) noexcept { ::operator delete(block); }
void operator delete[](void *block, std::size_t /*size*/) noexcept { ::operator delete(block); }

#else

#include <cerrno>

#define EVERYWHERE __attribute__((visibility("default")))

extern "C" {

// The C library's own, by the names that it keeps for this.
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void *block);

EVERYWHERE void *malloc(std::size_t size) {
    return is_granted() ? counted(__libc_malloc(size)) : nullptr;
}

EVERYWHERE void *calloc(std::size_t count, std::size_t size) {
    return is_granted() ? counted(__libc_calloc(count, size)) : nullptr;
}

EVERYWHERE void *realloc(void *block, std::size_t size) {
    if (!is_granted())
        return nullptr;
    void *const larger = __libc_realloc(block, size);
    return block == nullptr ? counted(larger) : larger;
}

EVERYWHERE void *memalign(std::size_t alignment, std::size_t size) {
    return is_granted() ? counted(__libc_memalign(alignment, size)) : nullptr;
}

EVERYWHERE void *aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

EVERYWHERE int posix_memalign(void **block, std::size_t alignment, std::size_t size) {
    *block = memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

EVERYWHERE void free(void *block) {
    give_back(block);
    __libc_free(block);
}
}

#endif
