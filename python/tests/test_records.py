# SPDX-License-Identifier: MIT
"""Record files, frames, masks, mathematics, the acquisition that follows the tree, the meter's
catalogue, and label lists built here."""

import gc
import math
import pickle
import threading
import warnings

import numpy
import pytest

import kwifunctionzel as kwi
from kwifunctionzel import enums, labels, masks, mathematics, meter, streams

VOLT = enums.KW_UNIT.VOLT if hasattr(enums.KW_UNIT, "VOLT") else enums.KW_UNIT(28)


def trace(channel="C1", **changes):
    return streams.TraceInfo(**{"channel": channel, "unit": VOLT, "interval": 1e-3, "scale": 0.5,
                                **changes})


def record(*curves):
    return streams.make_record(
        [trace(f"C{i + 1}") for i in range(len(curves))],
        [numpy.array(curve, numpy.int16) for curve in curves], number=7, trigger_time=2**62)


def test_records_pass_through_files_bytes_and_pickle(tmp_path):
    made = record([0, 2, -32768, 4], [1, 2, 3])
    made.write(str(tmp_path / "one.kwr"))
    for again in (streams.read(tmp_path / "one.kwr"), streams.from_bytes(made.to_bytes()),
                  pickle.loads(pickle.dumps(made))):
        assert again.number == 7 and again.trigger_time == 2**62 and len(again) == 2
        assert again.samples(0).tolist() == made.samples(0).tolist()
        assert again.trace(1).channel is enums.KW_ZEL_CHANNEL.C2
    damaged = bytearray(made.to_bytes())
    damaged[-1] ^= 1
    for bad in (damaged, b"", b"something else entirely"):
        with pytest.raises(kwi.Refused) as caught:
            streams.from_bytes(bad)
        assert caught.value.code is kwi.Code.FILE_NOT_UNDERSTOOD and caught.value.reports
    with pytest.raises(kwi.Refused) as caught:
        streams.read(tmp_path / "none.kwr")
    assert "none.kwr" in caught.value.reports[0]


def test_frames_are_arrays_with_named_fields():
    frames = numpy.zeros(2, streams.frame_type())
    frames["time"] = [1e-3, 2e-3]
    frames["identifier"] = 0x123
    frames["flags"] = streams.FrameFlag.FD | streams.FrameFlag.ERROR
    frames["length"] = 3
    frames["bytes"][1, :3] = [1, 2, 3]
    made = streams.make_record([trace(format=streams.SampleFormat.FRAMES)], [frames])
    shown = made.samples(0)
    assert shown.dtype == streams.frame_type() and (shown == frames).all()
    assert not shown.flags.owndata and bytes(shown[1]["bytes"][:3]) == b"\1\2\3"
    assert streams.from_bytes(made.to_bytes()).samples(0)["identifier"].tolist() == [0x123] * 2
    with pytest.raises(TypeError):
        streams.make_record([trace(format=4)], [numpy.zeros(96, numpy.uint8)])
    with pytest.raises(TypeError):
        streams.values(made, 0)


def test_masks_are_made_tested_and_kept(root, tmp_path):
    points = [int(10 * math.sin(i / 5)) for i in range(100)]
    frame = masks.MaskFrame(VOLT, left=0.0, time_scale=0.01, level_scale=2.0)
    mask = masks.around(record(points), 0, frame, 0.1, 0.5)
    assert mask.test(record(points)) is enums.KW_ZEL_LIMIT.INSIDE
    assert mask.violations(record(points)) == []
    points[50] += 8
    points[60] += 8
    outside = record(points)
    assert mask.test(outside).name == "OVERFLOW"
    places = mask.violations(outside)
    assert [(one.first, one.last, one.line.name) for one in places] == [
        (50, 50, "OVERFLOW"), (60, 60, "OVERFLOW")]
    assert places[0].excess > 0
    mask.write(str(tmp_path / "mask.xml"))
    assert masks.read(tmp_path / "mask.xml") == mask
    setup = root.Mask.MaskChannelSetup[0]
    mask.put(setup)
    assert setup.MaskDefined and masks.from_tree(setup) == mask
    root.undo()
    assert not setup.MaskDefined and masks.from_tree(setup).is_empty
    with pytest.raises(TypeError):
        mask.put(root.Horizontal)


