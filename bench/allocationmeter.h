// How much heap memory a piece of work takes at its worst moment. The
// benchmark binary that links this replaces malloc and its kin, so that
// allocations through operator new, Qt and C libraries are all counted.
#ifndef VYR_BENCH_ALLOCATIONMETER_H
#define VYR_BENCH_ALLOCATIONMETER_H

#include <cstddef>
#include <functional>

namespace vyr::bench {

// The largest number of bytes `work` held at once beyond what was held when
// it began (blocks counted by their usable size). Not reentrant.
std::size_t peakAllocatedBy(const std::function<void()> &work);

} // namespace vyr::bench

#endif // VYR_BENCH_ALLOCATIONMETER_H
