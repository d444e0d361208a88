// SPDX-License-Identifier: MIT
#include "LabelList/LabelListSignal.h"

#include "KWEnumerationsSerialBus.h"

CLabelListSignal::CLabelListSignal(const std::string& name, UINT32 startBit, UINT32 bitLength,
                                   KW_ENDIANNESS endianness,
                                   KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType, double factor,
                                   double offset, double minimum, double maximum,
                                   const std::string& unit)
{
    setParameters(name, startBit, bitLength, endianness, valueType, factor, offset, minimum,
                  maximum, unit);
}

void CLabelListSignal::setParameters(const std::string& name, UINT32 startBit, UINT32 bitLength,
                                     KW_ENDIANNESS endianness,
                                     KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType, double factor,
                                     double offset, double minimum, double maximum,
                                     const std::string& unit)
{
    m_name = name;
    m_startBit = startBit;
    m_bitLength = bitLength;
    m_endianness = endianness;
    m_valueType = valueType;
    m_factor = factor;
    m_offset = offset;
    m_minimum = minimum;
    m_maximum = maximum;
    m_unit = unit;
}

void CLabelListSignal::setValueType(KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType)
{
    m_valueType = valueType;
}

void CLabelListSignal::addSignalEnumValue(const std::pair<UINT32, QByteArray>& rawAndLabel)
{
    m_labels.insert_or_assign(rawAndLabel.first, rawAndLabel.second);
}

bool CLabelListSignal::getSignalEnumValue(UINT32 raw, QByteArray& label)
{
    if (m_labels.empty())
        return false;
    m_cursor.reset();
    if (m_labels.count(raw) != 0)
        m_cursor = raw;
    label = getCurrentEnumLabel();
    return m_cursor.has_value();
}

UINT32 CLabelListSignal::getCurrentEnumIndex() const
{
    return m_cursor.value_or(0);
}

QByteArray CLabelListSignal::getCurrentEnumLabel() const
{
    return m_cursor ? m_labels.at(*m_cursor) : QByteArray();
}

QByteArray CLabelListSignal::getSignalKey() const
{
    return QByteArray::number(m_startBit).rightJustified(4, '0') +
           QByteArray::fromStdString(m_name);
}
