// SPDX-License-Identifier: MIT
#include "RemoteName.h"

#include "NumberText.h"

#include <algorithm>

namespace
{
constexpr int kKept = 4;

bool IsLower(QChar c)
{
    return c >= u'a' && c <= u'z';
}

bool IsUpper(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

bool IsLetter(QChar c)
{
    return IsLower(c) || IsUpper(c);
}

bool IsVowel(QChar c)
{
    return QStringView(u"aeiou").contains(c.toLower());
}

/** Where a capital, a digit or a "_" begins another word: SourceY1 is Source, Y, 1. */
bool BeginsWord(const QString& name, int i)
{
    const QChar before = name[i - 1];
    const QChar at = name[i];
    if (!IsLetter(before) || !IsLetter(at))
    {
        return KW_IsDigit(before) != KW_IsDigit(at) || IsLetter(before) != IsLetter(at);
    }
    return IsUpper(at) && (IsLower(before) || (i + 1 < name.size() && IsLower(name[i + 1])));
}

int KeptLetters(const QString& name, int begin, int end)
{
    const int length = end - begin;
    return length <= kKept ? length : IsVowel(name[begin + kKept - 1]) ? kKept - 1 : kKept;
}
} // namespace

QString RemoteMnemonic(const QString& name)
{
    QString word = name.toLower();
    const int length = static_cast<int>(name.size());
    int begin = 0;
    while (begin < length)
    {
        int end = begin + 1;
        while (end < length && !BeginsWord(name, end))
        {
            ++end;
        }
        const int kept = begin + KeptLetters(name, begin, end);
        std::for_each(word.begin() + begin, word.begin() + kept, [](QChar& c) { c = c.toUpper(); });
        begin = end;
    }
    return word;
}
