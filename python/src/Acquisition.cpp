// SPDX-License-Identifier: MIT
#include "Acquisition.h"

#include <pybind11/stl.h>

#include <cstring>

t_Acquisition::~t_Acquisition()
{
    if (test && !IsEnding())
    {
        acquisition->SetTest(nullptr); // the acquisition may outlive this, its test may not
    }
    LetGoUnlessEnding(acquisition);
}

namespace
{
/** What is to be acquired. */
struct t_Armed : KW_ArmedAcquisition
{
    bool isHistoryShort; ///< the memory holds less than the history is to keep
};

/** None where nothing is to be acquired. */
std::optional<t_Armed> Arm(t_Acquisition& self)
{
    const CInUse acquiring(self.isAcquiring);
    CReports reports;
    const KW_ACCEPTANCE code = Released([&] { return self.acquisition->Arm(); });
    if (code == eKW_ACC_NOTHING_TO_ACT_ON)
    {
        return std::nullopt;
    }
    // A short history is no news to who acquires, thousand times a second.
    CheckCode(KW_IsAccepted(code) ? eKW_ACC_OK : code, reports.Texts());
    return t_Armed{self.acquisition->GetArmed(), code == eKW_ACC_WARNING};
}

/** What a call of Publish gives, checked before anything is taken of it. */
struct t_Given
{
    std::array<std::unique_ptr<CBytes>, eKW_PLACE_COUNT> bytes;
    std::array<std::span<std::byte>, eKW_PLACE_COUNT> room;
    bool isDropped = false;

    t_Given(IKWAcquisition& acquisition, const py::list& samples)
    {
        if (samples.size() > eKW_PLACE_COUNT)
        {
            ThrowRefusal(eKW_ACC_BAD_INDEX);
        }
        for (UINT32 place = 0; place < samples.size(); ++place)
        {
            const py::object given = samples[place];
            if (!given.is_none())
            {
                Take(acquisition, place, given);
            }
        }
    }
    void Take(IKWAcquisition& acquisition, UINT32 place, const py::object& given)
    {
        const KW_TraceInfo& trace = acquisition.GetArmed().traces[place];
        bytes[place] = std::make_unique<CBytes>(given);
        CheckPoints(*bytes[place], trace.format);
        const auto from = bytes[place]->Get();
        if (trace.count == 0)
        {
            ThrowRefusal(eKW_ACC_BAD_INDEX);
        }
        room[place] = acquisition.Reserve(place);
        isDropped |=
            room[place].empty() && !from.empty() && acquisition.GetAdvanced(place) < trace.count;
        if (!isDropped && from.size() > room[place].size())
        {
            ThrowRefusal(eKW_ACC_ABOVE_MAXIMUM);
        }
    }
    void Write(IKWAcquisition& acquisition) const
    {
        for (UINT32 place = 0; place < eKW_PLACE_COUNT; ++place)
        {
            if (bytes[place] != nullptr && !bytes[place]->Get().empty())
            {
                const auto from = bytes[place]->Get();
                std::memcpy(room[place].data(), from.data(), from.size());
                const UINT32 point = KW_GetPointSize(acquisition.GetArmed().traces[place].format);
                acquisition.Advance(place, static_cast<UINT32>(from.size() / point));
            }
        }
    }
};

/** False: the record found no room and was dropped. */
bool Publish(t_Acquisition& self, const py::list& samples, INT64 triggerTime, double shift,
             const std::vector<UINT32>& flags)
{
    const CInUse acquiring(self.isAcquiring);
    // The test runs in this thread, and takes the tree's lock when settings have changed.
    std::optional<CInUse> testing;
    if (self.test)
    {
        testing.emplace(self.test->isTesting);
    }
    KW_AcquiredInfo info;
    info.triggerTime = triggerTime;
    info.shift = shift;
    if (flags.size() > info.flags.size())
    {
        ThrowRefusal(eKW_ACC_BAD_INDEX);
    }
    std::copy(flags.begin(), flags.end(), info.flags.begin());
    const t_Given given(*self.acquisition, samples);
    if (given.isDropped)
    {
        return false;
    }
    CReports reports;
    const KW_ACCEPTANCE code = Released(
        [&]
        {
            given.Write(*self.acquisition);
            return self.acquisition->Publish(info);
        });
    CheckCode(code, reports.Texts());
    return true;
}

void Deliver(t_Acquisition& self)
{
    const CInUse delivering(self.isDelivering);
    CReports reports;
    Released([&] { self.acquisition->Deliver(); });
    CheckCode(eKW_ACC_OK, reports.Texts());
}

void SetTest(t_Acquisition& self, std::shared_ptr<t_MaskRun> test)
{
    const CInUse acquiring(self.isAcquiring);
    self.acquisition->SetTest(test ? test->run.get() : nullptr);
    self.test = std::move(test);
}

std::optional<CKWRecord> Shown(const t_Acquisition& self, t_Reader& reader)
{
    const CInUse reading(reader.isInUse);
    return OrNone(Released([&] { return self.acquisition->GetShown(*reader.reader); }));
}

std::optional<CKWRecord> Reference(const t_Acquisition& self)
{
    return OrNone(Released([&] { return self.acquisition->GetReference(); }));
}

void SetReference(t_Acquisition& self, const CKWRecord& record, UINT32 trace)
{
    CReports reports;
    const auto code = Released([&] { return self.acquisition->SetReference(record, trace); });
    CheckCode(code, reports.Texts());
}

std::unique_ptr<t_Acquisition> Make(py::handle root, UINT64 bytes)
{
    const auto tree = RootOf(root);
    auto made = Released([&] { return KW_MakeAcquisition(tree.Get(), bytes); });
    if (!made)
    {
        throw std::bad_alloc();
    }
    return std::make_unique<t_Acquisition>(std::move(made));
}

std::unique_ptr<t_MaskRun> MakeRun(py::handle root, const t_Acquisition* acquisition)
{
    const auto tree = RootOf(root);
    auto made = Released(
        [&]
        {
            return KW_MakeMaskRun(tree.Get(),
                                  acquisition != nullptr ? acquisition->acquisition : nullptr);
        });
    if (!made)
    {
        throw std::bad_alloc();
    }
    return std::make_unique<t_MaskRun>(std::move(made));
}

int Test(t_MaskRun& self, const CKWRecord& record)
{
    const CInUse testing(self.isTesting);
    return Released([&] { return self.run->Test(record); });
}

KW_MaskEvent DeliverRun(t_MaskRun& self)
{
    const CInUse delivering(self.isDelivering);
    CReports reports;
    const KW_MaskEvent event = Released([&] { return self.run->Deliver(); });
    CheckCode(eKW_ACC_OK, reports.Texts());
    return event;
}

std::vector<KW_PlacedMask> MasksOf(t_MaskRun& self)
{
    const CInUse delivering(self.isDelivering);
    const auto masks = Released([&] { return self.run->GetMasks(); });
    return {masks->channels.begin(), masks->channels.end()};
}

void AddRuns(py::module_& module)
{
    py::class_<KW_MaskEvent>(module, "MaskEvent", "What is to be done because of violations.")
        .def_readonly("action", &KW_MaskEvent::action)
        .def_readonly("violations", &KW_MaskEvent::violations)
        .def_readonly("record", &KW_MaskEvent::record);
    py::class_<KW_PlacedMask>(module, "PlacedMask", "The mask of a channel where it stands now.")
        .def_readonly("mask", &KW_PlacedMask::mask)
        .def_readonly("is_tested", &KW_PlacedMask::isTested)
        .def_readonly("is_visible", &KW_PlacedMask::isVisible);
    py::class_<t_MaskRun, std::shared_ptr<t_MaskRun>>(module, "MaskRun",
                                                      "The mask test of the tree.")
        .def(py::init(&MakeRun), py::arg("root"), py::arg("acquisition") = py::none())
        .def("test", &Test, py::arg("record"))
        .def("deliver", &DeliverRun)
        .def("masks", &MasksOf);
}
} // namespace

