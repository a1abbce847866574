#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace sonnel {

/// A queue of fixed size between two threads, one that pushes and one that pops; neither waits.
template <class T, std::size_t Size>
class SpscRing {
  public:
    /// False when the queue is full.
    bool Push(const T& value) noexcept {
        const std::size_t head = head_.load(std::memory_order_relaxed);
        if (head - tail_.load(std::memory_order_acquire) == Size) {
            return false;
        }
        slots_[head % Size] = value;
        head_.store(head + 1, std::memory_order_release);
        return true;
    }

    /// How many more can be pushed at least; for the thread that pushes.
    [[nodiscard]] std::size_t Room() const noexcept {
        return Size -
               (head_.load(std::memory_order_relaxed) - tail_.load(std::memory_order_acquire));
    }

    /// False when the queue is empty.
    bool Pop(T& value) noexcept {
        const std::size_t tail = tail_.load(std::memory_order_relaxed);
        if (tail == head_.load(std::memory_order_acquire)) {
            return false;
        }
        value = slots_[tail % Size];
        tail_.store(tail + 1, std::memory_order_release);
        return true;
    }

  private:
    static_assert((Size & (Size - 1)) == 0, "the counters wrap around");
    std::array<T, Size> slots_{};
    std::atomic<std::size_t> head_{0};
    std::atomic<std::size_t> tail_{0};
};

}  // namespace sonnel
