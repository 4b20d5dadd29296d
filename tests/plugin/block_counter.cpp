#include "tests/plugin/block_counter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> liveBlocks{0};

} // namespace

namespace brimwave::testing {

long LiveBlocks() {
    return liveBlocks;
}

} // namespace brimwave::testing

void* operator new(std::size_t size) {
    if (void* const block = std::malloc(size ? size : 1)) {
        ++liveBlocks;
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    if (block)
        --liveBlocks;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
