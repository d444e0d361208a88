// SPDX-License-Identifier: MIT
#include "RemoteUnits.h"

#include "EnumNameInfo.h"
#include "KWEnumerationsUnits.h"

#include <array>

namespace
{
struct t_Sign
{
    const char* suffix;
    const char16_t* sign;
};

/** The longer ones first: MA is mega, M milli. */
constexpr std::array kPrefixes{t_Sign{"MA", u"M"}, t_Sign{"T", u"T"}, t_Sign{"G", u"G"},
                               t_Sign{"K", u"k"},  t_Sign{"M", u"m"}, t_Sign{"U", u"µ"},
                               t_Sign{"N", u"n"},  t_Sign{"P", u"p"}, t_Sign{"F", u"f"}};

/** Units whose standard suffix is not their sign in capitals. */
constexpr std::array kSigns{t_Sign{"OHM", u"Ω"}, t_Sign{"CEL", u"°C"}, t_Sign{"FAR", u"°F"},
                            t_Sign{"DEG", u"°"}, t_Sign{"PCT", u"%"},  t_Sign{"SIE", u"S"}};

/** Units with a prefix of their own, which stands for any other as well. */
bool HasPrefix(const QString& sign)
{
    return sign.size() > 1 && (sign[0] == u'm' || sign[0] == u'µ') &&
           (sign[1] == u'V' || sign[1] == u'A' || sign[1] == u'W');
}

/** A scale is per division whether it is written or not. */
QString BaseOf(KW_UNIT unit)
{
    QString sign = KW_GetUnitText(unit);
    if (sign.endsWith(QLatin1String("/div")))
    {
        sign.chop(4);
    }
    return HasPrefix(sign) ? sign.mid(1) : sign;
}

QByteArray SuffixOf(const QString& base)
{
    for (const t_Sign& row : kSigns)
    {
        if (base == QString::fromUtf16(row.sign))
        {
            return row.suffix;
        }
    }
    return base.toUpper().toLatin1();
}

/** "MHZ" and "MOHM" are mega: nobody measures in millihertz with a capital M. */
bool IsMega(const QByteArray& prefix, const QByteArray& base)
{
    return prefix == "M" && (base == "HZ" || base == "OHM");
}
} // namespace

QString NRemote::UnitOf(const QByteArray& suffix, KW_UNIT unit)
{
    const QString sign = KW_GetUnitText(unit);
    const QString base = BaseOf(unit);
    const QByteArray own = SuffixOf(base);
    const CEnumNameInfo& units = GetStaticEnumNameInfo<KW_UNIT>();
    if (!sign.isEmpty() && suffix == units.GetRemoteName(unit).toUpper().toLatin1())
    {
        return sign;
    }
    if (own.isEmpty() || suffix == own)
    {
        return own.isEmpty() ? QString() : base;
    }
    if (own.startsWith("DB") || !suffix.endsWith(own))
    {
        return QString();
    }
    const QByteArray prefix = suffix.left(suffix.size() - own.size());
    for (const t_Sign& row : kPrefixes)
    {
        if (prefix == row.suffix)
        {
            return (IsMega(prefix, own) ? QStringLiteral("M") : QString::fromUtf16(row.sign)) +
                   base;
        }
    }
    return QString();
}
