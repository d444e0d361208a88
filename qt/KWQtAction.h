// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QObject>
#include <atomic>
#include <memory>

class CKWQtTree;

/**
 * An action of the tree for a page. CKWQtTree makes it and owns it. Functions run at once;
 * operations, which wait for whoever carries them out, run beside the page: `running` until the
 * poll that finds them ended. Path and attachment are as those of CKWQtProperty.
 */
class KW_EXPORT CKWQtAction : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool running READ IsRunning NOTIFY runningChanged)
    Q_PROPERTY(bool attached READ IsAttached NOTIFY stateChanged)
    /** KW_AVAILABILITY: 0 available, 1 shown but not to be run, 2 neither. */
    Q_PROPERTY(int availability READ GetAvailability NOTIFY stateChanged)
    /** KW_ACCEPTANCE of the last run; 0 before the first. */
    Q_PROPERTY(int code READ GetCode NOTIFY finished)
    /** Why the last run was refused or failed; empty when it was not. */
    Q_PROPERTY(QString refusal READ GetRefusal NOTIFY finished)
    Q_PROPERTY(QString path READ GetPath NOTIFY pathChanged)
    Q_PROPERTY(QString name READ GetName CONSTANT)
    Q_PROPERTY(QString meaning READ GetMeaning CONSTANT)

public:
    ~CKWQtAction() override;

    bool IsRunning() const { return m_run != nullptr; }
    bool IsAttached() const { return m_attached; }
    int GetAvailability() const;
    int GetCode() const { return static_cast<int>(m_code); }
    QString GetRefusal() const;
    QString GetPath() const { return m_path; }
    QString GetName() const;
    QString GetMeaning() const;
    std::shared_ptr<IDbAction> GetNode() const { return m_node; }

    /** Runs it; while it is running, does nothing. */
    Q_INVOKABLE void trigger();

Q_SIGNALS:
    void runningChanged();
    void stateChanged();
    void pathChanged();
    /** A run has ended: `code` says how. */
    void finished();

private:
    friend class CKWQtTree;
    friend class CGroupWatch;

    /** Shared with the thread that runs an operation. */
    struct t_Run
    {
        std::atomic<bool> ended = false;
        KW_ACCEPTANCE code = 0;
    };

    CKWQtAction(std::shared_ptr<IDbAction> node, CKWQtTree& tree);
    bool Look(bool moved, bool attached);
    void Tell();
    bool HasEnded() const { return m_run && m_run->ended.load(std::memory_order_acquire); }
    void TakeEnd();

    std::shared_ptr<IDbAction> m_node;
    CKWQtTree& m_tree;
    std::shared_ptr<t_Run> m_run;
    QString m_path;
    KW_AVAILABILITY m_availability;
    KW_ACCEPTANCE m_code = 0;
    bool m_attached = true;
    bool m_isOtherPath = false;
};
