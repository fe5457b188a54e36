// Counting the allocations of a piece of work, through the sanitizers'
// allocator hooks (the test build runs under AddressSanitizer).
#ifndef ALLOCATIONS_H
#define ALLOCATIONS_H

#include <functional>

// False when no sanitizer provides the hooks; nothing can be counted then.
bool installAllocationHooks();

// The allocations that the calling thread makes while `work` runs.
long allocationsOf(const std::function<void()>& work);

#endif // ALLOCATIONS_H
