#include "allocations.h"

#include <atomic>
#include <cstddef>

#include <dlfcn.h>

namespace
{
thread_local bool counting = false;
std::atomic<long> allocations { 0 };

void onMalloc(const volatile void*, size_t)
{
    if (counting)
        allocations.fetch_add(1, std::memory_order_relaxed);
}
void onFree(const volatile void*) { }
} // namespace

bool installAllocationHooks()
{
    using Install = int (*)(void (*)(const volatile void*, size_t), void (*)(const volatile void*));
    static const bool installed = [] {
        const auto install
            = reinterpret_cast<Install>(dlsym(RTLD_DEFAULT, "__sanitizer_install_malloc_and_free_hooks"));
        return install && install(onMalloc, onFree) != 0;
    }();
    return installed;
}

long allocationsOf(const std::function<void()>& work)
{
    const long before = allocations.load();
    counting = true;
    work();
    counting = false;
    return allocations.load() - before;
}
