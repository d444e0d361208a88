// SPDX-License-Identifier: MIT
#include "Streams/SharedStream.h"
#include "Streams/StreamReader.h"
#include "Streams/StreamWriter.h"

#include <algorithm>

IKWStream::~IKWStream() = default;

namespace
{
using namespace NStreams;

class CStream final : public IKWStream
{
public:
    explicit CStream(t_SharedPtr shared) : m_shared(std::move(shared)) {}

    std::unique_ptr<IKWStreamWriter> MakeWriter() override
    {
        if (m_shared->hasWriter.exchange(true, std::memory_order_acq_rel))
        {
            return nullptr;
        }
        return std::make_unique<CStreamWriter>(m_shared);
    }

    std::unique_ptr<IKWStreamReader> MakeReader() override
    {
        t_Waiter* const waiter = m_shared->waiters.Join();
        return waiter != nullptr ? std::make_unique<CStreamReader>(m_shared, *waiter) : nullptr;
    }

private:
    const t_SharedPtr m_shared;
};
} // namespace

std::shared_ptr<IKWStream> KW_MakeStream(UINT64 bytes)
{
    auto shared = std::make_shared<t_SharedStream>(
        static_cast<UINT32>(std::min<UINT64>(bytes, eKW_STREAM_BYTES)));
    if (!shared->pool.IsGood())
    {
        return nullptr;
    }
    return std::make_shared<CStream>(std::move(shared));
}
