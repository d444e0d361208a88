// SPDX-License-Identifier: MIT
// The side that shows: makes the settings, fetches the records and draws one as text.
#include "IKWFunctionChannel.h"
#include "IKWFunctionControl.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSMScope.h"
#include "IKWFunctionSampleCounter.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "acquire.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace
{
using t_Root = std::shared_ptr<IKWFunctionZEL>;

constexpr std::size_t kColumns = 60;
constexpr int kRows = 16; // two for each division

/** Draws a trace as the screen of the instrument shows it. */
void Draw(const CKWRecord& record, UINT32 place, const t_Root& root)
{
    const auto time = root->GetPgHorizontal();
    const auto channel = root->GetPgVertical()->GetPgChannel()->GetItem(static_cast<INT32>(place));
    const KW_TraceInfo trace = record.GetTrace(place);
    // The screen in points of this record, whatever it was acquired with.
    const double left = (time->GetPrLeft()->Get() - trace.start) / trace.interval;
    const double width = time->GetPrAcquisitionTime()->Get() / trace.interval;
    std::vector<KW_MinMax> columns(kColumns);
    if (!KW_IsAccepted(
            record.GetColumns(place, left, width, columns,
                              time->GetPgSampleCounter()->GetPrInterpolationMode()->Get())))
    {
        return;
    }
    std::vector<std::string> rows(kRows, std::string(kColumns, ' '));
    const double bottom = channel->GetPrBottom()->Get();
    const double height = channel->GetPrRange()->Get() / kRows;
    for (std::size_t i = 0; i < kColumns; ++i)
    {
        for (int row = 0; row < kRows; ++row)
        {
            const double low = bottom + (kRows - 1 - row) * height;
            const bool isHit = columns[i].maximum >= low && columns[i].minimum < low + height;
            rows[static_cast<std::size_t>(row)][i] = isHit ? '#' : ' ';
        }
    }
    for (const std::string& row : rows)
    {
        std::printf("|%s|\n", row.c_str());
    }
    std::printf("C%u  %g V/div  %g s/div  record %llu of %u points\n", place + 1,
                channel->GetPrScale()->Get(), time->GetPrScale()->Get(),
                static_cast<unsigned long long>(record.GetInfo().number), trace.count);
}

/** Waits for three acquisitions, as a display that has other things to do. */
void ShowRun(const t_Root& root, IKWAcquisition& acquisition)
{
    const auto scope = root->GetPgControl()->GetPgSMScope();
    const auto reader = acquisition.GetStream()->MakeReader();
    scope->GetPrSingleCount()->Set(3);
    scope->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_SINGLE);
    CKWRecord shown;
    while (scope->GetPrRunStop()->Get() != eKW_ZEL_RUNSTOP_STATE_STOP)
    {
        reader->Wait(30);
        acquisition.Deliver();
        shown = acquisition.GetShown(*reader);
    }
    Draw(shown, eKW_PLACE_C1, root);
    const auto counter = root->GetPgHorizontal()->GetPgSampleCounter();
    std::printf("%llu acquisitions, %llu nobody fetched\n",
                static_cast<unsigned long long>(counter->GetPrAcquisitions()->Get()),
                static_cast<unsigned long long>(counter->GetPrLostAcquisitions()->Get()));
}
} // namespace

int main()
{
    const t_Root root = GetZELRoot();
    root->GetPgControl()->GetPgSMScope()->GetPrRunStop()->Set(eKW_ZEL_RUNSTOP_STATE_STOP);
    root->GetPgHorizontal()->GetPrScale()->Set(5e-8);
    const auto acquisition = KW_MakeAcquisition(root, 16 << 20);

    std::atomic<bool> isEnd = false;
    std::thread acquiring([&] { Acquire(*acquisition, isEnd); });
    ShowRun(root, *acquisition);
    root->GetPgVertical()->GetPgChannel()->GetItem(0)->GetPrScale()->Set(0.5);
    ShowRun(root, *acquisition);
    isEnd = true;
    acquiring.join();
    return 0;
}
