// SPDX-License-Identifier: MIT
#include "Streams/RecordFile.h"
#include "fuzz/Targets.h"

#include <QCryptographicHash>
#include <QtEndian>

namespace
{
void Try(const QByteArray& bytes)
{
    CKWRecord record;
    KW_RecordReport report;
    if (!KW_IsAccepted(KW_ReadRecordBytes(bytes, record, report)))
    {
        KW_FuzzRequire(!record, "refused with a record", bytes);
        KW_FuzzRequire(!report.text.isEmpty(), "refused without a reason", bytes);
        KW_FuzzRequire(!report.hasPlace || report.place <= static_cast<UINT64>(bytes.size()),
                       "refused at a place that is none", bytes);
        return;
    }
    KW_FuzzRequire(report.text.isEmpty(), "taken with an error", bytes);
    QByteArray written;
    KW_FuzzRequire(KW_WriteRecordBytes(record, written, report) == eKW_ACC_OK, "not written",
                   bytes);
    CKWRecord again;
    KW_FuzzRequire(KW_ReadRecordBytes(written, again, report) == eKW_ACC_OK, "own file refused",
                   written);
    QByteArray twice;
    KW_WriteRecordBytes(again, twice, report);
    KW_FuzzRequire(twice == written, "own file read back differently", written);
}

/** With size and digest that fit, which no chance makes. */
QByteArray Sealed(const QByteArray& bytes)
{
    constexpr int kSizePlace = 24;
    constexpr int kDigestSize = 32;
    constexpr int kLeast = kSizePlace + 8 + kDigestSize;
    if (bytes.size() < kLeast)
    {
        return bytes;
    }
    QByteArray sealed = bytes.left(bytes.size() - kDigestSize);
    qToLittleEndian(static_cast<quint64>(bytes.size()), sealed.data() + kSizePlace);
    return sealed + QCryptographicHash::hash(sealed, QCryptographicHash::Sha256);
}
} // namespace

void KW_TryRecordFiles(const QByteArray& bytes)
{
    Try(bytes);
    Try(Sealed(bytes));
}
