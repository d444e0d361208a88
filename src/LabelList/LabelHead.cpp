// SPDX-License-Identifier: MIT
#include "LabelList/LabelHead.h"

#include "LabelList/LabelFields.h"
#include "LabelList/LabelTexts.h"

QString NLabelHead::ReadVersion(std::string_view text)
{
    const auto point = text.find('.');
    const auto major = NLabelTexts::ReadUnsigned(text.substr(0, point));
    const auto minor = point == std::string_view::npos
                           ? std::optional(UINT32{0})
                           : NLabelTexts::ReadUnsigned(text.substr(point + 1));
    const QString shown =
        QString::fromUtf8(text.data(), static_cast<int>(text.size())); // as it stands
    if (!major || !minor || *major == 0)
    {
        return QStringLiteral("Version: \"%1\" is no version such as 1.0").arg(shown);
    }
    return *major == 1
               ? QString()
               : QStringLiteral("Version: %1 is newer than what is read here, 1.0").arg(shown);
}

QString NLabelHead::ReadProtocol(std::string_view text, KW_ZEL_SERIALBUS_PROTOCOL& protocol)
{
    const CEnumNameInfo& names = GetStaticEnumNameInfo<KW_ZEL_SERIALBUS_PROTOCOL>();
    const QString shown = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
    const auto found = names.ConvertName(shown);
    if (found.match == CEnumNameInfo::eMATCH::One)
    {
        protocol = static_cast<KW_ZEL_SERIALBUS_PROTOCOL>(found.value);
        return {};
    }
    return QStringLiteral("Protocol: \"%1\" is none of %2")
        .arg(shown, NLabelFields::NamesOf(names));
}

QString NLabelHead::NotText()
{
    return QStringLiteral("no text in UTF-8: damaged, in another encoding, or with a control "
                          "character");
}

void NLabelHead::WarnOfReplaced(std::size_t replaced, CLabelReports& reports)
{
    if (replaced > 0)
    {
        reports.Warning({}, QStringLiteral("%1 characters that no file can hold, such as control "
                                           "characters, are written as U+FFFD")
                                .arg(replaced));
    }
}
