// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelListDecoder.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/** A frame whose signals were decoded. */
struct t_DecodedFrame
{
    std::string_view time; ///< seconds, in decimal; empty where the log has none
    std::string_view bus;
    const CLabelListDecoder::t_Message* message;
    std::span<const CLabelListDecoder::t_Value> values;
};

/** Texts of a message that are the same for all its frames, as they stand in the output. */
struct t_FrameTexts
{
    /** Behind the place of a value, and in front of it. */
    struct t_SignalTexts
    {
        std::string before; ///< raw, value and text follow …
        std::string after;  ///< … with this between value and text
        bool isSigned;
        UINT32 unusedBits; ///< of the 64 of a raw value
    };

    std::string head; ///< behind time and bus
    std::vector<t_SignalTexts> signalTexts;
};

/** Writes decoded frames into a text, in one of several forms. Made for many: no more is done for
    each value than its digits take. Texts of the list are UTF-8. */
class CFrameText
{
public:
    virtual ~CFrameText() = default;

    /** The line above all frames; may be empty. */
    virtual std::string GetHead() const { return {}; }
    /** Prepares a message; `identifierBits` 0 where the bus has none. */
    virtual t_FrameTexts Prepare(const CLabelListDecoder::t_Message& message, UINT32 identifier,
                                 UINT32 identifierBits) const = 0;
    /** Appends a frame, lines with their ends. `texts` were prepared for its message. */
    virtual void Add(const t_DecodedFrame& frame, const t_FrameTexts& texts,
                     std::string& text) const = 0;
};

/** A line for each frame, in columns; `messageWidth` are the characters of the longest name. */
std::unique_ptr<CFrameText> MakeFrameTable(std::size_t messageWidth);
/** A line for each signal: time,bus,id,message,signal,raw,value,unit,text. */
std::unique_ptr<CFrameText> MakeFrameCsv();
/** A JSON object in a line for each frame. */
std::unique_ptr<CFrameText> MakeFrameJson();
