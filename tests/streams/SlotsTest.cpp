// SPDX-License-Identifier: MIT
// The word of a slot, step by step: what threads do to each other within a few nanoseconds.
#include "Streams/Slots.h"

#include <gtest/gtest.h>

using namespace NStreams;

namespace
{
void Show(t_Slot& slot, UINT64 sequence)
{
    slot.sequence = sequence;
    slot.word.fetch_or(kPublished);
}
} // namespace

TEST(Slots, AreHeldOnlyForTheRecordThatOneCameFor)
{
    const t_MemoryPtr memory(new t_Memory(64));
    t_Slot& slot = memory->slots[0];
    EXPECT_FALSE(Hold(slot, 0)) << "not published";
    Show(slot, 5);
    EXPECT_FALSE(Hold(slot, 4)) << "used again since the reader saw where its record stands";
    EXPECT_EQ(slot.word, kPublished) << "who does not hold it is not counted";
    EXPECT_TRUE(Hold(slot, 5));
    EXPECT_EQ(slot.word, kPublished | 1U);
    LetGo(slot);
}

TEST(Slots, AreTakenBackWhenNobodyHoldsThem)
{
    const t_MemoryPtr memory(new t_Memory(64));
    t_Slot& slot = memory->slots[0];
    EXPECT_FALSE(TakeBack(slot)) << "not published";
    Show(slot, 1);
    ASSERT_TRUE(Hold(slot, 1));
    Share(slot);
    EXPECT_FALSE(TakeBack(slot));
    LetGo(slot);
    EXPECT_FALSE(TakeBack(slot));
    LetGo(slot);
    EXPECT_TRUE(TakeBack(slot));
    slot.word.fetch_add(1); // a reader that comes too late
    Show(slot, 2);
    EXPECT_FALSE(TakeBack(slot));
    LetGo(slot);
    EXPECT_TRUE(TakeBack(slot));
}

TEST(Slots, KeepTheMemoryUntilTheLastHolderGoes)
{
    auto* const memory = new t_Memory(64);
    for (const std::size_t i : {3U, 7U})
    {
        Show(memory->slots[i], 1);
        ASSERT_TRUE(Hold(memory->slots[i], 1));
    }
    Share(memory->slots[7]);
    Close(memory);
    EXPECT_EQ(memory->users, 2U) << "one for each slot that is held";
    LetGo(memory->slots[7]);
    EXPECT_EQ(memory->users, 2U);
    LetGo(memory->slots[3]);
    EXPECT_EQ(memory->users, 1U);
    LetGo(memory->slots[7]); // frees it: the address sanitizer looks at that
}
