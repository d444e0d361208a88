// SPDX-License-Identifier: MIT
// Generated from Texts.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Nodes/ZELPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropText.h"

class IKWFunctionTexts;

/** All kinds of texts; the name | pipe is part of this. */
class CPgTexts : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionTexts;

    CPgTexts();
    ~CPgTexts() override;

    std::shared_ptr<IKWFunctionTexts> GetFIMPointer();
    const char* GetMeanings() const override { return Meanings(); }
    static const char* Meanings();

    /** Title. Values: "a "b" µ", "two". Default: "a "b" µ". */
    CDbPropString* GetPrTitle() const { return m_pTitle; }
    /** Secret: Phrase. Range: 8 … 63 printable ASCII characters, or 64 hex digits. */
    CDbPropString* GetPrPhrase() const { return m_pPhrase; }
    /** Pattern. Range: at most 8 bits. Default: "01X". */
    CDbPropBitPattern* GetPrPattern() const { return m_pPattern; }
    /** File. Range: extensions csv, bin. */
    CDbPropFilePath* GetPrFile() const { return m_pFile; }

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;

    CDbPropString* m_pTitle;
    CDbPropString* m_pPhrase;
    CDbPropBitPattern* m_pPattern;
    CDbPropFilePath* m_pFile;
};
