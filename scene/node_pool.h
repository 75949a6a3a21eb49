#pragma once
// NodePool and PoolAllocator: the nodes of a large index taken from chunks of
// many at a time and handed back onto a free list, instead of one heap block
// each. A scene of a million locations asks for a million nodes of one size.

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace UTIL::SceneTree {

/// Blocks of one size, carved from chunks that grow with the pool; a block
/// given back is handed out again before a new one is carved. Chunks go only
/// when the pool does. Blocks lie side by side in the order they were handed
/// out, so that nodes made one after another lie in the order of their
/// addresses.
class NodePool {
public:
    /// What a block is aligned to. Eight would do for pointers and doubles,
    /// but a record's vectors of doubles are read sixteen bytes at a time,
    /// and at eight some of those reads would straddle two cache lines: the
    /// handle passes over 10,000 lights took a tenth longer.
    static constexpr std::size_t kAlignment = alignof(std::max_align_t);

    NodePool() = default;
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    /// Whether blocks of `size` bytes come from this pool: the first size asked
    /// for is the pool's.
    bool serves(std::size_t size) const { return blockSize == 0 || blockSize == roundUp(size); }

    /// A block of `size` bytes, which serves() must accept.
    void* allocate(std::size_t size) {
        if (blockSize == 0) blockSize = roundUp(size);
        if (freeList != nullptr) {
            FreeBlock* const block = freeList;
            freeList = block->next;
            return block;
        }
        if (carved == chunkBlocks) {
            // Each chunk an eighth of the blocks carved before it: at most a
            // ninth of the pool is carved and not handed out, while a large
            // index asks the heap no more than some hundred times. Left
            // uninitialised.
            totalBlocks += chunkBlocks;
            chunkBlocks = std::max(kFirstChunkBlocks, totalBlocks / kGrowthDivisor);
            chunks.emplace_back(new std::byte[blockSize * chunkBlocks]);
            carved = 0;
        }
        return chunks.back().get() + blockSize * carved++;
    }

    void deallocate(void* block) { freeList = new (block) FreeBlock{freeList}; }

private:
    struct FreeBlock {
        FreeBlock* next;
    };
    static constexpr std::size_t kFirstChunkBlocks = 64;
    static constexpr std::size_t kGrowthDivisor = 8;

    static std::size_t roundUp(std::size_t size) {
        return (size + kAlignment - 1) / kAlignment * kAlignment;
    }

    std::size_t blockSize = 0;
    std::vector<std::unique_ptr<std::byte[]>> chunks;
    std::size_t chunkBlocks = 0;
    /// Blocks of every chunk before the last.
    std::size_t totalBlocks = 0;
    std::size_t carved = 0;
    FreeBlock* freeList = nullptr;
};

/// An allocator that takes single objects of its one pooled type from a
/// NodePool and everything else (arrays of buckets) from the heap. A node-based
/// container allocates its nodes one at a time, so they all come from the pool.
template <class T>
class PoolAllocator {
public:
    using value_type = T;

    explicit PoolAllocator(NodePool* pool) : pool(pool) {}
    template <class U>
    PoolAllocator(const PoolAllocator<U>& other) : pool(other.pool) {}

    T* allocate(std::size_t count) {
        if (count == 1 && fitsPool()) return static_cast<T*>(pool->allocate(sizeof(T)));
        return std::allocator<T>().allocate(count);
    }
    void deallocate(T* object, std::size_t count) {
        if (count == 1 && fitsPool())
            pool->deallocate(object);
        else
            std::allocator<T>().deallocate(object, count);
    }

    friend bool operator==(const PoolAllocator& a, const PoolAllocator& b) {
        return a.pool == b.pool;
    }
    friend bool operator!=(const PoolAllocator& a, const PoolAllocator& b) { return !(a == b); }

private:
    template <class U>
    friend class PoolAllocator;

    bool fitsPool() const { return alignof(T) <= NodePool::kAlignment && pool->serves(sizeof(T)); }

    NodePool* pool;
};

}  // namespace UTIL::SceneTree
