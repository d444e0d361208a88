// SPDX-License-Identifier: MIT
#include "labels/ReadLabels.h"

namespace
{
t_ReadLabels Read(const QByteArray& text, bool skipsBadMessages = false)
{
    return ReadLabels(text, eKW_LABEL_FILE_FORMAT_DBC, {skipsBadMessages});
}

TEST(DbcReader, LosesSignalOfMessage)
{
    const auto read = Read("VERSION \"\"\nNS_ :\nBS_:\nBU_: A B\n"
                           "BO_ 100 Engine: 8 A\n"
                           " SG_ Speed : 0|16@1+ (0.25,-10) [0|8000] \"rpm\" B\n"
                           "VAL_ 100 Speed 1 \"one\" ;\n");
    EXPECT_EQ(read.reports.join('\n').toStdString(), "");
    ASSERT_EQ(read.list.messages.size(), 1U);
    const CLabelListMessage& message = read.list.messages[0].message;
    EXPECT_EQ(message.getIdentifier(), 100U);
    const CLabelListSignal& signal = message.getSignals().at("0000Speed");
    EXPECT_EQ(signal.getFactor(), 0.25);
    EXPECT_EQ(signal.getValueType(), eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM);
}
} // namespace