def test_masks_are_points():
    mask = masks.Mask([(0, 1), (5, 1, True), (6, 2), (10, 2)], [(0, -1), (10, -1)])
    assert mask.upper[1] == (5.0, 1.0, True) and mask.frame == masks.MaskFrame()
    assert mask.limits(2.5) == (-1.0, 1.0) and mask.limits(5.5) == (-1.0, math.inf)
    assert mask.placed(position=0.5).limits(2.5) == (-0.5, 1.5)
    moved = mask.moved_to(masks.MaskFrame(level_scale=2.0))
    assert moved.limits(2.5) == (-0.5, 0.5) and moved != mask
    for upper in ([(1, 0), (0, 0)], [(math.nan, 0)], [(0, 2e6)]):
        with pytest.raises(kwi.Refused):
            masks.Mask(upper)
    for upper in ([(1,)], [(1, 2, True, 4)], [1.0]):
        with pytest.raises((TypeError, RuntimeError)):
            masks.Mask(upper)
    with pytest.raises(kwi.Refused):
        masks.MaskFrame(time_scale=0.0)


def test_mathematics_computes_curves():
    made = record([2, 4, 6], [2, 2, 0])
    curve = mathematics.compute(made, "(C1 + C2) * 2")
    assert curve.trace(0).channel is enums.KW_ZEL_CHANNEL.M1 and curve.number == 7
    assert curve.samples(0).tolist() == [4.0, 6.0, 6.0]
    assert numpy.isnan(mathematics.compute(made, "C1 / C2").samples(0)[2])
    keeps = mathematics.Mathematics(2)
    keeps.configure(operation="MUL", a="C1", b="C2")
    product = keeps.compute(made)
    assert streams.values(product, 0) == pytest.approx([1.0, 2.0, 0.0], abs=1e-3)
    assert keeps.scale[0] == pytest.approx(product.trace(0).scale * streams.COUNTS_PER_DIVISION)
    with pytest.raises(kwi.Refused) as caught:
        keeps.configure("C1 +")
    assert caught.value.reports[0].startswith("column 5")
    with pytest.raises(kwi.RefusedValue):
        keeps.configure(filter_frequency=-1.0)
    with pytest.raises(kwi.NotFound):
        mathematics.compute(made, "C4 * 2")
    with pytest.raises(ValueError):
        mathematics.Mathematics(0)
    assert mathematics.find_scale(0.0, 8.0)[0] == 1.0
    assert mathematics.find_scale(math.nan, 1.0) is None


def test_expressions_have_sources_units_and_values():
    expression = mathematics.Expression("C1 * R1 - 2.5V")
    assert [one.name for one in expression.sources] == ["C1", "R1"]
    assert expression.evaluate({"C1": 2.0, enums.KW_ZEL_CHANNEL.R1: 3.0}) == 3.5
    assert math.isnan(expression.evaluate({"C1": 2.0}))
    assert mathematics.Expression("C1").unit({"C1": VOLT}) is VOLT
    assert mathematics.Expression(str(expression)).evaluate({"C1": 1.0, "R1": 1.0}) == -1.5
    with pytest.raises(kwi.Refused):
        mathematics.Expression("C1 C2")
    with pytest.raises(KeyError):
        expression.evaluate({"D0": 1.0})


def test_the_acquisition_follows_the_tree_and_is_tested(root):
    acquisition = streams.Acquisition(root, 16 << 20)
    reader = acquisition.stream.reader()
    run = masks.MaskRun(root, acquisition)
    acquisition.set_test(run)
    masks.Mask([(0, 1), (10, 1)], [(0, -1), (10, -1)],
               masks.MaskFrame(VOLT, time_scale=root.Horizontal.Scale,
                               left=-5 * root.Horizontal.Scale)).put(root.Mask.MaskChannelSetup[0])
    root.Mask.Enabled = True
    root.Mask.Start()
    for channel in root.Vertical.Channel[1:]:
        channel.Enabled = False
    armed = acquisition.arm()
    assert armed is not None and armed.traces[0].count > 0 and armed.traces[1].count == 0
    assert not armed.is_history_short
    assert armed.traces[0].scale == pytest.approx(
        root.Vertical.Channel[0].Scale / streams.COUNTS_PER_DIVISION)
    middle = numpy.zeros(armed.traces[0].count, numpy.int16)
    kind = streams.SampleFormat(armed.traces[0].format)
    assert kind is streams.SampleFormat.INT16
    for samples in (middle, middle + int(2 * streams.COUNTS_PER_DIVISION)):
        acquisition.arm()
        assert acquisition.publish([samples], trigger_time=5)
        acquisition.arm()
        assert acquisition.publish([samples], trigger_time=6)
    results = []
    while (one := reader.next()) is not None:
        results.append(streams.MaskResult(one.mask_result).name)
    assert results[-2:] == ["FAILED", "FAILED"] and "PASSED" in results
    acquisition.deliver()
    event = run.deliver()
    assert event.violations == 2 and root.Mask.FailedAcquisitions == 2
    assert run.masks()[0].is_tested and not run.masks()[1].is_tested
    assert acquisition.shown(reader).trigger_time == 6
    with pytest.raises(TypeError):
        acquisition.publish([numpy.zeros(4)])
    with pytest.raises(kwi.Refused):
        acquisition.publish([None, middle])
    with pytest.raises(kwi.Refused):
        acquisition.publish([numpy.zeros(len(middle) + 1, numpy.int16)])
    acquisition.set_reference(acquisition.shown(reader))
    assert acquisition.reference.trace(0).channel is enums.KW_ZEL_CHANNEL.R1


