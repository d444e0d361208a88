// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"

#include <utility>

/** Reads several values that belong together: no write comes between. Keep it short. */
class CKWReadBracket
{
public:
    /** Opens the bracket; the destructor closes it. */
    explicit CKWReadBracket(std::shared_ptr<IKWFunctionRootBase> root) : m_root(std::move(root))
    {
        m_root->StartReadAccess();
    }
    ~CKWReadBracket() { m_root->EndReadAccess(); }
    CKWReadBracket(const CKWReadBracket&) = delete;
    CKWReadBracket& operator=(const CKWReadBracket&) = delete;

private:
    std::shared_ptr<IKWFunctionRootBase> m_root;
};

/** Writes on behalf of the local user or of remote control. */
class CKWWriteBracket
{
public:
    /** Opens the bracket; the destructor closes it. */
    CKWWriteBracket(std::shared_ptr<IKWFunctionRootBase> root, KW_CLIENT_ORIGIN origin)
        : m_root(std::move(root))
    {
        m_root->StartWriteAccess(origin);
    }
    ~CKWWriteBracket() { m_root->EndWriteAccess(); }
    CKWWriteBracket(const CKWWriteBracket&) = delete;
    CKWWriteBracket& operator=(const CKWWriteBracket&) = delete;

private:
    std::shared_ptr<IKWFunctionRootBase> m_root;
};

/** Writes and actions of this thread count as coming from `origin` between start and end, which
   nest with each other and with write brackets. Unlike these they keep nobody out, so that what
   takes its time, such as an operation or a recall, can be asked for: use the guard. */
///@{
KW_EXPORT void KW_StartOrigin(KW_CLIENT_ORIGIN origin);
KW_EXPORT void KW_EndOrigin();
///@}

/** Opens and closes an origin. */
class CKWClientOrigin
{
public:
    /** The destructor ends it. */
    explicit CKWClientOrigin(KW_CLIENT_ORIGIN origin) { KW_StartOrigin(origin); }
    ~CKWClientOrigin() { KW_EndOrigin(); }
    CKWClientOrigin(const CKWClientOrigin&) = delete;
    CKWClientOrigin& operator=(const CKWClientOrigin&) = delete;
};

/** Several writes as one step for undo; rolled back unless Commit was called. */
class CKWTransaction
{
public:
    /** Starts the transaction; `text` names the step for the user. */
    CKWTransaction(std::shared_ptr<IKWFunctionRootBase> root, const QString& text)
        : m_root(std::move(root))
    {
        m_root->StartTransaction(text);
    }
    ~CKWTransaction()
    {
        if (m_root)
        {
            m_root->EndTransaction(false);
        }
    }
    /** Ends the transaction and keeps what it wrote. To be called once. */
    KW_ACCEPTANCE Commit() { return std::exchange(m_root, nullptr)->EndTransaction(true); }
    CKWTransaction(const CKWTransaction&) = delete;
    CKWTransaction& operator=(const CKWTransaction&) = delete;

private:
    std::shared_ptr<IKWFunctionRootBase> m_root;
};
