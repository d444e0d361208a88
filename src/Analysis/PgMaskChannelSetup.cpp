// SPDX-License-Identifier: MIT
#include "Analysis/PgMaskChannelSetup.h"

#include "CheckedAccess.h"
#include "CommonDatabase/Couplings/DbRules.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsReadings.h"
#include "Masks/MaskFile.h"
#include "Names/MaskChannelSetup.h"

using namespace NNames;

namespace
{
/** FNV-1a of 64 bits. */
UINT64 ChecksumOf(const QByteArray& bytes)
{
    UINT64 sum = bytes.isEmpty() ? 0 : 0xCBF29CE484222325U;
    for (const char byte : bytes)
    {
        sum = (sum ^ static_cast<UINT8>(byte)) * 0x100000001B3U;
    }
    return sum;
}
} // namespace

t_Couplings CPgMaskChannelSetup::Rules() const
{
    static constexpr auto rows =
        Table<Names>(Changed(Names::MaskLines) >> Derive<&CPgMaskChannelSetup::CountPoints>);
    return rows;
}

void CPgMaskChannelSetup::ClearCounts()
{
    KW_CHECKED(m_pFailedAcquisitions->DbSet(0));
    KW_CHECKED(m_pViolation->DbSet(eKW_ZEL_LIMIT_INSIDE));
}

void CPgMaskChannelSetup::ClearMask()
{
    KW_CHECKED(m_pMaskLines->DbSet({}));
    ClearCounts();
}

std::shared_ptr<const KW_Mask> CPgMaskChannelSetup::GetMask() const
{
    const QByteArray lines = m_pMaskLines->Get();
    if (m_mask == nullptr || lines != m_read)
    {
        KW_Mask mask;
        if (!lines.isEmpty())
        {
            std::vector<KW_LabelReport> reports;
            KW_ReadMaskText(lines, mask, reports); // what is none leaves it empty
        }
        m_mask = std::make_shared<const KW_Mask>(std::move(mask));
        m_read = lines;
    }
    return m_mask;
}

KW_ACCEPTANCE CPgMaskChannelSetup::SetMask(const KW_Mask& mask)
{
    QByteArray lines;
    std::vector<KW_LabelReport> reports;
    const KW_ACCEPTANCE code = mask.IsEmpty() ? eKW_ACC_OK : KW_WriteMaskText(mask, lines, reports);
    return KW_IsAccepted(code) ? m_pMaskLines->DbSet(lines) : code;
}

void CPgMaskChannelSetup::CountPoints()
{
    const auto mask = GetMask();
    KW_CHECKED(m_pMaskDefined->DbSet(mask->IsEmpty() ? eKW_ONOFF_OFF : eKW_ONOFF_ON));
    KW_CHECKED(m_pMaskPoints->DbSet(static_cast<UINT32>(mask->upper.size() + mask->lower.size())));
    KW_CHECKED(m_pMaskChecksum->DbSet(ChecksumOf(m_pMaskLines->Get())));
}
