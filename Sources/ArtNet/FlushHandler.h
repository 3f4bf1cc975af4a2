// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <new>

namespace Zen {

/// Memory for the one call of the I/O thread that can be outstanding, so that posting a frame to
/// that thread allocates nothing.
class FlushStorage
{
public:
    void* Take(std::size_t size)
    {
        if (taken_ || size > memory_.size())
            return ::operator new(size);
        taken_ = true;
        return memory_.data();
    }
    void GiveBack(void* memory) noexcept
    {
        if (memory == memory_.data())
            taken_ = false;
        else
            ::operator delete(memory);
    }

private:
    alignas(std::max_align_t) std::array<std::byte, 256> memory_{};
    bool taken_ = false;
};

/// An allocator on that memory. The storage outlives all copies.
template <typename T>
struct FlushAllocator
{
    using value_type = T;
    FlushStorage* storage;

    explicit FlushAllocator(FlushStorage* memory)
        : storage(memory)
    {}
    template <typename U>
    explicit FlushAllocator(const FlushAllocator<U>& other)
        : storage(other.storage)
    {}
    T* allocate(std::size_t count) { return static_cast<T*>(storage->Take(count * sizeof(T))); }
    void deallocate(T* memory, std::size_t) { storage->GiveBack(memory); }
    template <typename U>
    bool operator==(const FlushAllocator<U>& other) const
    {
        return storage == other.storage;
    }
};

/// A handler to post that takes its memory from the storage.
template <typename Function>
struct FlushHandler
{
    using allocator_type = FlushAllocator<void*>;
    FlushStorage* storage;
    Function function;

    [[nodiscard]] allocator_type get_allocator() const { return allocator_type(storage); }
    void operator()() { function(); }
};

template <typename Function>
FlushHandler(FlushStorage*, Function) -> FlushHandler<Function>;

} // namespace Zen
