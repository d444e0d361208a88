// SPDX-License-Identifier: MIT
#include "ErrorReport.h"
#include "Reports.h"

#include <gtest/gtest.h>

#include <QtGlobal>
#include <atomic>
#include <limits>
#include <memory>
#include <stdexcept>
#include <thread>

namespace
{
struct t_LogLine
{
    QtMsgType type;
    QString category;
    QString text;
};

std::vector<t_LogLine>* s_log = nullptr;

/** Catches what the default handler logs. */
class ErrorSink : public testing::Test
{
protected:
    ErrorSink()
    {
        s_log = &m_log;
        m_previous = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
                s_log->push_back({type, QString::fromUtf8(context.category), text});
            });
    }
    ~ErrorSink() override
    {
        qInstallMessageHandler(m_previous);
        KW_SetErrorHandler({});
    }

    std::vector<t_LogLine> m_log;
    QtMessageHandler m_previous;
};

void Report(const char* message)
{
    KW_REPORT_ERROR(QString::fromUtf8(message), "unit");
}

TEST_F(ErrorSink, BothArgumentOrdersDeliverTheSameAndTheMacroNamesItsFunctionNotTheSink)
{
    CReports reports;
    const QString message = QStringLiteral("text %1 %n"); // place markers must arrive untouched
    _KW_ProcessErrorString(message, 7, "file", "function", e_KW_MESSAGE_TYPE_WARNING);
    _KW_ProcessErrorString("file", 7, "function", message, e_KW_MESSAGE_TYPE_WARNING);
    Report("text");
    const auto taken = reports.Take();
    ASSERT_EQ(taken.size(), 3u);
    for (const std::size_t i : {0u, 1u})
    {
        EXPECT_EQ(taken[i].message, message);
        EXPECT_EQ(taken[i].line, 7);
        EXPECT_EQ(taken[i].file, QStringLiteral("file"));
        EXPECT_EQ(taken[i].function, QStringLiteral("function"));
        EXPECT_EQ(taken[i].type, e_KW_MESSAGE_TYPE_WARNING);
    }
    EXPECT_TRUE(taken[2].function.contains(QStringLiteral("Report(const char")));
    EXPECT_EQ(taken[2].file, QStringLiteral("unit"));
    EXPECT_GT(taken[2].line, 0);
}

TEST_F(ErrorSink, TheDefaultLogsCategorySeverityAndPlace)
{
    const QString message = QStringLiteral("50%1");
    _KW_ProcessErrorString(message, 12, "unit", "void F()", e_KW_MESSAGE_TYPE_ERROR);
    _KW_ProcessErrorString(message, 12, "unit", nullptr, e_KW_MESSAGE_TYPE_WARNING);
    ASSERT_EQ(m_log.size(), 2u);
    EXPECT_EQ(m_log[0].type, QtCriticalMsg);
    EXPECT_EQ(m_log[0].category, QStringLiteral("kwi.function.zel"));
    EXPECT_EQ(m_log[0].text, QStringLiteral("50%1 (unit:12, void F())"));
    EXPECT_EQ(m_log[1].type, QtWarningMsg);
}

TEST_F(ErrorSink, ThePreviousHandlerComesBackAndAnEmptyOneMeansTheDefault)
{
    int calls = 0;
    EXPECT_FALSE(KW_SetErrorHandler([&](const KW_ErrorReport&) { ++calls; }));
    const KW_ErrorHandler previous = KW_SetErrorHandler({});
    Report("to the log");
    EXPECT_EQ(m_log.size(), 1u);
    EXPECT_EQ(calls, 0);
    KW_SetErrorHandler(previous);
    Report("to the handler");
    EXPECT_EQ(m_log.size(), 1u);
    EXPECT_EQ(calls, 1);
}

TEST_F(ErrorSink, AThrowingHandlerHarmsNeitherTheReporterNorTheReport)
{
    KW_SetErrorHandler([](const KW_ErrorReport&) { throw std::runtime_error("handler"); });
    Report("first");
    Report("second");
    ASSERT_EQ(m_log.size(), 2u);
    EXPECT_TRUE(m_log[1].text.startsWith(QStringLiteral("second")));
}

TEST_F(ErrorSink, AReportFromInsideAHandlerDoesNotRecurse)
{
    int calls = 0;
    KW_SetErrorHandler(
        [&](const KW_ErrorReport&)
        {
            ++calls;
            Report("nested");
        });
    Report("outer");
    EXPECT_EQ(calls, 1);
    ASSERT_EQ(m_log.size(), 1u);
    EXPECT_TRUE(m_log[0].text.startsWith(QStringLiteral("nested")));
}

TEST_F(ErrorSink, AHandlerThatReplacesItselfStaysAliveUntilItReturns)
{
    auto captured = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = captured;
    bool aliveAfterReplacement = false;
    KW_SetErrorHandler(
        [captured, watch, &aliveAfterReplacement](const KW_ErrorReport&)
        {
            KW_SetErrorHandler({});
            aliveAfterReplacement = !watch.expired();
        });
    captured.reset();
    Report("text");
    EXPECT_TRUE(aliveAfterReplacement);
    EXPECT_TRUE(watch.expired());
}

TEST_F(ErrorSink, NoReportIsLostWhileHandlersAreReplaced)
{
    constexpr int kReports = 2000;
    std::atomic<int> received{0};
    const auto count = [&](const KW_ErrorReport&) { ++received; };
    KW_SetErrorHandler(count);
    const auto report = []
    {
        for (int i = 0; i < kReports; ++i)
            Report("text");
    };
    std::thread first(report);
    std::thread second(report);
    for (int i = 0; i < kReports; ++i)
        KW_SetErrorHandler(count);
    first.join();
    second.join();
    EXPECT_EQ(received, 2 * kReports);
}

TEST(ReportText, NumbersReadAsATextStreamPrintsThem)
{
    EXPECT_EQ(KW_ReportText(1e9), QStringLiteral("1e+09"));
    EXPECT_EQ(KW_ReportText(0.2), QStringLiteral("0.2"));
    EXPECT_EQ(KW_ReportText(1234567.0), QStringLiteral("1.23457e+06"));
    EXPECT_EQ(KW_ReportText(std::numeric_limits<double>::infinity()), QStringLiteral("inf"));
    EXPECT_EQ(KW_ReportText(INT32{-1}), QStringLiteral("-1"));
    EXPECT_EQ(KW_ReportText(UINT32{4294967295}), QStringLiteral("4294967295"));
}
} // namespace
