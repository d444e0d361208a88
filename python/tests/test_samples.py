# SPDX-License-Identifier: MIT
"""Calculations, label lists and streams."""

import pathlib
import threading
import warnings

import numpy
import pytest

import kwifunctionzel as kwi
from kwifunctionzel import enums, helpers, labels, streams

LABELS = pathlib.Path(__file__).resolve().parents[2] / "examples" / "labels"


def test_a_window_is_an_array_and_is_not_copied():
    window = helpers.FFT.window("HANN", 1024)
    assert isinstance(window, numpy.ndarray) and window.shape == (1024,)
    assert not window.flags.owndata
    assert numpy.allclose(window, numpy.hanning(1024), atol=1e-12)
    assert helpers.FFT.window(enums.KW_WINDOW_TYPE.HANN, 8)[0] == window[0]
    with pytest.warns(kwi.Reported):
        assert list(helpers.FFT.window("HANN", 1)) == [1.0]
    with pytest.raises(ValueError):
        helpers.FFT.window("HANN", 2**30)


def test_calculations_take_members_names_and_numbers():
    assert helpers.Horizontal.sample_rate(2) == 5e9
    with pytest.warns(kwi.Reported, match="ZEL mode"):
        assert helpers.Horizontal.sample_rate(99) == 0.0
    with pytest.raises(TypeError):
        helpers.Horizontal.sample_rate(enums.KW_ONOFF.ON)
    with pytest.raises(TypeError):
        helpers.Horizontal.sample_rate("nothing of this name")
    pt100 = enums.KW_PROBE_TYPE(15)
    assert abs(helpers.Common.temperature_to_resistance(pt100, 0.0) - 100.0) < 1e-4
    assert helpers.Vertical.next_higher_scale(0.3) == 0.4
    rate = helpers.DDC.decimation(1e6)
    nco = helpers.DDC.nco_frequency(1e8, rate.total)
    assert abs(helpers.DDC.frequency_shift(nco) - 1e8) < 1.0
    assert helpers.DDC.registers(rate, nco).cic1_rate == rate.cic1 - 1
    assert helpers.DDC.gain(rate, nco).total > 0
    to_db = helpers.FFT.magnitude_db("VOLTAGE", "DBM", 50.0)
    assert abs(to_db(1.0) - 13.0103) < 1e-3
    assert helpers.is_analog_channel("C1") and not helpers.is_analog_channel("D0")
    assert helpers.is_serial_bus_channel("S1") and helpers.is_hardware_input("D0")
    time_base = helpers.Horizontal
    assert time_base.boundaries(1.0, 50, 0.0, 0.0) == (-0.5, 0.5)
    assert time_base.right(-0.5, 1.0) == 0.5
    assert time_base.limited_decimation(2.5) == (2, False)
    assert time_base.limited_decimation(1e10) == (2_000_000_000, True)
    facts = time_base.record_facts(100.0, 0, 1.0, 250.0)
    assert (facts.record_length, facts.trace_length) == (100, 250)
    assert facts.interpolation_factor == 2.5 and facts.is_hardware_interpolation
    assert facts.resolution == 1.0 / 250
    analog, digital = time_base.slow_decimation_and_length(100.0, 5e9, 1.25e9, "SAMPLE", 0, 0)
    assert all(isinstance(factor, int) and factor >= 1 for factor, _ in (analog, digital))
    assert analog[1] == pytest.approx(100.0 * 5e9 / analog[0])
    assert helpers.Vertical.range_between(3.0, -1.0) == 4.0
    assert helpers.Vertical.offset_between(3.0, -1.0) == 1.0


def test_labels_decode_and_pass_through_the_tree(root, tmp_path):
    file = next(LABELS.glob("*.dbc"))
    listed = labels.read(file)
    message = next(one for one in listed.messages if one.signals)
    decoder = labels.Decoder(listed)
    width = int(message.identifier_format)
    decoded = decoder.decode(message.identifier, bytes(message.length), width)
    assert decoded is not None and decoded.name == message.name
    first = decoded.signals[0]
    listed_signal = next(one for one in message.signals if one.name == first.name)
    assert first.raw == 0 and first.value == listed_signal.offset
    assert decoder.decode(0x7FF, memoryview(b""), 11) is None
    settings = root.SerialBus.CANBusSettings.LabelListSettings
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")  # the tree holds no senders and attributes
        listed.put(settings)
        again = labels.from_tree(settings)
    assert [one.name for one in again.messages] == [one.name for one in listed.messages]
    root.undo()
    assert not settings.SerialBusLabelItem
    again.write(str(tmp_path / "again.xml"))
    assert labels.read(tmp_path / "again.xml").messages[0].name == listed.messages[0].name
    (tmp_path / "bad.dbc").write_text("BO_ nonsense", encoding="utf-8")
    with pytest.raises(kwi.Refused) as caught:
        labels.read(tmp_path / "bad.dbc")
    assert "bad.dbc:1:" in caught.value.reports[0]
    with pytest.raises(TypeError):
        listed.put(root.Horizontal)


