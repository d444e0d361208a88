// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSerialBus.h"
#include "LabelList/LabelListSignal.h"

#include <QByteArray>
#include <map>
#include <string>
#include <utility>

/** A message of a bus: its name, its frame identifier and its signals. A value: copies are
    independent. Not for several threads at once. */
class KW_EXPORT CLabelListMessage
{
public:
    /** Signals by key, in byte-wise order of the keys. */
    using t_SignalMap = std::map<QByteArray, CLabelListSignal>;

    /** A message without name and signals, with an 11-bit identifier of 0. */
    CLabelListMessage();

    /** As setParameters on an empty message. */
    CLabelListMessage(const std::string& name, const std::string& identifierFormat,
                      UINT32 identifier, UINT32 length);
    virtual ~CLabelListMessage();
    /** Copies, signals included. */
    ///@{
    CLabelListMessage(const CLabelListMessage&) = default;
    CLabelListMessage& operator=(const CLabelListMessage&) = default;
    ///@}

    /** Sets the message's own fields; the signals stay.
        @param identifierFormat width of the identifier in bits, as text: "11" or "29" for CAN
        @param length length of the payload in bytes */
    void setParameters(const std::string& name, const std::string& identifierFormat,
                       UINT32 identifier, UINT32 length);

    /** Files a signal under a key; one already filed there is replaced. */
    void addSignal(const std::pair<QByteArray, CLabelListSignal>& keyAndSignal);

    /** Whether a signal is filed under the key. */
    bool hasSignal(const QByteArray& key) const;

    /** Changes how the bits of a signal are read, as the value labels of a file do; false when no
        signal has the key. */
    bool updateSignalValueType(const QByteArray& key, KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType);

    /** CLabelListSignal::addSignalEnumValue of a signal; false when no signal has the key. */
    bool addSignalEnumValue(const QByteArray& key,
                            const std::pair<UINT32, QByteArray>& rawAndLabel);

    /** Text for a display: the name alone for a message without signals, else the name, ":" and a
        line "- signal (unit)" per signal, without the brackets where there is no unit. The last
        line has no line feed. */
    std::string CreateMessageLabel() const;

    /** The message's own fields, as setParameters takes them, and its signals. */
    ///@{
    const std::string& getName() const { return m_name; }
    const std::string& getIdentifierFormat() const { return m_identifierFormat; }
    UINT32 getIdentifier() const { return m_identifier; }
    UINT32 getLength() const { return m_length; }
    const t_SignalMap& getSignals() const { return m_signals; }
    ///@}

    /** A counter for the bookkeeping of whoever holds the message: 0 at first, copied with the
        message, touched by nothing but setCount. */
    ///@{
    INT32 getCount() const { return m_count; }
    void setCount(INT32 count) { m_count = count; }
    ///@}

private:
    std::string m_name;
    std::string m_identifierFormat = "11";
    UINT32 m_identifier = 0;
    UINT32 m_length = 0;
    t_SignalMap m_signals;
    INT32 m_count = 0;
};
