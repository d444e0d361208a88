// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <memory>
#include <span>
#include <string>

/**
 * A label list, compiled: frames in, signals out. It means what databases mean: physical value =
 * raw value × factor + offset, signed raw values in two's complement, floats and doubles by IEEE
 * 754, every length from 1 to 64 bits, both byte orders, any start bit. LabelListConversion.h
 * converts the texts of existing settings instead, whose limits differ.
 *
 * Immutable once made: any number of threads may decode with one at once. Decoding takes no memory
 * and never waits.
 */
class KW_EXPORT CLabelListDecoder
{
public:
    /** A signal as a reader of values needs it. Good as long as the decoder. */
    struct t_Signal
    {
        std::string name;
        std::string unit; ///< empty when it has none
        KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType;
        UINT32 bitLength;
        double minimum; ///< lowest physical value, as the list says; not enforced
        double maximum;
    };

    /** A decoded signal. */
    struct t_Value
    {
        const t_Signal* signal = nullptr;
        UINT64 raw = 0;                     ///< its bits, the highest not sign-extended
        double value = 0.0;                 ///< physical value; NaN with a factor of 0
        const std::string* label = nullptr; ///< of the raw value; null when it has none
    };

    class t_Message; ///< a compiled message

    /** Compiles a list. Of several messages with one identifier of one length the first counts;
        signals that no payload of the message can hold, or with a length that their type does not
        allow, are left out. */
    explicit CLabelListDecoder(const KW_LabelList& list);
    ~CLabelListDecoder();
    CLabelListDecoder(CLabelListDecoder&&) noexcept;
    CLabelListDecoder& operator=(CLabelListDecoder&&) noexcept;

    /** The message of a frame; null when the list has none.
        @param identifierLength in bits, as the bus has it: 11 or 29 for CAN */
    const t_Message* Find(UINT32 identifierLength, UINT32 identifier) const noexcept;

    static const std::string& NameOf(const t_Message& message) noexcept;
    /** Bytes of the payload, as the list says. */
    static UINT32 LengthOf(const t_Message& message) noexcept;
    /** Signals that a frame can have at most: what room `values` needs. */
    static std::size_t SignalCountOf(const t_Message& message) noexcept;

    /**
     * Decodes the signals of a frame, in the order of the list. Left out are those whose
     * multiplexor has another value, those that the payload is too short for, and those that
     * `values` has no room for.
     *
     * @param payload first byte first; of SENT two nibbles in a byte, the upper one first
     * @return how many
     */
    static std::size_t Decode(const t_Message& message, std::span<const UINT8> payload,
                              std::span<t_Value> values) noexcept;

private:
    struct t_Compiled;
    std::unique_ptr<const t_Compiled> m_compiled;
};