def test_logs_are_read_frame_by_frame(tmp_path):
    log = tmp_path / "drive.log"
    log.write_text("(1436509052.249713) can0 123#11223344\n(1.5) can0 00000456#\nwhat\n")
    with pytest.warns(kwi.Reported, match="drive.log:3"):
        frames = list(labels.read_log(log))
    assert frames[0] == labels.Frame(1436509052249713000, "can0", 0x123, False, False, False,
                                     False, b"\x11\x22\x33\x44")
    assert frames[1].is_extended and frames[1].payload == b""


def trace(**changes):
    return streams.TraceInfo(**{"channel": "C1", "unit": 28, "interval": 1e-6, "scale": 0.5,
                                "offset": 1.0, **changes})


def test_records_show_their_memory():
    points = numpy.array([0, 2, -32768, 4], numpy.int16)
    record = streams.make_record([trace()], [points])
    samples = record.samples(0)
    assert samples.dtype == numpy.int16 and list(samples) == list(points)
    assert not samples.flags.owndata and not samples.flags.writeable
    assert numpy.shares_memory(samples, record.samples(0))
    values = streams.values(record, 0)
    assert list(values[[0, 1, 3]]) == [1.0, 2.0, 3.0] and numpy.isnan(values[2])
    assert record.trace(0).channel is enums.KW_ZEL_CHANNEL.C1 and record.trace(0).count == 4
    del record
    assert list(samples) == list(points)  # the array keeps it
    for kind, form in ((numpy.float32, streams.SampleFormat.FLOAT),
                       (numpy.uint8, streams.SampleFormat.LINES)):
        one = streams.make_record([trace(format=form)], [numpy.arange(5, dtype=kind)])
        assert one.samples(0).dtype == kind and list(one.samples(0)) == list(range(5))
    pairs = numpy.array([[1, 2], [3, 4]], numpy.int16)
    form = streams.SampleFormat.MINMAX
    assert streams.make_record([trace(format=form)], [pairs]).samples(0).tolist() == pairs.tolist()
    empty = streams.make_record([trace()], [numpy.zeros(0, numpy.int16)])
    assert empty.samples(0).shape == (0,)


def test_records_refuse_what_does_not_fit():
    with pytest.raises(TypeError):
        streams.make_record([trace()], [numpy.zeros(4, numpy.float64)])
    with pytest.raises(TypeError):
        streams.make_record([trace(format=1)], [numpy.zeros(4, numpy.int32)])
    for traces in ([trace(scale=float("nan"))], [trace(), trace()], [trace(format=9)],
                   [trace(format=-1)]):
        with pytest.raises((kwi.Refused, TypeError)):
            streams.make_record(traces, [numpy.zeros(4, numpy.int16)])
    record = streams.make_record([trace()], [numpy.zeros(4, numpy.int16)])
    for call in (record.samples, record.trace, lambda i: record.columns(i, 10)):
        with pytest.raises(IndexError):
            call(1)
    with pytest.raises(kwi.Refused):
        record.lines(0, 4)
    with pytest.raises(kwi.Refused):
        record.columns(0, 4, first=float("nan"))


def test_columns_are_lowest_and_highest():
    points = numpy.arange(1000, dtype=numpy.int16)
    columns = streams.make_record([trace()], [points]).columns(0, 10)
    assert columns.shape == (10, 2) and columns[0][0] == 1.0
    assert columns[9][1] == 999 * 0.5 + 1.0 and (columns[:, 0] <= columns[:, 1]).all()
    lines = streams.make_record([trace(format=3)], [points.astype(numpy.uint8)]).lines(0, 4)
    assert lines.shape == (4, 2) and lines.dtype == numpy.uint8


def test_streams_bring_records_to_readers_that_wait():
    stream = streams.Stream(1 << 20)
    reader, writer = stream.reader(), stream.writer()
    assert reader.latest() is None and not reader.wait(0)
    writer.configure([(streams.SampleFormat.INT16, 1000)], depth=4)
    with pytest.raises(kwi.Refused):
        stream.writer()

    def fill() -> None:
        for i in range(3):
            writer.publish([trace()], [numpy.full(10, i, numpy.int16)], trigger_time=2**62 + i)

    thread = threading.Timer(0.05, fill)
    thread.start()
    assert reader.wait(10)
    thread.join()
    records = [reader.next(), reader.next(), reader.next()]
    assert [one.samples(0)[0] for one in records] == [0, 1, 2]
    assert records[2].trigger_time == 2**62 + 2 and reader.next() is None
    assert reader.latest().number == 3 and reader.history(-1).number == 2
    with pytest.raises(kwi.Refused):
        writer.publish([trace()], [numpy.zeros(2000, numpy.int16)])
    del stream, reader, writer
    assert records[0].samples(0).tolist() == [0] * 10


def test_an_array_of_samples_keeps_its_record_from_the_writer():
    stream = streams.Stream(1 << 20)
    reader, writer = stream.reader(), stream.writer()
    writer.configure([(streams.SampleFormat.INT16, 1000)], depth=1)
    writer.publish([trace()], [numpy.full(1000, 7, numpy.int16)])
    samples = reader.latest().samples(0)
    for i in range(5000):  # more than there is room for
        writer.publish([trace()], [numpy.full(1000, i, numpy.int16)])
    assert (samples == 7).all()
