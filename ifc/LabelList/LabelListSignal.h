// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSerialBus.h"

#include <QByteArray>
#include <map>
#include <optional>
#include <string>
#include <utility>

/**
 * A signal of a bus message: where it stands in the payload, how its bits encode a value, and the
 * labels of its raw values. A plain value: copies are independent. Not for several threads at once.
 *
 * A cursor stands on one entry of the labels or at their end, where it stands at first. A copy has
 * a cursor of its own, on the same entry of its own labels.
 */
class KW_EXPORT CLabelListSignal
{
public:
    /** Labels by raw value. */
    using t_EnumTable = std::map<UINT32, QByteArray>;

    CLabelListSignal() = default;

    /** As setParameters on an empty signal. */
    CLabelListSignal(const std::string& name, UINT32 startBit, UINT32 bitLength,
                     KW_ENDIANNESS endianness, KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType,
                     double factor, double offset, double minimum, double maximum,
                     const std::string& unit);

    /**
     * Sets all fields but the labels, which stay.
     *
     * @param startBit number of a bit in the notation of CAN databases, 8 × byte + bit with bit 0
     *        the least significant of its byte: of a little-endian signal its least significant
     *        bit, of a big-endian one its most significant, from which it goes on towards bit 0 and
     *        then with bit 7 of the next byte (7 with 16 bits is the first two bytes)
     * @param bitLength number of bits
     * @param factor physical value = offset + raw value × factor
     * @param minimum lowest physical value; `maximum` the highest. Not checked against each other.
     * @param unit unit text of the physical value; empty when it has none
     */
    void setParameters(const std::string& name, UINT32 startBit, UINT32 bitLength,
                       KW_ENDIANNESS endianness, KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType,
                       double factor, double offset, double minimum, double maximum,
                       const std::string& unit);

    /** Changes how the bits are read, and nothing else. */
    void setValueType(KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType);

    /** Labels a raw value; an earlier label of the same value is replaced. The cursor stays. */
    void addSignalEnumValue(const std::pair<UINT32, QByteArray>& rawAndLabel);

    /** Looks a raw value up, puts the cursor on its entry and gives its label. A value without a
        label moves the cursor to the end, empties `label` and gives false. A signal without any
        labels gives false at once and leaves `label` alone. */
    bool getSignalEnumValue(UINT32 raw, QByteArray& label);

    /** Raw value of the cursor's entry; 0 at the end. */
    UINT32 getCurrentEnumIndex() const;

    /** Label of the cursor's entry; empty at the end. */
    QByteArray getCurrentEnumLabel() const;

    /** Start bit in decimal with at least four digits, then the name ("0008Rpm"): sorts by start
        bit, then by name. */
    QByteArray getSignalKey() const;

    /** The fields, as setParameters takes them, and the labels. */
    ///@{
    const std::string& getName() const { return m_name; }
    UINT32 getStartBit() const { return m_startBit; }
    UINT32 getBitLength() const { return m_bitLength; }
    KW_ENDIANNESS getEndianness() const { return m_endianness; }
    KW_SIGNAL_TRANSLATION_VALUE_TYPE getValueType() const { return m_valueType; }
    double getFactor() const { return m_factor; }
    double getOffset() const { return m_offset; }
    double getMinimum() const { return m_minimum; }
    double getMaximum() const { return m_maximum; }
    const std::string& getUnit() const { return m_unit; }
    const t_EnumTable& getSignalEnumValues() const { return m_labels; }
    ///@}

private:
    std::string m_name;
    UINT32 m_startBit = 0;
    UINT32 m_bitLength = 0;
    KW_ENDIANNESS m_endianness = static_cast<KW_ENDIANNESS>(0);
    KW_SIGNAL_TRANSLATION_VALUE_TYPE m_valueType = eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT;
    double m_factor = 0.0;
    double m_offset = 0.0;
    double m_minimum = 0.0;
    double m_maximum = 0.0;
    std::string m_unit;
    t_EnumTable m_labels;
    std::optional<UINT32> m_cursor; ///< raw value of an entry of m_labels; none at the end
};
