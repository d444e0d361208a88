// SPDX-License-Identifier: MIT
#include "LabelList/LabelListMessage.h"

#include "KWEnumerationsSerialBus.h"

CLabelListMessage::CLabelListMessage() = default;

CLabelListMessage::CLabelListMessage(const std::string& name, const std::string& identifierFormat,
                                     UINT32 identifier, UINT32 length)
{
    setParameters(name, identifierFormat, identifier, length);
}

CLabelListMessage::~CLabelListMessage() = default;

void CLabelListMessage::setParameters(const std::string& name, const std::string& identifierFormat,
                                      UINT32 identifier, UINT32 length)
{
    m_name = name;
    m_identifierFormat = identifierFormat;
    m_identifier = identifier;
    m_length = length;
}

void CLabelListMessage::addSignal(const std::pair<QByteArray, CLabelListSignal>& keyAndSignal)
{
    m_signals.insert_or_assign(keyAndSignal.first, keyAndSignal.second);
}

bool CLabelListMessage::hasSignal(const QByteArray& key) const
{
    return m_signals.count(key) != 0;
}

bool CLabelListMessage::updateSignalValueType(const QByteArray& key,
                                              KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType)
{
    const auto signal = m_signals.find(key);
    if (signal == m_signals.end())
        return false;
    signal->second.setValueType(valueType);
    return true;
}

bool CLabelListMessage::addSignalEnumValue(const QByteArray& key,
                                           const std::pair<UINT32, QByteArray>& rawAndLabel)
{
    const auto signal = m_signals.find(key);
    if (signal == m_signals.end())
        return false;
    signal->second.addSignalEnumValue(rawAndLabel);
    return true;
}

std::string CLabelListMessage::CreateMessageLabel() const
{
    if (m_signals.empty())
        return m_name;
    std::string label = m_name + ":\n";
    for (const auto& [key, signal] : m_signals)
    {
        label += "- " + signal.getName();
        if (!signal.getUnit().empty())
            label += " (" + signal.getUnit() + ")";
        label += "\n";
    }
    label.pop_back();
    return label;
}
