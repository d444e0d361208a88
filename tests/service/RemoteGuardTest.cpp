// SPDX-License-Identifier: MIT
// Who may speak, and what a refusal is called.

#include "RemoteGuard.h"
#include "RemoteErrors.h"

#include <cstring>
#include <gtest/gtest.h>

namespace
{
struct t_Code
{
    KW_ACCEPTANCE code;
    eREMOTE_ERROR number;
};

TEST(RemoteErrors, RefusalHasAnotherNumber)
{
    constexpr t_Code kCodes[] = {
        {eKW_ACC_OK, eREMOTE_NO_ERROR},
        {eKW_ACC_WARNING, eREMOTE_NO_ERROR},
        {eKW_ACC_BELOW_MINIMUM, eREMOTE_OUT_OF_RANGE},
        {eKW_ACC_ABOVE_MAXIMUM, eREMOTE_OUT_OF_RANGE},
        {eKW_ACC_NOT_IN_VALUE_LIST, eREMOTE_ILLEGAL_VALUE},
        {eKW_ACC_UNKNOWN_VALUE, eREMOTE_ILLEGAL_VALUE},
        {eKW_ACC_AMBIGUOUS_NAME, eREMOTE_ILLEGAL_VALUE},
        {eKW_ACC_BAD_TEXT, eREMOTE_ILLEGAL_VALUE},
        {eKW_ACC_NOT_ENABLED, eREMOTE_SETTINGS_CONFLICT},
        {eKW_ACC_NOT_AVAILABLE, eREMOTE_SETTINGS_CONFLICT},
        {eKW_ACC_IN_TRANSACTION, eREMOTE_SETTINGS_CONFLICT},
        {eKW_ACC_TOO_LONG, eREMOTE_TOO_MUCH_DATA},
        {eKW_ACC_READ_ONLY, eREMOTE_UNDEFINED_HEADER},
        {eKW_ACC_NO_WRITE_ACCESS, eREMOTE_NO_WRITE_ACCESS},
        {eKW_ACC_BAD_INDEX, eREMOTE_HEADER_SUFFIX},
        {eKW_ACC_NOT_FOUND, eREMOTE_ITEM_NOT_FOUND},
        {eKW_ACC_NAME_IN_USE, eREMOTE_NAME_IN_USE},
        {eKW_ACC_WRONG_KIND, eREMOTE_WRONG_KIND},
        {eKW_ACC_CONTAINER_FULL, eREMOTE_OUT_OF_MEMORY},
        {eKW_ACC_FILE_NOT_READABLE, eREMOTE_FILE_NOT_FOUND},
        {eKW_ACC_FILE_NOT_WRITABLE, eREMOTE_MASS_STORAGE},
        {eKW_ACC_FILE_NOT_UNDERSTOOD, eREMOTE_CORRUPT_FILE},
        {eKW_ACC_TIMEOUT, eREMOTE_TIMEOUT},
        {eKW_ACC_OPERATION_FAILED, eREMOTE_EXECUTION},
        {eKW_ACC_DETACHED, eREMOTE_SYSTEM},
    };
    for (const t_Code& row : kCodes)
    {
        const t_RemoteError error = NRemote::ErrorOf(row.code);
        EXPECT_EQ(error.number, row.number) << row.code;
        EXPECT_EQ(error.detail,
                  row.code == eKW_ACC_OK ? QString() : KW_GetAcceptanceText(row.code));
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
