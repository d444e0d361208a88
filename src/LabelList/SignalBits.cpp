// SPDX-License-Identifier: MIT
#include "LabelList/SignalBits.h"

#include "KWEnumerationsSerialBus.h"

UINT32 NSignalBits::PlaceOf(const t_Signal& signal, UINT32 index)
{
    return signal.endianness == eKW_ENDIANNESS_BIG_ENDIAN
               ? Mirrored(signal.startBit, signal.unit) + index
               : Mirrored(signal.startBit + (signal.bitLength - 1 - index), signal.unit);
}

UINT64 NSignalBits::BitsUpTo(const t_Signal& signal)
{
    const bool isBig = signal.endianness == eKW_ENDIANNESS_BIG_ENDIAN;
    const UINT64 first = isBig ? Mirrored(signal.startBit, signal.unit) : signal.startBit;
    return first + signal.bitLength;
}
