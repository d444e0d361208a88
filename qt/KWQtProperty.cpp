// SPDX-License-Identifier: MIT
#include "KWQtProperty.h"

#include "KWTexts.h"
#include "PropertyAccess.h"

#include <QPointer>

namespace
{
enum eCHANGE : unsigned
{
    eCHANGE_VALUE = 1,
    eCHANGE_LIMITS = 2,
    eCHANGE_CHOICES = 4,
    eCHANGE_STATE = 8,
    eCHANGE_PATH = 16
};

unsigned Compare(const t_Marks& before, const t_Marks& now)
{
    const bool isOtherUnit = before.unit != now.unit;
    const bool isOtherValue = before.value != now.value || before.text != now.text;
    const bool areOtherLimits =
        before.minimum != now.minimum || before.maximum != now.maximum || before.step != now.step;
    return (isOtherValue || isOtherUnit ? eCHANGE_VALUE : 0U) |
           (areOtherLimits || isOtherUnit ? eCHANGE_LIMITS : 0U) |
           (before.selectable != now.selectable || isOtherUnit ? eCHANGE_CHOICES : 0U);
}
} // namespace

CKWQtProperty::CKWQtProperty(std::shared_ptr<IDbProperty> node, QObject* parent)
    : QObject(parent), m_node(std::move(node)), m_access(MakePropertyAccess(m_node)),
      m_marks(std::make_unique<t_Marks>(m_access->Read())), m_path(m_node->GetPath()),
      m_validity(m_node->GetValidity()), m_availability(m_node->GetAvailability())
{
}

CKWQtProperty::~CKWQtProperty() = default;

QVariant CKWQtProperty::GetValue() const
{
    return m_access->GetValue();
}

void CKWQtProperty::SetValue(const QVariant& value)
{
    Wrote(m_access->SetValue(value));
}

QString CKWQtProperty::GetText() const
{
    return m_access->GetText();
}

void CKWQtProperty::SetText(const QString& text)
{
    Wrote(m_access->SetValue(text));
}

QVariant CKWQtProperty::GetMinimum() const
{
    return m_access->GetMinimum();
}

QVariant CKWQtProperty::GetMaximum() const
{
    return m_access->GetMaximum();
}

QVariant CKWQtProperty::GetStep() const
{
    return m_access->GetStep();
}

QString CKWQtProperty::GetUnit() const
{
    return KW_GetUnitText(m_node->GetUnitCode());
}

QVariantList CKWQtProperty::GetChoices() const
{
    return m_access->GetChoices();
}

bool CKWQtProperty::IsValid() const
{
    return m_attached && m_node->GetValidity() == eKW_VALIDITY_VALID;
}

int CKWQtProperty::GetAvailability() const
{
    return m_attached ? m_node->GetAvailability() : eAVAILABILITY_NOT_AVAILABLE;
}

bool CKWQtProperty::IsWritable() const
{
    return m_node->GetObjectType() == eOBJECTTYPE_SETTING &&
           GetAvailability() == eAVAILABILITY_AVAILABLE;
}

QString CKWQtProperty::GetRefusal() const
{
    if (KW_IsAccepted(m_code))
    {
        return {};
    }
    const QString why = KW_GetAcceptanceText(m_code);
    QString limit;
    if (m_code == eKW_ACC_BELOW_MINIMUM)
    {
        limit = m_node->GetMinText();
    }
    else if (m_code == eKW_ACC_ABOVE_MAXIMUM)
    {
        limit = m_node->GetMaxText();
    }
    else if (m_code == eKW_ACC_BAD_TEXT)
    {
        limit = KW_GetFormText(*m_node);
    }
    return limit.isEmpty()
               ? why
               : QStringLiteral("%1 (%2)").arg(why, KW_FormatNumber(limit, m_node->GetUnitCode()));
}

QString CKWQtProperty::GetName() const
{
    return m_node->GetNodeName();
}

QString CKWQtProperty::GetMeaning() const
{
    return KW_GetMeaning(*m_node);
}

int CKWQtProperty::setLimited(double value)
{
    return Wrote(m_access->SetLimited(value));
}

int CKWQtProperty::stepBy(int steps)
{
    return Wrote(m_node->IncDec(steps));
}

int CKWQtProperty::reset()
{
    return Wrote(m_node->SetToDefault());
}

unsigned CKWQtProperty::Look(bool moved, bool attached)
{
    t_Marks marks = m_access->Read();
    unsigned what = Compare(*m_marks, marks);
    *m_marks = std::move(marks);

    const KW_VALIDITY validity = m_node->GetValidity();
    const KW_AVAILABILITY availability = m_node->GetAvailability();
    if (validity != m_validity || availability != m_availability || attached != m_attached)
    {
        what |= eCHANGE_STATE;
        m_validity = validity;
        m_availability = availability;
        m_attached = attached;
    }
    if (moved && attached)
    {
        const QString path = m_node->GetPath();
        what |= path != m_path ? eCHANGE_PATH : 0U;
        m_path = path;
    }
    return what;
}

void CKWQtProperty::Tell(unsigned what)
{
    const QPointer<CKWQtProperty> alive = this; // a receiver may let the tree go
    const auto tell = [&alive, this, what](unsigned bit, void (CKWQtProperty::*signal)())
    {
        if ((what & bit) != 0 && alive)
        {
            Q_EMIT(this->*signal)();
        }
    };
    tell(eCHANGE_PATH, &CKWQtProperty::pathChanged);
    tell(eCHANGE_STATE, &CKWQtProperty::stateChanged);
    tell(eCHANGE_LIMITS, &CKWQtProperty::limitsChanged);
    tell(eCHANGE_CHOICES, &CKWQtProperty::choicesChanged);
    tell(eCHANGE_VALUE, &CKWQtProperty::valueChanged);
    tell(~0U, &CKWQtProperty::changed);
}

/** What else has moved is told of with the next poll. */
int CKWQtProperty::Wrote(KW_ACCEPTANCE code)
{
    const QPointer<CKWQtProperty> alive = this;
    const bool isOther = code != m_code;
    m_code = code;
    const unsigned what = Look(false, m_attached);
    if (what != 0)
    {
        Tell(what);
    }
    if (isOther && alive)
    {
        Q_EMIT refusalChanged();
    }
    if (!KW_IsAccepted(code) && alive)
    {
        Q_EMIT refused(static_cast<int>(code), GetRefusal());
    }
    return static_cast<int>(code);
}
