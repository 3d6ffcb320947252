#include "allocationmeter.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstdint>

// glibc's own allocator under its internal names, which it keeps exported.
extern "C" {
void *__libc_malloc(std::size_t size);
void __libc_free(void *block);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

// Counting is off outside a measurement, so timings elsewhere pay one
// relaxed load per allocation.
std::atomic<bool> g_metering{false};
std::atomic<std::int64_t> g_held{0};
std::atomic<std::int64_t> g_peak{0};

void taken(void *block)
{
    if (!block || !g_metering.load(std::memory_order_relaxed))
        return;
    const std::int64_t held = g_held.fetch_add(static_cast<std::int64_t>(malloc_usable_size(block)),
                                               std::memory_order_relaxed)
        + static_cast<std::int64_t>(malloc_usable_size(block));
    std::int64_t peak = g_peak.load(std::memory_order_relaxed);
    while (held > peak && !g_peak.compare_exchange_weak(peak, held, std::memory_order_relaxed)) {
    }
}

void released(void *block)
{
    if (block && g_metering.load(std::memory_order_relaxed))
        g_held.fetch_sub(static_cast<std::int64_t>(malloc_usable_size(block)), std::memory_order_relaxed);
}

} // namespace

extern "C" {

void *malloc(std::size_t size)
{
    void *block = __libc_malloc(size);
    taken(block);
    return block;
}

void free(void *block)
{
    released(block);
    __libc_free(block);
}

void *calloc(std::size_t count, std::size_t size)
{
    void *block = __libc_calloc(count, size);
    taken(block);
    return block;
}

void *realloc(void *block, std::size_t size)
{
    // Counted as a new block beside the old one, which is what a move costs.
    if (!block)
        return malloc(size);
    const std::size_t before = malloc_usable_size(block);
    void *moved = __libc_realloc(block, size);
    if (moved && g_metering.load(std::memory_order_relaxed)) {
        g_held.fetch_sub(static_cast<std::int64_t>(before), std::memory_order_relaxed);
        taken(moved);
    }
    return moved;
}

void *memalign(std::size_t alignment, std::size_t size)
{
    void *block = __libc_memalign(alignment, size);
    taken(block);
    return block;
}

void *aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void **out, std::size_t alignment, std::size_t size)
{
    if (alignment % sizeof(void *) != 0 || (alignment & (alignment - 1)) != 0)
        return EINVAL;
    void *block = memalign(alignment, size);
    if (!block)
        return ENOMEM;
    *out = block;
    return 0;
}

} // extern "C"

namespace vyr::bench {

std::size_t peakAllocatedBy(const std::function<void()> &work)
{
    g_held.store(0, std::memory_order_relaxed);
    g_peak.store(0, std::memory_order_relaxed);
    g_metering.store(true, std::memory_order_seq_cst);
    work();
    g_metering.store(false, std::memory_order_seq_cst);
    return static_cast<std::size_t>(g_peak.load(std::memory_order_relaxed));
}

} // namespace vyr::bench