void AddAcquisition(py::module_& module)
{
    py::class_<t_Armed>(module, "Armed", "What is to be acquired.")
        .def_property_readonly("traces", [](const t_Armed& armed)
                               { return std::vector(armed.traces.begin(), armed.traces.end()); })
        .def_readonly("block_size", &t_Armed::blockSize)
        .def_readonly("mode", &t_Armed::mode)
        .def_readonly("history_depth", &t_Armed::historyDepth)
        .def_readonly("is_history_short", &t_Armed::isHistoryShort)
        .def_readonly("left", &t_Armed::left)
        .def_readonly("settings_counter", &t_Armed::settingsCounter);
    py::class_<t_Acquisition> acquisition(module, "Acquisition", "A stream that follows the tree.");
    AddRuns(module);
    acquisition
        .def(py::init(&Make), py::arg("root"),
             py::arg("bytes") = static_cast<UINT64>(eKW_STREAM_BYTES))
        .def("arm", &Arm)
        .def("publish", &Publish, py::arg("samples"), py::arg("trigger_time") = 0,
             py::arg("shift") = 0.0, py::arg("flags") = py::tuple())
        .def("set_test", &SetTest, py::arg("test"))
        .def("deliver", &Deliver)
        .def_property_readonly("stream",
                               [](const t_Acquisition& a) { return a.acquisition->GetStream(); })
        .def("shown", &Shown, py::arg("reader"))
        .def_property_readonly("reference", &Reference)
        .def("set_reference", &SetReference, py::arg("record"), py::arg("trace") = 0);
}
