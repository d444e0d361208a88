// SPDX-License-Identifier: MIT
// Who may speak, and what a refusal is called.

#include "RemoteGuard.h"
#include "RemoteErrors.h"

#include <cstring>
#include <gtest/gtest.h>

namespace
{
TEST(RemoteErrors, RefusalIsNoErrorOrSaysNothing)
{
    for (KW_ACCEPTANCE code = eKW_ACC_OK; code < eKW_ACC_COUNT; ++code)
    {
        const t_RemoteError error = NRemote::ErrorOf(code);
        EXPECT_EQ(error.number < 0, !KW_IsAccepted(code)) << code;
        EXPECT_EQ(error.detail.isEmpty(), code == eKW_ACC_OK) << code;
    }
}

struct t_First
{
    const char* bytes;
    CRemoteGuard::eVERDICT verdict;
};

TEST(RemoteGuard, RequestOfAPageIsTakenForCommands)
{
    using eVERDICT = CRemoteGuard::eVERDICT;
    const std::string longest(65, 'A');
    const t_First rows[] = {
        {"GET / HTTP/1.1", eVERDICT::Http},   {"CONNECT a:1 HTTP/1.1", eVERDICT::Http},
        {"PRES /x HTTP/1.1", eVERDICT::Http}, {"pres-a /", eVERDICT::Http},
        {longest.c_str(), eVERDICT::Http},    {"PRES ", eVERDICT::Undecided},
        {"PRES", eVERDICT::Undecided},        {"", eVERDICT::Undecided},
        {"*RST\n", eVERDICT::Remote},         {"PRES\nGET / HTTP/1.1", eVERDICT::Remote},
        {"HOR:SCAL 1", eVERDICT::Remote},     {" PRES", eVERDICT::Remote},
        {"*SAV 1", eVERDICT::Remote},         {"\n", eVERDICT::Remote},
    };
    for (const t_First& row : rows)
    {
        const std::size_t count = std::strlen(row.bytes);
        EXPECT_EQ(CRemoteGuard().Look(row.bytes, count), row.verdict) << row.bytes;
        CRemoteGuard pieces;
        auto verdict = eVERDICT::Undecided;
        for (std::size_t i = 0; i < count && verdict == eVERDICT::Undecided; ++i)
        {
            verdict = pieces.Look(row.bytes + i, 1);
        }
        EXPECT_EQ(verdict, row.verdict) << row.bytes;
        EXPECT_TRUE(QByteArray(row.bytes).startsWith(pieces.Take()));
    }
}
} // namespace
