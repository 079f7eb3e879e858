#pragma once

#include <cstddef>

/// The memory of lists, in chunks of one size. What the lists of one section give back serves those
/// of the next one: memory that is fresh from the system costs more than reading a record into it.
namespace kova_import::chunk_pool {

inline constexpr std::size_t chunk_bytes = std::size_t{32} * 1024;

/// A chunk, aligned for every row. Throws std::bad_alloc when there is no memory for it.
[[nodiscard]] void *take();

/// `chunk` comes from `take()` and is used no more.
void give_back(void *chunk) noexcept;

/// Gives the system what no list uses.
void release() noexcept;

} // namespace kova_import::chunk_pool
