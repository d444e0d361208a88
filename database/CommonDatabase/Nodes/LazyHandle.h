// SPDX-License-Identifier: MIT
#pragma once

#include "LockManager.h"

#include <atomic>

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
