// SPDX-License-Identifier: MIT
#pragma once

#include "Failure.h"
#include "KWHistory.h"
#include "Output.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <memory>

/** How answers are written. */
struct t_Style
{
    bool json = false;  ///< one JSON document per command
    bool exact = false; ///< numbers in full instead of rounded with a prefix
};

/** What a command answered when it was not refused. */
struct t_Answer
{
    eSTATUS status = eSTATUS_OK;
    KW_ACCEPTANCE code = eKW_ACC_OK;
    bool isDone = false; ///< whatever the status: scripts go on, and --save saves
};

class CCommandLines;
class CLivingTree;
class CTreeWatch;
class CWebSocket;

/** The tree and everything else that commands of one process share. */
class CSession
{
public:
    explicit CSession(COutput& output);
    /** Rolls back what no commit has closed. */
    ~CSession();
    CSession(const CSession&) = delete;
    CSession& operator=(const CSession&) = delete;

    /** From now on commands work on the living tree of another process, "HOST[:PORT]". The file
        holds the token that its service wants, if it does. Fails where none answers. */
    void Connect(const QString& place, const QString& tokenFile);
    bool IsConnected() const { return m_living != nullptr; }
    /** A WebSocket at which the service tells when nodes, or something below them, have changed. */
    CWebSocket Follow(const QStringList& paths) const;
    /** Others write in a living tree: what was read of it before may have changed. */
    void Refresh();

    /** While one lives, commands work on a tree of this process that has the settings of the living
        one: what is tried out is seen by nobody. Without a connection it does nothing. */
    class CTrial
    {
    public:
        explicit CTrial(CSession& session);
        ~CTrial();
        CTrial(const CTrial&) = delete;
        CTrial& operator=(const CTrial&) = delete;
        /** Carries the settings of a group of the copy over to the living tree, as one step that
            `text` names. */
        KW_ACCEPTANCE Keep(const QString& path, const QString& text) const;

    private:
        CSession& m_session;
        std::shared_ptr<IKWFunctionRootBase> m_root;
    };

    /** The instrument's root; built at the first call, so that commands without a tree are quick.
     */
    IKWFunctionRootBase& GetRoot();
    IDbGroup& GetTree();

    /** The node of a path; "", "/" and "." are the root. Fails with the nearest names. */
    std::shared_ptr<IDbObject> Find(const QString& path);
    /** As Find for a node of one kind; fails with what the node is instead. */
    std::shared_ptr<IDbProperty> FindProperty(const QString& path);
    std::shared_ptr<IDbGroup> FindGroup(const QString& path);
    std::shared_ptr<IDbContainer> FindContainer(const QString& path);
    std::shared_ptr<IDbAction> FindAction(const QString& path);

    /** The steps that can be undone and redone, and going back or forward by some, all or none. */
    ///@{
    KW_History GetHistory();
    KW_ACCEPTANCE Undo(int steps);
    KW_ACCEPTANCE Redo(int steps);
    ///@}

    /** Brackets several writes to one step for undo; they do not nest here. */
    void Begin(const QString& text);
    KW_ACCEPTANCE End(bool keep);
    bool IsInTransaction() const { return m_inTransaction; }

    /** The declared commands of the session's lines. */
    CCommandLines& GetLines() { return *m_lines; }
    /** The tree as the last trace left it; taken at the first call. */
    CTreeWatch& GetWatch();

    COutput& GetOutput() { return m_output; }
    const t_Style& GetStyle() const { return m_style; }
    void SetStyle(const t_Style& style);

private:
    template <typename TNode>
    std::shared_ptr<TNode> FindKind(const QString& path, const char* wanted);
    CFailure Missing(const QString& path);

    COutput& m_output;
    t_Style m_style;
    void Enter(std::shared_ptr<IKWFunctionRootBase> root);

    std::shared_ptr<CLivingTree> m_living; ///< null without a connection
    std::shared_ptr<IKWFunctionRootBase> m_root;
    std::shared_ptr<IDbGroup> m_tree;
    std::unique_ptr<CTreeWatch> m_watch;
    std::unique_ptr<CCommandLines> m_lines;
    bool m_inTransaction = false;
};

/** A refused request; `detail` says what would have been taken. */
CFailure Refuse(KW_ACCEPTANCE code, const QString& what, const QString& detail = {});

/** Fails for a refusing code; `what` is the request, `detail` what would have been taken. */
void Require(KW_ACCEPTANCE code, const QString& what, const QString& detail = {});

/** "Vertical/Channel has 4 items: [0] … [3]". */
QString DescribeItems(const IDbGroup& group, const IDbContainer& container);

/** The answer of one command: lines for a reader, or a document where the session's style asks for
    one; the other is not kept. */
class CReply
{
public:
    CReply(CSession& session, const QString& command);

    /** Whether the answer is a document: fields need not be made for lines, nor lines for it. */
    bool IsDocument() const { return m_session.GetStyle().json; }
    CReply& Line(const QString& text);
    CReply& Lines(const QStringList& texts);
    template <typename TValue>
    CReply& Field(const char* name, const TValue& value)
    {
        if (IsDocument())
        {
            m_document[QLatin1String(name)] = value;
        }
        return *this;
    }
    /** Writes what the session's style asks for. */
    t_Answer Send(KW_ACCEPTANCE code = eKW_ACC_OK, eSTATUS status = eSTATUS_OK);

private:
    CSession& m_session;
    QStringList m_lines;
    QJsonObject m_document;
};
