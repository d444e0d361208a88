// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <string_view>
#include <vector>

/** Lines of a file, or of the standard input while they arrive. */
class CLogInput
{
public:
    /** Opens a file; "-" is the standard input. Fails when it can not be read. */
    explicit CLogInput(const QString& fileName);
    ~CLogInput();
    CLogInput(const CLogInput&) = delete;
    CLogInput& operator=(const CLogInput&) = delete;

    /** Gives each line without its end to `onLine`, until that answers false. Before it waits for
        more it calls `onPause`. A line above 64 KiB is given in part only, its end is skipped.
        Fails when reading does. */
    void Read(const std::function<bool(std::string_view)>& onLine,
              const std::function<void()>& onPause);

private:
    bool TakeLines(const std::function<bool(std::string_view)>& onLine, bool atEnd);
    bool Fill(const std::function<void()>& onPause);

    QString m_fileName;
    int m_descriptor;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0; ///< of what is not taken yet
    std::size_t m_end = 0;
    bool m_skips = false; ///< in the rest of a line that is too long
};
