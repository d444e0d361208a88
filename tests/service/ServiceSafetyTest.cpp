// SPDX-License-Identifier: MIT
// Who gets in, and what a client can reach of this machine.

#include "AccessToken.h"
#include "FilesFolder.h"
#include "HttpGuard.h"
#include "IKWFunctionZEL.h"
#include "KWService.h"
#include "Networks.h"

#include <QFile>
#include <QTemporaryDir>
#include <boost/asio/ip/tcp.hpp>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using boost::asio::ip::make_address;
using boost::asio::ip::tcp;

namespace
{
struct t_Host
{
    const char* network;
    const char* host;
    bool isAllowed;
};

TEST(ServiceSafety, HostOfAnotherNetworkIsAllowed)
{
    constexpr t_Host kHosts[] = {
        {"192.168.1.0/24", "192.168.1.255", true},
        {"192.168.1.0/24", "192.168.2.0", false},
        {"10.0.0.0/9", "10.127.0.1", true},
        {"10.0.0.0/9", "10.128.0.1", false},
        {"10.0.0.0/8", "138.0.0.1", false},
        {"10.1.2.3", "10.1.2.3", true},
        {"10.1.2.3", "10.1.2.2", false},
        {"0.0.0.0/0", "8.8.8.8", true},
        {"0.0.0.0/0", "fd00::1", false},
        {"::/0", "10.0.0.1", false},
        {"fd00:1::/32", "fd00:1:ffff::1", true},
        {"fd00:1::/32", "fd00:2::1", false},
        {"192.168.1.0/24", "::ffff:192.168.1.7", true},
        {"192.168.1.0/24", "127.0.0.1", true},
        {"192.168.1.0/24", "::1", true},
        {"192.168.1.0/24", "::ffff:127.0.0.1", true},
        {"fd00::/8", "::ffff:10.0.0.1", false},
    };
    for (const t_Host& row : kHosts)
    {
        CNetworks networks;
        QString error;
        EXPECT_TRUE(networks.Add({QString::fromLatin1(row.network)}, error)) << error.toStdString();
        EXPECT_EQ(networks.Contains(make_address(row.host)), row.isAllowed)
            << row.host << " in " << row.network;
    }
}

TEST(ServiceSafety, MistakeInANetworkIsTakenForOne)
{
    for (const char* const text :
         {"", "/", "/24", "10.0.0.0/33", "10.0.0.0/-1", "10.0.0.0/", "10.0.0.0/8/8", "10.0.0.1/8",
          "fd00::/129", "fd00::1/64", "10.0.0/8", "example.org", "10.0.0.0/ 8x"})
    {
        CNetworks networks;
        QString error;
        EXPECT_FALSE(networks.Add({QString::fromLatin1(text)}, error)) << text;
        EXPECT_TRUE(error.contains(QString::fromLatin1(text))) << error.toStdString();
        EXPECT_FALSE(networks.Contains(make_address("10.0.0.1"))) << text;
    }
}

class ServiceFiles : public testing::Test
{
protected:
    QString Write(const char* name, const char* text, mode_t mode = 0600) const
    {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        EXPECT_EQ(::chmod(QFile::encodeName(file.fileName()).constData(), mode), 0);
        return file.fileName();
    }

    static bool IsRead(const QString& file)
    {
        QString error;
        const bool isRead = CAccessToken::Read(file, error).has_value();
        EXPECT_EQ(isRead, error.isEmpty()) << error.toStdString();
        EXPECT_TRUE(isRead || error.contains(file));
        return isRead;
    }

