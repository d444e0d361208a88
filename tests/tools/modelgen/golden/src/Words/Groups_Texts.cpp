// SPDX-License-Identifier: MIT
// Generated from Texts.toml: change the model, not this file.
#include "CommonDatabase/Handles/DbHandles.h"
#include "IKWFunctionTexts.h"
#include "Words/PgTexts.h"

namespace
{
class CFIMTexts final : public CDbGroupHandle<IKWFunctionTexts, CPgTexts>
{
public:
    using CDbGroupHandle::CDbGroupHandle;
    std::shared_ptr<IKWStringProperty> GetPrTitle() const override
    {
        return m_node.GetPrTitle()->GetFIMPointer();
    }
    std::shared_ptr<IKWStringProperty> GetPrPhrase() const override
    {
        return m_node.GetPrPhrase()->GetFIMPointer();
    }
    std::shared_ptr<IKWBitPatternProperty> GetPrPattern() const override
    {
        return m_node.GetPrPattern()->GetFIMPointer();
    }
    std::shared_ptr<IKWFilePathProperty> GetPrFile() const override
    {
        return m_node.GetPrFile()->GetFIMPointer();
    }
};
} // namespace

IKWFunctionTexts::~IKWFunctionTexts() = default;

CPgTexts::CPgTexts()
{
    SetPropertyListSize(4);
    AddPropertyToList(m_pTitle = new CDbPropString, QStringLiteral("Title"));
    m_pTitle->DeclareMaxLength(20);
    m_pTitle->DeclareValueList({QStringLiteral("a \"b\" µ"), QStringLiteral("two")});
    m_pTitle->DbSetDefault(QStringLiteral("a \"b\" µ"));
    SetSaveRecallType(m_pTitle, 1, true);
    AddPropertyToList(m_pPhrase = new CDbPropString, QStringLiteral("Phrase"));
    m_pPhrase->DeclareSecret();
    m_pPhrase->DeclareForm(eTEXTFORM::Passphrase);
    SetSaveRecallType(m_pPhrase, 2, true);
    AddPropertyToList(m_pPattern = new CDbPropBitPattern, QStringLiteral("Pattern"));
    m_pPattern->DeclareLength(8);
    m_pPattern->DeclareFormat(eNUMBERFORMAT_HEX);
    m_pPattern->DbSetDefault(QStringLiteral("01X"));
    SetSaveRecallType(m_pPattern, 1, true);
    AddPropertyToList(m_pFile = new CDbPropFilePath, QStringLiteral("File"));
    m_pFile->DeclareFolder(QStringLiteral("waves"));
    m_pFile->DeclareStem(QStringLiteral("Wave"));
    m_pFile->DeclareOpenExtensions({QStringLiteral("csv"), QStringLiteral("bin")});
    m_pFile->DeclareSaveExtensions({QStringLiteral("csv")});
    SetSaveRecallType(m_pFile, 1, true);
}

CPgTexts::~CPgTexts() = default;

std::unique_ptr<IKWFunctionBase> CPgTexts::CreateFIM()
{
    return std::make_unique<CFIMTexts>(*this);
}

std::shared_ptr<IKWFunctionTexts> CPgTexts::GetFIMPointer()
{
    return FIMPointer<IKWFunctionTexts>();
}

const char* CPgTexts::Meanings()
{
    return "All kinds of texts; the name | pipe is part of this.\0"
           "Title.\0"
           "Phrase.\0"
           "Pattern.\0"
           "File.\0";
}
