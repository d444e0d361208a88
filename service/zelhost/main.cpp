// SPDX-License-Identifier: MIT
// A tree of its own, served to other processes until it is told to end.

#include "Demonstration.h"
#include "IKWFunctionZEL.h"
#include "KWService.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace
{
struct t_Arguments
{
    std::string folder;
    std::vector<std::string> addresses;
    std::vector<std::string> networks;
    std::string tokenFile;
    std::string panel;
    bool isDemonstration = false;
    KW_ServiceOptions service;
};

constexpr char kAbout[] =
    "Holds the instrument's settings and serves them to other programs: by remote control (IEEE "
    "488.2, SCPI-1999 by TCP), and in JSON by HTTP and WebSocket. A browser shows them at the "
    "address of HTTP.\n\n"
    "Serves this machine alone. At other addresses (--listen) remote control needs the networks "
    "that may use it (--allow), as it knows no passwords, and JSON a token (--token-file); without "
    "one it stays on this machine. Nothing is encrypted: put a proxy with TLS or a tunnel in "
    "front. Files that clients name lie in the folder of settings.";

void Declare(CLI::App& app, t_Arguments& arguments)
{
    app.add_option("--port", arguments.service.port, "port of remote control, 0 for any free one")
        ->capture_default_str();
    app.add_option("--http-port", arguments.service.httpPort,
                   "port of JSON by HTTP and WebSocket, 0 for any free one")
        ->capture_default_str();
    app.add_flag("!--no-http", arguments.service.http, "serve remote control alone");
    app.add_option("--listen", arguments.addresses,
                   "address to serve at, 0.0.0.0 or :: for all; may be repeated (127.0.0.1)")
        ->type_name("ADDRESS");
    app.add_option("--allow", arguments.networks,
                   "network whose hosts may use remote control, such as 192.168.1.0/24; may be "
                   "repeated; this machine always may")
        ->type_name("NETWORK");
    app.add_option("--token-file", arguments.tokenFile,
                   "file with the token that clients of HTTP must show: mode 0600, of the user who "
                   "runs this, outside of the folder of settings")
        ->type_name("FILE");
    app.add_option("--settings", arguments.folder,
                   "folder of settings: recalled at the start, saved at the end")
        ->check(CLI::ExistingDirectory);
    app.add_option("--panel", arguments.panel,
                   "folder with the files of the panel, read at each request, instead of those of "
                   "the program")
        ->check(CLI::ExistingDirectory)
        ->type_name("FOLDER");
    app.add_flag("--read-only", arguments.service.readOnly, "clients can change nothing");
    app.add_flag("--demo", arguments.isDemonstration,
                 "acquires made-up signals, so that there is something to draw");
    app.add_option("--connections", arguments.service.connections,
                   "that are open at once; further ones are closed")
        ->check(CLI::Range(1, 65535))
        ->capture_default_str();
}

QStringList ListOf(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
    {
        list.append(QString::fromStdString(text));
    }
    return list;
}

void Complete(t_Arguments& arguments)
{
    if (!arguments.addresses.empty())
    {
        arguments.service.addresses = ListOf(arguments.addresses);
    }
    arguments.service.networks = ListOf(arguments.networks);
    arguments.service.tokenFile = QString::fromStdString(arguments.tokenFile);
    arguments.service.panelFolder = QString::fromStdString(arguments.panel);
}

/** Signals that end it, blocked in all threads. */
sigset_t BlockSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

int Serve(t_Arguments& arguments, const sigset_t& signals)
{
    const auto root = GetZELRoot();
    if (!arguments.folder.empty())
    {
        root->SetSettingsFolder(QString::fromStdString(arguments.folder));
        if (!QDir(root->GetSettingsFolder()).isEmpty())
        {
            static_cast<void>(root->GetPrStartupRecall()->Set()); // what is wrong is reported
        }
    }
    {
        std::optional<CDemonstration> demonstration;
        if (arguments.isDemonstration)
        {
            demonstration.emplace(root);
            arguments.service.acquisition = demonstration->GetAcquisition();
            arguments.service.spectra = demonstration->GetSpectra();
        }
        const CKWService service(root, arguments.service);
        if (service.GetPort() == 0)
        {
            std::fprintf(stderr, "zelhost: %s\n", service.GetError().toLocal8Bit().constData());
            return 1;
        }
        for (const QString& address : arguments.service.addresses)
        {
            std::printf(address.contains(QLatin1Char(':')) ? "zelhost: [%s]:%d\n"
                                                           : "zelhost: %s:%d\n",
                        address.toLatin1().constData(), service.GetPort());
        }
        if (service.GetHttpPort() != 0)
        {
            std::printf("zelhost: http://127.0.0.1:%d\n", service.GetHttpPort());
        }
        std::fflush(stdout);
        int signal = 0;
        sigwait(&signals, &signal);
    }
    const bool isSaved =
        arguments.folder.empty() || KW_IsAccepted(root->GetPrShutdownSave()->Set());
    return isSaved ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
    CLI::App app(kAbout, "zelhost");
    t_Arguments arguments;
    Declare(app, arguments);
    CLI11_PARSE(app, argc, argv);
    Complete(arguments);
    return Serve(arguments, BlockSignals());
}
