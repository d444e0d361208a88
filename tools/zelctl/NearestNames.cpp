// SPDX-License-Identifier: MIT
#include "NearestNames.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace
{
constexpr int kMostNames = 3;
constexpr int kFar = std::numeric_limits<int>::max();

/** Insertions, deletions, replacements and swaps of neighbours that turn one text into the other;
    anything above `limit` counts as far. */
int GetDistance(const QString& a, const QString& b, int limit)
{
    const int width = static_cast<int>(b.size());
    if (std::abs(static_cast<int>(a.size()) - width) > limit)
    {
        return kFar;
    }
    std::vector<int> beforeLast(static_cast<std::size_t>(width) + 1);
    std::vector<int> last(beforeLast.size());
    std::vector<int> row(beforeLast.size());
    for (int j = 0; j <= width; ++j)
    {
        last[j] = j;
    }
    for (int i = 1; i <= a.size(); ++i)
    {
        row[0] = i;
        for (int j = 1; j <= width; ++j)
        {
            const int replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            row[j] = swapped ? std::min(row[j], beforeLast[j - 2] + 1) : row[j];
        }
        if (*std::min_element(row.begin(), row.end()) > limit)
        {
            return kFar;
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[width] > limit ? kFar : last[width];
}

QString LastStep(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

/** Lower is nearer; both texts in lower case. */
int GetScore(const QString& wanted, const QString& name)
{
    constexpr int kEnd = 5;
    constexpr int kMistake = 10;
    constexpr int kOtherFolder = 15;
    constexpr int kPart = 60;
    if (wanted == name)
    {
        return 0;
    }
    if (name.endsWith(QLatin1Char('/') + wanted))
    {
        return kEnd;
    }
    const int limit = std::max(1, static_cast<int>(wanted.size()) / 4);
    if (const int distance = GetDistance(wanted, name, limit); distance != kFar)
    {
        return kMistake * distance;
    }
    const QString wantedStep = LastStep(wanted);
    const int stepLimit = std::max(1, static_cast<int>(wantedStep.size()) / 4);
    const int stepDistance = GetDistance(wantedStep, LastStep(name), stepLimit);
    if (wantedStep.size() > 1 && stepDistance != kFar)
    {
        return kOtherFolder + kMistake * stepDistance;
    }
    const bool isPart = wantedStep.size() > 2 && LastStep(name).contains(wantedStep);
    return isPart ? kPart + static_cast<int>(name.size() - wanted.size()) : kFar;
}
} // namespace

QStringList GetNearestNames(const QString& wanted, const QStringList& names)
{
    // Comparing takes the product of both lengths.
    constexpr int kLongestWanted = 256;
    if (wanted.size() > kLongestWanted)
    {
        return {};
    }
    std::vector<std::pair<int, QString>> scored;
    for (const QString& name : names)
    {
        const int score = GetScore(wanted.toLower(), name.toLower());
        if (score != kFar)
        {
            scored.emplace_back(score, name);
        }
    }
    std::stable_sort(scored.begin(), scored.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QStringList nearest;
    for (const auto& [score, name] : scored)
    {
        const bool isNear = score <= 2 * scored.front().first + 5;
        if (isNear && nearest.size() < kMostNames && !nearest.contains(name))
        {
            nearest.append(name);
        }
    }
    return nearest;
}

QString DidYouMean(const QStringList& names)
{
    if (names.isEmpty())
    {
        return {};
    }
    const QString head = QStringList(names.mid(0, names.size() - 1)).join(QLatin1String(", "));
    return QStringLiteral("; did you mean %1%2?")
        .arg(head.isEmpty() ? QString() : head + QStringLiteral(" or "), names.last());
}
