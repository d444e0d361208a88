// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/TextForm.h"

#include <gtest/gtest.h>

namespace
{
struct t_Form
{
    eTEXTFORM form;
    const char* text;
    bool fits;
};

const t_Form kForms[] = {
    {eTEXTFORM::Passphrase, "", true},
    {eTEXTFORM::Passphrase, "1234567", false},
    {eTEXTFORM::Passphrase, "12345678", true},
    {eTEXTFORM::Passphrase, "a b ~!\"#", true},
    {eTEXTFORM::Passphrase,
     "12345\xC3\xA4"
     "78",
     false},
    {eTEXTFORM::Passphrase, "12345678\n", false},
    {eTEXTFORM::Passphrase, "zzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzz",
     true},
    {eTEXTFORM::Passphrase, "zzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzz",
     false},
    {eTEXTFORM::Passphrase, "0123456789abcdefABCDEF0123456789abcdefABCDEF0123456789abcdefABCD",
     true},
    {eTEXTFORM::Address, "", true},
    {eTEXTFORM::Address, "192.168.0.7", true},
    {eTEXTFORM::Address, "1.0.0.0", true},
    {eTEXTFORM::Address, "223.255.255.255", true},
    {eTEXTFORM::Address, "224.0.0.1", false},
    {eTEXTFORM::Address, "127.0.0.1", false},
    {eTEXTFORM::Address, "0.0.0.0", false},
    {eTEXTFORM::Address, "10.0.0.256", false},
    {eTEXTFORM::Address, "10.0.0", false},
    {eTEXTFORM::Address, "10.0.0.", false},
    {eTEXTFORM::Address, "10.0.0.1.2", false},
    {eTEXTFORM::Address, "10.0.0.01", false},
    {eTEXTFORM::Address, "10..0.1", false},
    {eTEXTFORM::Address, "10.0.0.1 ", false},
    {eTEXTFORM::Address, "10.0.0.-1", false},
    {eTEXTFORM::Address, "fe80::1", false},
    {eTEXTFORM::Mask, "255.255.255.0", true},
    {eTEXTFORM::Mask, "255.255.255.252", true},
    {eTEXTFORM::Mask, "255.255.255.254", false},
    {eTEXTFORM::Mask, "255.255.255.255", false},
    {eTEXTFORM::Mask, "255.0.255.0", false},
    {eTEXTFORM::Mask, "128.0.0.0", true},
    {eTEXTFORM::Mask, "0.0.0.0", false},
    {eTEXTFORM::Mask, "24", false},
    {eTEXTFORM::Condition, "", true},
    {eTEXTFORM::Condition, "a = b = 0-3,7", true},
    {eTEXTFORM::Condition, "Mode", false},
    {eTEXTFORM::Condition, "= 3", false},
    {eTEXTFORM::Condition, "Mode = 3-2", false},
    {eTEXTFORM::Condition, "Mode = -1", false},
    {eTEXTFORM::Condition, "Mode = 1,", false},
    {eTEXTFORM::Condition, "Mode = 18446744073709551616", false},
};
} // namespace

TEST(TextForm, IsReadOtherwise)
{
    for (const auto& [form, text, fits] : kForms)
    {
        EXPECT_EQ(NTextForm::Fits(form, QString::fromUtf8(text)), fits) << text;
    }
    EXPECT_TRUE(NTextForm::Fits(eTEXTFORM::Any, u"\n"));
    EXPECT_EQ(NTextForm::ReadAddress(u"1.2.3.4"), 0x01020304U);
}
