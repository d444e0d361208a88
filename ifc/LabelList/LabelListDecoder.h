// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>

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
        std::string name;                           ///< as the list has it
        std::string unit;                           ///< empty when it has none
        KW_SIGNAL_TRANSLATION_VALUE_TYPE valueType; ///< how the bits encode the raw value
        UINT32 bitLength;                           ///< 1 to 64
        double minimum;  ///< lowest physical value, as the list says; not enforced
        double maximum;  ///< highest physical value, likewise
        bool isReadable; ///< false with a factor of 0, and for a float or double of another length
                         ///< than 32 and 64 bits: it has a raw value only
    };

    /** A decoded signal. */
    struct t_Value
    {
        const t_Signal* signal = nullptr;   ///< which one
        UINT64 raw = 0;                     ///< its bits, the highest not sign-extended
        double value = 0.0;                 ///< physical value; NaN of one that is not readable
        const std::string* label = nullptr; ///< of the raw value, for integers of every kind; null
                                            ///< when it has none
    };

    struct t_Message; ///< a compiled message

    /**
     * Compiles a list. Of several messages with one identifier of one length the first counts.
     * Left out are messages whose identifier format is no number, and signals of no bits, of more
     * than 64, or beyond the longest payload of all buses (64 bytes). A multiplexed signal is
     * never there when its message has no signal of its multiplexor's name, when it selects itself
     * in the end, and behind more than 16 multiplexors that select each other.
     */
    explicit CLabelListDecoder(const KW_LabelList& list);
    ~CLabelListDecoder();
    /** What the other has found stays good; it may be assigned to or destroyed, nothing else. */
    ///@{
    CLabelListDecoder(CLabelListDecoder&&) noexcept;
    CLabelListDecoder& operator=(CLabelListDecoder&&) noexcept;
    ///@}

    /** The message of a frame, good as long as the decoder; null when the list has none.
        @param identifierLength in bits, as the bus has it: 11 or 29 for CAN */
    const t_Message* Find(UINT32 identifierLength, UINT32 identifier) const noexcept;

    /** Name of the message, as the list says. */
    static const std::string& NameOf(const t_Message& message) noexcept;
    /** Bytes of the payload, as the list says; those of frames may be more or fewer. */
    static UINT32 LengthOf(const t_Message& message) noexcept;
    /** All signals in the order of the list. Frames have no more: so much room `values` needs. */
    static std::span<const t_Signal> SignalsOf(const t_Message& message) noexcept;

    /**
     * Decodes the signals of a frame, in the order of the list. Left out are those whose
     * multiplexor has another value or is not there itself, those that the payload is too short
     * for, and those that `values` has no room for.
     *
     * @param payload first byte first; of SENT two nibbles in a byte, the upper one first
     * @return how many
     */
    static std::size_t Decode(const t_Message& message, std::span<const UINT8> payload,
                              std::span<t_Value> values) noexcept;

    /** Room for the text of a value. */
    using t_TextBuffer = std::array<char, 32>;

    /** A physical value in up to 15 digits, as "%.15g" has it, whatever the locale: what factor and
        offset add to a decimal number by rounding does not show. Zeros have no sign, NaN is "nan".
        @return the text, in the buffer */
    static std::string_view Format(double value, t_TextBuffer& buffer) noexcept;

private:
    struct t_Compiled;
    std::unique_ptr<const t_Compiled> m_compiled;
};
