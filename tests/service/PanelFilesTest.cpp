// SPDX-License-Identifier: MIT
// What a browser gets without showing who it is.

#include "PanelFiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{
TEST(PanelFiles, FileIsMissingOrAnotherOneIsServed)
{
    const CPanelFiles panel{QString()};
    for (const char* const target : {"/", "/?x=1", "/panel.js", "/panel.css", "/LICENCES.txt"})
    {
        EXPECT_TRUE(CPanelFiles::Has(target)) << target;
        const t_PanelAnswer answer = panel.Answer({target, "", ""});
        EXPECT_EQ(answer.status, 200) << target;
        EXPECT_FALSE(answer.body.empty()) << target;
    }
    for (const char* const target : {"", "panel.js", "//", "/panel.js/", "/tree", "/../panel.js",
                                     "/index.html", "/PANEL.JS", "/panel.js%00", "*"})
    {
        EXPECT_FALSE(CPanelFiles::Has(target)) << target;
        EXPECT_EQ(panel.Answer({target, "", ""}).status, 404) << target;
    }
}

TEST(PanelFiles, ZippedOneGoesToWhoCanNotReadIt)
{
    const CPanelFiles panel{QString()};
    const auto isZipped = [&panel](const char* accepted) {
        return panel.Answer({"/panel.js", accepted, ""}).isZipped;
    };
    for (const char* const accepted : {"gzip", "GZip", "br, gzip", "gzip;q=0.5", "deflate , gzip"})
    {
        EXPECT_TRUE(isZipped(accepted)) << accepted;
    }
    for (const char* const accepted : {"", "br", "gzip;q=0", "gzip;q=0.000", "x-gzip", "*", ";;,"})
    {
        EXPECT_FALSE(isZipped(accepted)) << accepted;
    }
    const t_PanelAnswer zipped = panel.Answer({"/panel.js", "gzip", ""});
    EXPECT_EQ(zipped.body.substr(0, 2), "\x1f\x8b");
    EXPECT_NE(zipped.tag, panel.Answer({"/panel.js", "", ""}).tag);
}

TEST(PanelFiles, FileThatABrowserHasIsSentAgain)
{
    const CPanelFiles panel{QString()};
    const std::string tag = panel.Answer({"/", "", ""}).tag;
    for (const std::string& has : {tag, "W/" + tag, "\"x\", " + tag, std::string("*")})
    {
        const t_PanelAnswer answer = panel.Answer({"/", "", has});
        EXPECT_EQ(answer.status, 304) << has;
        EXPECT_EQ(answer.tag, tag);
        EXPECT_TRUE(answer.body.empty());
    }
    EXPECT_EQ(panel.Answer({"/", "", "\"x\""}).status, 200);
    EXPECT_EQ(panel.Answer({"/panel.js", "", tag}).status, 200);
}

TEST(PanelFiles, FolderServesAnOldFileOrALink)
{
    QTemporaryDir folder;
    const auto write = [&folder](const char* name, const char* text)
    {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    const CPanelFiles panel(folder.path());
    const auto body = [&panel](const char* target)
    {
        const t_PanelAnswer answer = panel.Answer({target, "gzip", ""});
        return answer.status == 200 ? answer.body : std::to_string(answer.status);
    };
    EXPECT_EQ(body("/panel.js"), "404");
    write("panel.js", "one");
    EXPECT_EQ(body("/panel.js"), "one");
    write("panel.js", "two");
    EXPECT_EQ(body("/panel.js"), "two");
    write("other.js", "three");
    EXPECT_EQ(body("/other.js"), "404");
    QFile::link(QStringLiteral("/etc/passwd"), folder.filePath(QStringLiteral("panel.css")));
    EXPECT_EQ(body("/panel.css"), "404");
}
} // namespace
