// SPDX-License-Identifier: MIT
#pragma once

#include "ServiceLimits.h"
#include "TreeDiffer.h"

#include <deque>
#include <memory>

/** What a subscriber wants, and how far it has come. */
struct t_Subscription
{
    QStringList paths; ///< nodes with all that is below them; empty while it wants nothing
    UINT64 number = 0; ///< the last change that it has seen
};

/**
 * The changes of a tree, numbered, as far back as the bounds let it. One for all subscribers: each
 * has only a number, so that one that reads slowly costs nothing, and takes what has come meanwhile
 * at once: of every node only the last, and who may write where that has changed. Which subscribers
 * there are, and when to look, is decided elsewhere. To be used by one thread at a time.
 */
class CJsonChanges
{
public:
    CJsonChanges(std::shared_ptr<IKWFunctionRootBase> root, std::size_t backlog);
    ~CJsonChanges();

    /** Looks at the tree; whether anything has changed. The first look finds nothing: numbers begin
        there. */
    bool Look();
    /** Forgets the changes until the next look: nobody wants them. */
    void Rest();

    /** The stream of numbers: another one after a rest. */
    const QString& Stream() const { return m_stream; }
    /** The number of the last change. */
    UINT64 Number() const { return m_number; }

    /**
     * Carries out what a subscriber sends, and answers it: how it stands then, or what is wrong
     * with the message, which changes nothing. It begins where another connection stopped, as far
     * as that is known, or now.
     */
    QByteArray Subscribe(t_Subscription& subscription, const QByteArray& message,
                         int mostPaths) const;

    /** The message that a subscriber has not seen, which counts as seen then; null when there is
        none. Where changes were forgotten it is told how it stands instead. Subscribers that want
       the same share it. */
    std::shared_ptr<const QByteArray> Take(t_Subscription& subscription);

private:
    struct t_Entry
    {
        UINT64 number;
        QString path;
        QByteArray json; ///< an element of a message
    };
    /** The last message that was made, and for whom. */
    struct t_Made
    {
        QStringList paths;
        UINT64 from = 0;
        UINT64 to = 0;
        std::shared_ptr<const QByteArray> message;
    };
    /** Whether all that came behind the number is kept. */
    bool IsKept(UINT64 number) const;
    QByteArray Standing(const t_Subscription& subscription, bool isTooLate) const;
    void Keep(const t_TreeChange& change);
    std::shared_ptr<const QByteArray> Make(const t_Subscription& subscription) const;

    const std::shared_ptr<IKWFunctionRootBase> m_root;
    const std::size_t m_most; ///< bytes of the backlog
    std::unique_ptr<CTreeDiffer> m_differ;
    QString m_stream;
    UINT64 m_number = 0;
    UINT64 m_forgotten = 0;                     ///< the last number that is not kept
    KW_CONTROL_MODE m_control = eCONTROL_LOCAL; ///< who may write, as of the last look
    UINT64 m_controlMoved = 0;                  ///< number of the change that it came with
    std::deque<t_Entry> m_entries;
    std::size_t m_bytes = 0;
    t_Made m_made;
};
