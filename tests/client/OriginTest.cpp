// SPDX-License-Identifier: MIT
// Who asks for a write, without keeping anybody out.

#include "IKWFunctionSetup.h"
#include "IKWFunctionZEL.h"
#include "KWBrackets.h"
#include "KWEnumerationsOnOff.h"

#include <gtest/gtest.h>
#include <thread>

TEST(Origin, RemoteControlWritesNothingOrLocksOthersOut)
{
    const auto root = GetZELRoot();
    const auto beep = root->GetPgSetup()->GetPrBeepOnKey();
    root->SetControlMode(eCONTROL_LOCAL_LOCKOUT);
    EXPECT_EQ(beep->Set(eKW_ONOFF_OFF), eKW_ACC_NO_WRITE_ACCESS);
    {
        const CKWClientOrigin remote(eCLIENT_REMOTE);
        EXPECT_EQ(beep->Set(eKW_ONOFF_OFF), eKW_ACC_OK);
        {
            const CKWWriteBracket local(root, eCLIENT_LOCAL);
            EXPECT_EQ(beep->Set(eKW_ONOFF_ON), eKW_ACC_NO_WRITE_ACCESS);
        }
        EXPECT_EQ(beep->Set(eKW_ONOFF_ON), eKW_ACC_OK);
        std::thread other(
            [&]
            {
                EXPECT_EQ(beep->Set(eKW_ONOFF_OFF), eKW_ACC_NO_WRITE_ACCESS)
                    << "another thread's write waits, or is taken for remote control's";
            });
        other.join();
    }
    EXPECT_EQ(beep->Set(eKW_ONOFF_OFF), eKW_ACC_NO_WRITE_ACCESS);
    root->SetControlMode(eCONTROL_LOCAL);
}
