// SPDX-License-Identifier: MIT
#include "LabelList/LabelListDecoder.h"

class CLabelListDecoder::t_Message
{
public:
    std::string name;
    UINT32 length = 0;
};

struct CLabelListDecoder::t_Compiled
{
};

CLabelListDecoder::CLabelListDecoder(const KW_LabelList& /*list*/)
    : m_compiled(std::make_unique<t_Compiled>())
{
}
CLabelListDecoder::~CLabelListDecoder() = default;
CLabelListDecoder::CLabelListDecoder(CLabelListDecoder&&) noexcept = default;
CLabelListDecoder& CLabelListDecoder::operator=(CLabelListDecoder&&) noexcept = default;
