// SPDX-License-Identifier: MIT
// A tree of its own, served to other processes until it is told to end.

#include "IKWFunctionZEL.h"
#include "KWService.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <csignal>
#include <cstdio>

namespace
{
struct t_Arguments
{
    std::string folder;
    KW_ServiceOptions service;
};

void Declare(CLI::App& app, t_Arguments& arguments)
{
    app.add_option("--port", arguments.service.port, "port of remote control, 0 for any free one")
        ->capture_default_str();
    app.add_option("--settings", arguments.folder,
                   "folder of settings: recalled at the start, saved at the end")
        ->check(CLI::ExistingDirectory);
    app.add_flag("--read-only", arguments.service.readOnly, "clients can change nothing");
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

int Serve(const t_Arguments& arguments, const sigset_t& signals)
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
        const CKWService service(root, arguments.service);
        if (service.GetPort() == 0)
        {
            std::fprintf(stderr, "zelhost: port %d: %s\n", arguments.service.port,
                         service.GetError().toLocal8Bit().constData());
            return 1;
        }
        std::printf("zelhost: 127.0.0.1:%d\n", service.GetPort());
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
    CLI::App app("Holds the instrument's settings and serves them on this machine alone.",
                 "zelhost");
    t_Arguments arguments;
    Declare(app, arguments);
    CLI11_PARSE(app, argc, argv);
    return Serve(arguments, BlockSignals());
}