    QTemporaryDir m_folder;
};

constexpr char kToken[] = "0123456789abcdef";

TEST_F(ServiceFiles, TokenIsAnOpenSecret)
{
    EXPECT_TRUE(IsRead(Write("token", kToken)));
    EXPECT_TRUE(IsRead(Write("line", "0123456789abcdef\n", 0400)));
    EXPECT_FALSE(IsRead(Write("group", kToken, 0640)));
    EXPECT_FALSE(IsRead(Write("others", kToken, 0602)));
    EXPECT_FALSE(IsRead(Write("short", "0123456789abcde")));
    EXPECT_FALSE(IsRead(Write("empty", "")));
    EXPECT_FALSE(IsRead(Write("blank", "0123456789 abcdef")));
    EXPECT_FALSE(IsRead(Write("lines", "0123456789abcdef\n0123456789abcdef\n")));
    EXPECT_FALSE(IsRead(Write("long", QByteArray(1025, 'x').constData())));
    EXPECT_FALSE(IsRead(m_folder.filePath(QStringLiteral("none"))));
    EXPECT_FALSE(IsRead(m_folder.path()));
    const QString link = m_folder.filePath(QStringLiteral("link"));
    QFile::link(m_folder.filePath(QStringLiteral("token")), link);
    EXPECT_FALSE(IsRead(link));
    if (::geteuid() == 0)
    {
        const QString strange = Write("strange", kToken);
        ASSERT_EQ(::chown(QFile::encodeName(strange).constData(), 65534, 65534), 0);
        EXPECT_FALSE(IsRead(strange));
    }
}

TEST_F(ServiceFiles, WrongTokenIsLetIn)
{
    QString error;
    const auto token = CAccessToken::Read(Write("token", "0123456789abcdef\n"), error);
    ASSERT_TRUE(token) << error.toStdString();
    for (const auto& [shown, status] :
         {std::pair{"Bearer 0123456789abcdef", 200}, std::pair{"bearer 0123456789abcdef", 200},
          std::pair{"Bearer 0123456789abcdeX", 401}, std::pair{"Bearer 0123456789abcde", 401},
          std::pair{"Bearer 0123456789abcdef0", 401}, std::pair{"Bearer ", 401},
          std::pair{"0123456789abcdef", 401}, std::pair{"", 401}})
    {
        EXPECT_EQ(NHttp::Check({"127.0.0.1", "", shown, ""}, &*token), status) << shown;
    }
    for (const auto& [protocols, status] :
         {std::pair{"changes, bearer.MDEyMzQ1Njc4OWFiY2RlZg", 200},
          std::pair{"bearer.MDEyMzQ1Njc4OWFiY2RlWA", 401}, std::pair{"bearer.", 401},
          std::pair{"bearer.0123456789abcdef", 401}, std::pair{"MDEyMzQ1Njc4OWFiY2RlZg", 401},
          std::pair{",;bearer", 401}, std::pair{"changes", 401}})
    {
        EXPECT_EQ(NHttp::Check({"127.0.0.1", "", "", protocols}, &*token), status) << protocols;
    }
}

TEST_F(ServiceFiles, NameLeadsOutOfTheFolder)
{
    const CFilesFolder files(m_folder.path());
    const auto leads = [&](const QString& name, const QString& below = QString())
    {
        QString error;
        const QString path = files.PathOf(name, below, error);
        EXPECT_EQ(path.isEmpty(), !error.isEmpty()) << name.toStdString();
        return !path.isEmpty();
    };
    Write("a.xml", "");
    QFile::link(QStringLiteral("/etc"), m_folder.filePath(QStringLiteral("Out")));
    QFile::link(QStringLiteral("/etc/passwd"), m_folder.filePath(QStringLiteral("p.xml")));
    EXPECT_TRUE(leads(QStringLiteral("a.xml")));
    EXPECT_TRUE(leads(QStringLiteral("new.xml"), QStringLiteral("Masks")));
    EXPECT_FALSE(leads(QStringLiteral("passwd"), QStringLiteral("Out")));
    EXPECT_FALSE(leads(QStringLiteral("p.xml")));
    EXPECT_FALSE(leads(QStringLiteral("Out")));
    for (const char* const name : {"", ".", "..", "../a.xml", "/a.xml", "b/a.xml", "b\\a.xml",
                                   "a..xml", ".token", "a\nb", "a\x7f"})
    {
        EXPECT_FALSE(leads(QString::fromLatin1(name))) << name;
    }
    EXPECT_FALSE(leads(QString(QChar(u'\0'))));
    EXPECT_FALSE(leads(QString(256, u'x')));
    EXPECT_FALSE(leads(QStringLiteral("a.xml"), QStringLiteral("../x")));
}

/** Why a service does not start; empty when it does. */
std::string ErrorOf(KW_ServiceOptions options, const QString& settings = QString())
{
    options.port = 0;
    options.httpPort = 0;
    const auto root = GetZELRoot();
    if (!settings.isEmpty())
    {
        root->SetSettingsFolder(settings);
    }
    const CKWService service(root, options);
    EXPECT_EQ(service.GetPort() == 0, !service.GetError().isEmpty());
    return service.GetError().toStdString();
}

TEST_F(ServiceFiles, ServiceStartsUnsafe)
{
    KW_ServiceOptions options;
    options.addresses = {QStringLiteral("127.0.0.1"), QStringLiteral("0.0.0.0")};
    EXPECT_NE(ErrorOf(options).find("needs the networks"), std::string::npos);
    options.networks = {QStringLiteral("10.0.0.1/8")};
    EXPECT_NE(ErrorOf(options).find("10.0.0.1/8"), std::string::npos);
    options.addresses = {QStringLiteral("localhost")};
    options.networks.clear();
    EXPECT_NE(ErrorOf(options).find("localhost"), std::string::npos);
    options.addresses.clear();
    EXPECT_NE(ErrorOf(options), "");
    options.addresses = {QStringLiteral("127.0.0.2"), QStringLiteral("127.0.0.3")};
    EXPECT_EQ(ErrorOf(options), "");
    options.tokenFile = Write("token", kToken, 0644);
    EXPECT_NE(ErrorOf(options).find("chmod 0600"), std::string::npos);
    options.tokenFile = Write("token", kToken);
    EXPECT_EQ(ErrorOf(options), "");
    EXPECT_NE(ErrorOf(options, m_folder.path()).find("settings folder"), std::string::npos);
}

/** All 127.x addresses lead here, so that one of them can stand for another host's network. */
TEST(ServiceSafety, AllowedHostIsTurnedAway)
{
    KW_ServiceOptions options;
    options.port = 0;
    options.httpPort = 0;
    options.addresses = {QStringLiteral("0.0.0.0")};
    options.networks = {QStringLiteral("192.0.2.0/24")};
    const CKWService service(GetZELRoot(), options);
    tcp::iostream client;
    client.expires_after(std::chrono::seconds(20));
    client.connect(tcp::endpoint(make_address("127.0.0.1"), service.GetPort()));
    client << "*OPC?\n" << std::flush;
    std::string answer;
    std::getline(client, answer);
    EXPECT_EQ(answer, "1");
}
} // namespace
