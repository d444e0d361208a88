// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelListFile.h"
#include "LabelList/LabelReports.h"

#include <vector>

/**
 * Takes a list together while a file is read: one message after the other, each checked once it is
 * complete and left out when it is a bad one, within the bounds of what a list can hold.
 */
class CLabelListBuilder
{
public:
    CLabelListBuilder(KW_LabelList& list, CLabelReports& reports,
                      const KW_LabelReadOptions& options);

    /** Ends the message before and begins one. False, and reported, when a list can hold no more:
        what goes on reading would only take time and memory. */
    bool BeginMessage(t_TextPlace place);

    /** The message that was begun last. */
    KW_LabelEntry& Message() { return m_entry; }
    bool HasMessage() const { return m_isOpen; }

    /** Ends it before the next one begins. */
    void EndMessage();

    /** Adds a signal to it; false as of BeginMessage. */
    bool AddSignal(const CLabelListSignal& signal, const KW_LabelSignalDetails& details,
                   t_TextPlace place);

    /** Counts what LabelBounds.h has bounds for; false as of BeginMessage. */
    ///@{
    bool AddItem(t_TextPlace place);
    bool AddObject(t_TextPlace place);
    ///@}

    /** The open message is a bad one, as has been reported; where none is open, the file itself
        is. */
    void Spoil();

    /** Refuses the file. @return false */
    bool Refuse(t_TextPlace place, const QString& text);

    /** Ends the last message. False when the file is refused for what has been reported. */
    bool Finish();

private:
    KW_LabelList& m_list;
    CLabelReports& m_reports;
    KW_LabelReadOptions m_options;
    KW_LabelEntry m_entry;
    bool m_isOpen = false; ///< whether a message was begun
    bool m_isSpoilt = false;
    bool m_isRefused = false;
    std::vector<t_TextPlace> m_signalPlaces; ///< of the open message
    t_TextPlace m_place;                     ///< of the open message
    std::vector<t_TextPlace> m_places;       ///< of the messages in the list
    std::size_t m_begun = 0;                 ///< messages, bad ones too
    std::size_t m_signals = 0;               ///< in all messages, bad ones too
    std::size_t m_items = 0;
    std::size_t m_objects = 0;
};
