// SPDX-License-Identifier: MIT
#include "DbSettings.h"

#include <QCryptographicHash>

namespace
{
const QByteArray kXmlDigest = QByteArrayLiteral("<Digest Value=\"");
const QByteArray kXmlEnd = QByteArrayLiteral("</Settings>");
const QByteArray kCsvDigest = QByteArrayLiteral("Digest,1,Value,");
const QByteArray kCsvEnd = QByteArrayLiteral("End");

/** Place of the digest's element; −1 for none. */
qsizetype DigestAt(const QByteArray& text, bool csv)
{
    if (!csv)
    {
        return text.lastIndexOf(kXmlDigest);
    }
    const qsizetype line = text.lastIndexOf('\n' + kCsvDigest);
    return line < 0 ? -1 : line + 1;
}

/** Of everything before the element. It shows damage and changes, not who made them: whoever can
    write the file can write its digest. Hence the quickest one that Qt has had for long. */
QByteArray DigestOf(const QByteArray& text, qsizetype length)
{
    const auto covered = QByteArray::fromRawData(text.constData(), static_cast<int>(length));
    return QCryptographicHash::hash(covered, QCryptographicHash::Sha1).toHex();
}

/** Without the digest's element and the white space that belongs to it. */
QByteArray WithoutDigest(const QByteArray& text, bool csv)
{
    qsizetype begin = DigestAt(text, csv);
    if (begin < 0)
    {
        return text;
    }
    const qsizetype lineEnd = text.indexOf('\n', static_cast<int>(begin));
    while (!csv && begin > 0 && text[static_cast<int>(begin) - 1] == ' ')
    {
        --begin;
    }
    return text.left(static_cast<int>(begin)) +
           (lineEnd < 0 ? QByteArray() : text.mid(static_cast<int>(lineEnd) + 1));
}
} // namespace

void KW_AddDigest(QByteArray& text, bool csv)
{
    auto end = static_cast<int>(text.lastIndexOf(csv ? kCsvEnd : kXmlEnd));
    if (end < 1)
    {
        return;
    }
    // A digest has a line of its own, whatever stands before the end.
    if (csv)
    {
        text[end - 1] = '\n';
    }
    else
    {
        text.insert(end++, ' ');
    }
    const QByteArray digest = DigestOf(text, end);
    text.insert(end,
                (csv ? kCsvDigest + digest + ',' + kCsvEnd : kXmlDigest + digest + "\"/>") + '\n');
}

QByteArray KW_WithDigest(const QByteArray& text, bool csv)
{
    QByteArray sealed = WithoutDigest(text, csv);
    KW_AddDigest(sealed, csv);
    return sealed;
}

bool CDbSettingsDocument::CheckDigest(const QByteArray& text, bool csv)
{
    CDbSettingsElement last = Top().FirstChild();
    while (!last.IsNull() && last.Kind() != KW_SETTINGS_DIGEST)
    {
        last = last.Next();
    }
    if (last.IsNull())
    {
        return true; // written by hand
    }
    if (!last.Next().IsNull())
    {
        return Fail(QStringLiteral("\"%1\" follows the digest").arg(last.Next().Kind().toString()));
    }
    const qsizetype at = DigestAt(text, csv);
    if (at >= 0 && last.Attribute(KW_SETTINGS_VALUE) == QLatin1String(DigestOf(text, at)))
    {
        return true;
    }
    m_digestWrong = true;
    return Fail(QStringLiteral("it is not what was saved: its digest does not fit"));
}
