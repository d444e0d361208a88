// SPDX-License-Identifier: MIT
#pragma once

#include "LockManager.h"

#include <atomic>
#include <cstddef>
#include <new>
#include <type_traits>

/** The handle of a node, in names of the frame its FIM, the function interface of the model: what
    clients hold instead of the node (GetFIMPointer). Made when it is first asked for, by whichever
    thread; lives as long as the node, so that clients may keep what they got. */
template <typename T>
class CLazyHandle
{
public:
    CLazyHandle() = default;
    ~CLazyHandle() { delete m_handle.load(std::memory_order_acquire); }
    /** Clients hold pointers to what it made: it can not move. */
    CLazyHandle(const CLazyHandle&) = delete;
    CLazyHandle& operator=(const CLazyHandle&) = delete;

    /** `create` answers a std::unique_ptr<T>; without one there is no handle yet. */
    template <typename TCreate>
    T* Get(const TCreate& create)
    {
        T* handle = m_handle.load(std::memory_order_acquire);
        if (handle == nullptr)
        {
            const CLockGuard lock;
            handle = m_handle.load(std::memory_order_acquire);
            if (handle == nullptr)
            {
                handle = create().release();
                m_handle.store(handle, std::memory_order_release);
            }
        }
        return handle;
    }

private:
    /** Set once, under the lock; read without it, so acquire and release order what it points to.
     */
    std::atomic<T*> m_handle{nullptr};
};

/** The same for a node of which there are thousands: room for the handle inside of the node, so
   that it takes no memory of its own and making it can not fail. A handle has nothing to let go: it
   ends with its node. */
template <typename T>
class CHandlePlace
{
public:
    CHandlePlace() = default;
    /** As CLazyHandle. */
    CHandlePlace(const CHandlePlace&) = delete;
    CHandlePlace& operator=(const CHandlePlace&) = delete;

    /** `isMade` belongs to the place, where the node has room for it. `create` calls Make. */
    template <typename TCreate>
    T* Get(std::atomic<bool>& isMade, const TCreate& create)
    {
        if (!isMade.load(std::memory_order_acquire))
        {
            const CLockGuard lock;
            if (!isMade.load(std::memory_order_acquire))
            {
                create();
                isMade.store(true, std::memory_order_release);
            }
        }
        return std::launder(reinterpret_cast<T*>(m_place));
    }

    /** A handle is a table of functions and a reference to its node. */
    template <typename THandle, typename TNode>
    void Make(TNode& node)
    {
        static_assert(sizeof(THandle) <= sizeof m_place && alignof(THandle) <= alignof(void*));
        static_assert(std::is_base_of_v<T, THandle>);
        ::new (m_place) THandle(node);
    }

private:
    alignas(void*) std::byte m_place[2 * sizeof(void*)];
};
