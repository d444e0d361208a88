// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"

#include <QJsonObject>
#include <QString>
#include <exception>
#include <optional>

/** How a command ended; the process's exit status. */
enum eSTATUS : int
{
    eSTATUS_OK = 0,
    eSTATUS_REFUSED = 1, ///< A write was refused, two states differ, an expectation was not met.
    eSTATUS_USAGE = 2    ///< Unknown command, path or value; a file that can not be used.
};

/** Ends a command: what is wrong, in one line without a full stop. */
class CFailure : public std::exception
{
public:
    CFailure(eSTATUS status, const QString& text) : m_status(status), m_text(text) {}
    /** A refused write with the code that the library answered. */
    CFailure(KW_ACCEPTANCE code, const QString& text)
        : m_status(eSTATUS_REFUSED), m_code(code), m_text(text)
    {
    }

    /** The same where the status is another. */
    CFailure(eSTATUS status, KW_ACCEPTANCE code, const QString& text)
        : m_status(status), m_code(code), m_text(text)
    {
    }

    eSTATUS GetStatus() const { return m_status; }
    const std::optional<KW_ACCEPTANCE>& GetCode() const { return m_code; }
    const QString& GetText() const { return m_text; }
    /** What a program needs to know beside the text: limits, selectable values, items. */
    const QJsonObject& GetData() const { return m_data; }
    void AddData(const QJsonObject& data);
    /** Puts "file:line: " before the text. */
    void AddPlace(const QString& file, int line);
    const char* what() const noexcept override { return "zelctl: command failed"; }

private:
    eSTATUS m_status;
    std::optional<KW_ACCEPTANCE> m_code;
    QString m_text;
    QJsonObject m_data;
};