def test_the_mathematics_channel_computes_by_its_settings(root):
    curve = mathematics.MathematicsCurve(root)
    made = record([2, 4, 6], [2, 2, 0])
    root.Mathematics.Enabled = False
    assert curve.compute(made) is None
    root.Mathematics.Enabled = True
    root.Mathematics.Type = "MUL"
    assert curve.has_changed
    shown = curve.compute(made)
    assert streams.values(shown, 0) == pytest.approx([1.0, 2.0, 0.0], abs=1e-3)
    curve.deliver()
    assert root.Mathematics.Scale <= 0.5


def test_arming_beside_a_bracket_waits_and_blocks_nobody(root):
    acquisition = streams.Acquisition(root, 16 << 20)
    stop = threading.Event()

    def acquire() -> None:
        while not stop.is_set():
            armed = acquisition.arm()
            if armed is not None:
                acquisition.publish([numpy.zeros(one.count, numpy.int16) if one.count else None
                                     for one in armed.traces])

    threads = [threading.Thread(target=acquire)]
    threads[0].start()
    for i in range(200):
        with root.transaction("Both"):
            root.Horizontal.Scale = "1 ms/div" if i % 2 else "2 ms/div"
        acquisition.deliver()
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            root.Vertical.Channel[0].Scale = 0.1 + i / 1000
    stop.set()
    threads[0].join(20)
    assert not threads[0].is_alive()


def test_trees_go_with_what_keeps_them():
    with kwi.root() as tree:
        kept = (streams.Acquisition(tree, 8 << 20), mathematics.MathematicsCurve(tree))
        run = masks.MaskRun(tree, kept[0])
        kept[0].set_test(run)
        tree.Horizontal.Scale = 1.0
    with pytest.raises(kwi.Refused):
        streams.Acquisition(tree)
    del kept, run
    gc.collect()
    with kwi.root() as tree:
        assert tree.Horizontal.Scale != 1.0


def test_the_catalogue_tells_ranges():
    catalogue = meter.catalogue()
    voltage = next(one for one in catalogue.values() if one.name == "VOLT:DC")
    assert [one.range for one in voltage.ranges.values()] == [1.0, 10.0, 100.0, 1000.0]
    first = next(iter(voltage.ranges.values()))
    assert first.lower_limit < 0 < first.upper_limit and first.divider == 0.1
    for number in next(iter(catalogue.values())).ranges:
        assert meter.range_of(meter.range_value(number)) is number
    with pytest.warns(kwi.Reported):
        assert meter.range_of(3.0) == -1


def test_lists_are_built_written_and_decode(tmp_path, root):
    gear = labels.LabelSignal("Gear", 0, 4, labels={0: "park", 1: "reverse"}, receivers=["Display"])
    speed = labels.LabelSignal("Speed", 8, 16, factor=0.01, offset=1.0, unit="km/h", maximum=600.0,
                               multiplexor="Gear", selected_by=[(1, 3)], comment="of the road")
    word = labels.LabelSignal("Word", 39, 8, endianness="BIG_ENDIAN", value_type="SIGNED_INT")
    built = labels.LabelList(
        [labels.LabelMessage("Drive", 0x123, 11, 8, [gear, speed, word], cycle_time=0.1,
                             senders=["Engine"])], "Car")
    decoder = labels.Decoder(built)
    decoded = decoder.decode(0x123, b"\x01\x64\x00\x00\xff\0\0\0")
    assert decoded is not None
    assert decoded.value("Speed") == 2.0 and decoded.value("Word") == -1.0
    assert decoded.signals[0].label == "reverse"
    assert decoder.decode(0x123, bytes(8)).signals[0].label == "park"
    with pytest.raises(KeyError):
        decoder.decode(0x123, bytes(8)).value("Speed")
    built.write(str(tmp_path / "car.dbc"))
    again = labels.read(tmp_path / "car.dbc")
    message = again.messages[0]
    assert message.cycle_time == 0.1 and message.senders == ["Engine"]
    assert [(one.name, one.selected_by) for one in message.signals] == [
        ("Gear", []), ("Speed", [(1, 3)]), ("Word", [])]
    assert message.signals[0].labels == {0: "park", 1: "reverse"}
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        built.put(root.SerialBus.CANBusSettings.LabelListSettings)
    items = root.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
    assert [item.Name for item in items.values()] == ["Drive"]
    bad = labels.LabelList([labels.LabelMessage("Drive", 2**11, 11, 8)])
    with pytest.raises(kwi.Refused):
        bad.write(str(tmp_path / "bad.dbc"))
