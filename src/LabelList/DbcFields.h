// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"

#include <array>
#include <optional>
#include <string_view>

/**
 * Attributes of CAN databases that a label list has fields for. Whoever reads takes them out of the
 * attributes, whoever writes puts them back; what a field can not hold stays an attribute.
 */
class CDbcFields
{
public:
    enum e_Field : INT32
    {
        CycleTime,
        FrameFormat,
        BitRateSwitch,
        MessageName,
        SignalName,
        NodeName,
        ListName,
        Count
    };
    /** Which of them a list makes use of. */
    using t_Used = std::array<bool, Count>;

    /** Those of messages and of the list, without the long names. */
    static t_Used UsedBy(const KW_LabelList& list);

    /** Adds the usual definitions of those that are used and not defined, before those of
        relations. */
    static void Define(const t_Used& used, std::vector<KW_AttributeDefinition>& definitions);

    explicit CDbcFields(const std::vector<KW_AttributeDefinition>& definitions);

    /** What attributes and their defaults say of a message's cycle time and format; without a
        format, one of more than 8 bytes is of CAN FD. */
    void Take(KW_LabelMessageDetails& details, UINT32 length) const;

    /** All attributes of a message but its long name. */
    KW_LabelAttributes Attributes(const CLabelListMessage& message,
                                  const KW_LabelMessageDetails& details) const;

    /** Takes a text out of the attributes; empty when there is none. */
    static std::string TakeText(e_Field field, KW_LabelAttributes& attributes);
    /** Puts it in. */
    static void PutText(e_Field field, const std::string& text, KW_LabelAttributes& attributes);

private:
    struct t_Field
    {
        std::vector<std::string> texts; ///< of an enumeration
        std::optional<KW_LabelAttribute> defaultValue;
    };

    void TakeCycleTime(KW_LabelMessageDetails& details) const;
    void TakeFormat(KW_LabelMessageDetails& details, UINT32 length) const;
    void TakeSwitch(KW_LabelMessageDetails& details) const;
    void PutCycleTime(const KW_LabelMessageDetails& details, KW_LabelAttributes& attributes) const;
    void PutFormat(const CLabelListMessage& message, bool isFd,
                   KW_LabelAttributes& attributes) const;
    void PutSwitch(bool isOn, KW_LabelAttributes& attributes) const;

    std::optional<double> DefaultCycle() const;
    bool IsFdByDefault() const;
    std::optional<bool> SwitchOf(const KW_LabelAttribute& attribute) const;
    bool IsSwitchedByDefault() const;
    std::string FormatOf(const KW_LabelAttribute& attribute) const;
    KW_LabelAttribute FormatValue(std::string_view format) const;

    std::array<t_Field, Count> m_fields;
};
