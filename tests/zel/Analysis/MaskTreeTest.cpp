// SPDX-License-Identifier: MIT
// Masks in the tree: made, loaded, saved, kept at their place, and brought back by undo.
#include "Analysis/PgMask.h"
#include "Analysis/PgMaskChannelSetup.h"
#include "Analysis/PgMaskSettings.h"
#include "FileText.h"
#include "LockManager.h"
#include "Masks/MaskSource.h"
#include "zel/RuleTree.h"

namespace
{
/** A trace at half a division of the default screen: 1 us, 8 divisions of 1 V. */
class CFlatTrace final : public IMaskSource
{
public:
    CKWRecord GetShown(KW_ZEL_CHANNEL channel, UINT32& trace) override
    {
        asked = channel;
        trace = 1;
        KW_TraceInfo infos[2];
        infos[1].unit = eKW_UNIT_LEVEL_V;
        infos[1].count = 1000;
        infos[1].interval = 1e-9;
        infos[1].start = -5e-7;
        infos[1].offset = 0.5;
        const std::vector<std::byte> zeros(2000);
        const std::span<const std::byte> samples[2] = {{}, zeros};
        return KW_MakeRecord({}, infos, samples);
    }
    KW_ZEL_CHANNEL asked = eKW_ZEL_CHANNEL_NONE;
};

class MaskTree : public testing::Test
{
protected:
    template <class TGroup>
    TGroup& At(const char* path)
    {
        return dynamic_cast<TGroup&>(*tree.root->GetDbObject()->Find(QString::fromLatin1(path)));
    }
    KW_Mask MaskOf(const char* path)
    {
        const CLockGuard lock;
        return *At<CPgMaskChannelSetup>(path).GetMask();
    }
    void Connect()
    {
        const CLockGuard lock;
        At<CPgMaskSettings>("Mask/MaskSettings").SetSource(source);
    }
    std::string State(const char* path) { return tree.State(path).toStdString(); }

    const CRuleTree tree;
    const std::shared_ptr<CFlatTrace> source = std::make_shared<CFlatTrace>();
};
} // namespace

TEST_F(MaskTree, CreateMakesAnotherMaskOrNoStep)
{
    EXPECT_EQ(tree.Do("Mask/MaskSettings/CreateMask"), eKW_ACC_NOTHING_TO_ACT_ON);
    Connect();
    tree.DoAll("Mask/SelectedChannel = C2; .MaskSettings/Source = C3; ..Enabled = ON; "
               "Mask/MaskSettings/WidthY = 0.5");
    ASSERT_EQ(tree.Do("Mask/MaskSettings/CreateMask"), eKW_ACC_OK);
    EXPECT_EQ(source->asked, eKW_ZEL_CHANNEL_C3);
    EXPECT_EQ(State("Mask/MaskChannelSetup[1]/MaskDefined"), "ON");
    EXPECT_EQ(State("Mask/MaskChannelSetup[1]/MaskPoints"), "4");
    EXPECT_EQ(State("Mask/MaskChannelSetup[0]/MaskDefined"), "OFF");
    const KW_Mask mask = MaskOf("Mask/MaskChannelSetup[1]");
    EXPECT_EQ(mask.upper, (KW_MaskLine{{0, 1}, {10, 1}}));
    EXPECT_EQ(mask.frame, (KW_MaskFrame{eKW_UNIT_LEVEL_V, -5e-7, 1e-7, 0, 1}));
    tree.DoAll("Mask/MaskSettings/ClearMask");
    EXPECT_EQ(State("Mask/MaskChannelSetup[1]/MaskDefined"), "OFF");
    EXPECT_EQ(tree.root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(MaskOf("Mask/MaskChannelSetup[1]"), mask);
    EXPECT_EQ(State("Mask/MaskChannelSetup[1]/MaskPoints"), "4");
    EXPECT_EQ(tree.root->GetUndoText(), QStringLiteral("Create mask"));
    EXPECT_EQ(tree.root->Undo(), eKW_ACC_OK);
    EXPECT_EQ(State("Mask/MaskChannelSetup[1]/MaskPoints"), "0");
}

TEST_F(MaskTree, FileLosesMaskOrRefusalChangesIt)
{
    Connect();
    EXPECT_EQ(tree.Do("Mask/MaskSettings/Save"), eKW_ACC_BAD_NAME);
    const QByteArray name = tree.folder.filePath(QStringLiteral("m.xml")).toUtf8();
    tree.DoAll("Mask/MaskSettings/File = " + name);
    EXPECT_EQ(tree.Do("Mask/MaskSettings/Save"), eKW_ACC_NOTHING_TO_ACT_ON);
    EXPECT_EQ(tree.Do("Mask/MaskSettings/Load"), eKW_ACC_FILE_NOT_READABLE);
    tree.DoAll("Mask/MaskSettings/CreateMask; .Save; ..SelectedChannel = C4");
    ASSERT_EQ(tree.Do("Mask/MaskSettings/Load"), eKW_ACC_OK);
    EXPECT_EQ(MaskOf("Mask/MaskChannelSetup[3]"), MaskOf("Mask/MaskChannelSetup[0]"));
    WriteFile(QString::fromUtf8(name), ContentsOf(QString::fromUtf8(name)).replace("0.7", "0.8"));
    EXPECT_EQ(tree.Do("Mask/MaskSettings/Load"), eKW_ACC_FILE_NOT_UNDERSTOOD);
    EXPECT_EQ(State("Mask/MaskChannelSetup[3]/MaskPoints"), "4");
}

TEST_F(MaskTree, LockToScreenMovesMask)
{
    Connect();
    tree.DoAll("Mask/MaskSettings/CreateMask");
    const KW_Mask mask = MaskOf("Mask/MaskChannelSetup[0]");
    tree.DoAll("Vertical/Channel[0]/Scale = 2");
    EXPECT_EQ(MaskOf("Mask/MaskChannelSetup[0]").upper, mask.upper);
    // From here on it keeps its levels: those of the scale that stands.
    tree.DoAll("Mask/MaskSettings/LockToScreen = OFF");
    EXPECT_EQ(MaskOf("Mask/MaskChannelSetup[0]").frame.levelScale, 2);
    tree.DoAll("Vertical/Channel[0]/Scale = 4; Mask/MaskSettings/LockToScreen = ON");
    EXPECT_EQ(MaskOf("Mask/MaskChannelSetup[0]").upper.front().y, mask.upper.front().y / 2);
    EXPECT_EQ(MaskOf("Mask/MaskChannelSetup[0]").frame.levelScale, 4);
}
