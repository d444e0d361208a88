// SPDX-License-Identifier: MIT
#include "RemoteHeaders.h"

#include "KWRemoteNames.h"

namespace
{
bool IsForm(const QByteArray& mnemonic, const QByteArray& word)
{
    QByteArray shortForm;
    for (const char c : mnemonic)
    {
        if (c < 'a' || c > 'z')
        {
            shortForm += c;
        }
    }
    return word == shortForm || word == mnemonic.toUpper();
}

class CHeaderList
{
public:
    void Visit(const IDbGroup& group, const QByteArray& above)
    {
        for (INT32 i = 0; i < group.GetPropertyCount(); ++i)
        {
            const auto property = group.GetProperty(i);
            const bool isResult = property->GetObjectType() == eOBJECTTYPE_RESULT;
            Add(above + WordOf(*property), isResult ? "/qonly/" : "");
        }
        for (INT32 i = 0; i < group.GetActionCount(); ++i)
        {
            Add(above + WordOf(*group.GetAction(i)), "/nquery/");
        }
        for (INT32 i = 0; i < group.GetGroupCount(); ++i)
        {
            VisitChild(*group.GetGroup(i), above);
        }
    }

    QByteArray lines;

private:
    static QByteArray WordOf(const IDbObject& node)
    {
        return KW_GetRemoteNames(node).mnemonic.toLatin1();
    }

    void Add(const QByteArray& header, const char* mark) { lines += header + mark + '\n'; }

    void VisitChild(IDbGroup& child, const QByteArray& above)
    {
        const QByteArray header = above + WordOf(child);
        const IDbContainer* const container = child.AsContainer();
        if (container == nullptr)
        {
            Visit(child, header + ':');
            return;
        }
        Add(header + ":ITEM:COUNt", "/qonly/");
        Add(header + ":ITEM:CATalog", "/qonly/");
        Add(header + ":ITEM:ACTive", "");
        if (container->IsDynamic())
        {
            for (const char* const command : {"INSert", "REMove", "REName", "COPY"})
            {
                Add(header + ":ITEM:" + command, "/nquery/");
            }
        }
        if (const auto item = container->GetItemByPosition(0))
        {
            Visit(*item, header + "<n>:");
        }
    }
};
} // namespace

bool NRemote::IsHeader(const char* header, const std::vector<QByteArray>& words)
{
    const QList<QByteArray> wanted = QByteArray(header).split(':');
    bool isSame = static_cast<std::size_t>(wanted.size()) == words.size();
    for (std::size_t i = 0; isSame && i < words.size(); ++i)
    {
        isSame = IsForm(wanted[static_cast<int>(i)], words[i]);
    }
    return isSame;
}

QByteArray NRemote::ListHeaders(const std::shared_ptr<IDbGroup>& root)
{
    CHeaderList list;
    list.Visit(*root, ":");
    return list.lines;
}
