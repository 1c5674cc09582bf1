// The byte array that every reader fills and every writer builds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

namespace wb
{

// Leaves grown elements uninitialised: whole files and pictures are written right after they are sized, and
// zeroing them first costs as much as reading them.
template <typename T>
class UninitializedAllocator : public std::allocator<T>
{
public:
    template <typename U>
    struct rebind {
        using other = UninitializedAllocator<U>;
    };

    template <typename U, typename... Args>
    void construct(U *place, Args &&...args)
    {
        if constexpr (sizeof...(Args) == 0)
            ::new (static_cast<void *>(place)) U;
        else
            ::new (static_cast<void *>(place)) U(std::forward<Args>(args)...);
    }
};

// `resize` leaves new bytes undefined; `assign(n, 0)` gives zeroes.
using ByteArray = std::vector<std::uint8_t, UninitializedAllocator<std::uint8_t>>;

// A view of bytes that somebody else owns.
using ByteView = std::span<const std::uint8_t>;

} // namespace wb
