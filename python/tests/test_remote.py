# SPDX-License-Identifier: MIT
"""A living tree of another process: KWI_ZELHOST names the program that serves it."""

import contextlib
import functools
import io
import math
import os
import pathlib
import re
import signal
import subprocess
import threading
from collections.abc import Iterator

import numpy
import pytest

import kwifunctionzel as kwi
from kwifunctionzel import enums

HOST = os.environ.get("KWI_ZELHOST", "")
pytestmark = pytest.mark.skipif(not os.path.exists(HOST), reason="KWI_ZELHOST names no program")


@pytest.fixture
def port(tmp_path) -> Iterator[int]:
    process = subprocess.Popen([HOST, "--port", "0", "--http-port", "0", "--settings", tmp_path],
                               text=True, stdout=subprocess.PIPE)
    process.stdout.readline()
    yield int(process.stdout.readline().rsplit(":")[-1])
    process.send_signal(signal.SIGTERM)
    assert process.wait(20) == 0
    process.stdout.close()


@pytest.fixture
def living(port) -> Iterator["kwi.tree.ZEL"]:
    with kwi.connect(port=port) as tree:
        yield tree


def test_values_are_those_of_the_service(living, port):
    living.Horizontal.Scale = "2 ms/div"
    assert living.Horizontal.Scale == 2e-3 and isinstance(living.Horizontal.Scale, float)
    living.Vertical.Channel[1].Scale = 0.2
    with kwi.connect(port=port) as other:
        assert [channel.Scale for channel in other.Vertical.Channel] == [1.0, 0.2, 1.0, 1.0]
    living.Trigger.Type = enums.KW_ZEL_TRIGGER_TYPE.RUNT
    assert living.Trigger.Type is enums.KW_ZEL_TRIGGER_TYPE.RUNT
    living.Trigger.Type = int(enums.KW_ZEL_TRIGGER_TYPE.EDGE)
    living.Horizontal.NumberOfAverages = numpy.int64(16)
    living.Horizontal.Position = numpy.float32(0.5)
    assert living.Horizontal.NumberOfAverages == 16 and living.Horizontal.Position == 0.5
    for wrong in (None, [1], b"1"):
        with pytest.raises((TypeError, kwi.Refused)):
            living.Horizontal.Scale = wrong
    living.Vertical.Channel[1].Enabled = False
    assert living.Trigger.Type.name == "EDGE" and not living.Vertical.Channel[1].Enabled
    with pytest.raises(AttributeError):
        living.Horizontal.Scael = 1
    with pytest.raises(KeyError):
        living.node("Vertical/Channel[9]")


def test_a_property_tells_what_one_of_this_process_tells(living, root):
    for path in ("Horizontal/Scale", "Trigger/Type", "Vertical/Channel[1]/Label",
                 "Horizontal/NumberOfAverages", "Vertical/Channel[0]/Enabled",
                 "Horizontal/HardwareRight", "Mask/MaskChannelSetup[0]/MaskLines",
                 "Mask/TestedAcquisitions"):
        own, remote = root.node(path), living.node(path)
        for attribute in ("value", "default", "values", "unit_text", "type_name", "shown", "form",
                          "meaning", "name", "path", "remote_name", "is_valid", "is_secret",
                          "is_result", "availability", "saved_with", "min", "max", "step_size",
                          "user_value"):
            told, wanted = getattr(remote, attribute), getattr(own, attribute)
            same = told == wanted or (isinstance(told, float) and math.isnan(told)
                                      and math.isnan(wanted))
            assert same and type(told) is type(wanted), (path, attribute)
    assert living.Horizontal.couplings() == root.Horizontal.couplings()
    assert list(living.Horizontal.members()) == list(root.Horizontal.members())
    assert living.Vertical.Channel.__doc__ == root.Vertical.Channel.__doc__


def test_refusals_and_warnings_are_the_same(living):
    with pytest.raises(kwi.RefusedValue) as caught:
        living.Horizontal.Scale = 1e99
    assert caught.value.code is kwi.Code.ABOVE_MAXIMUM and caught.value.limits == (1e-9, 500.0)
    assert caught.value.path == "Horizontal/Scale" and caught.value.value == 1e99
    with pytest.raises(kwi.RefusedValue) as caught:
        living.Trigger.Type = "nothing"
    assert enums.KW_ZEL_TRIGGER_TYPE.EDGE in caught.value.values
    with pytest.raises(kwi.Refused) as caught:
        living.Trigger.Type = enums.KW_ONOFF.ON
    assert caught.value.code is kwi.Code.WRONG_KIND
    with pytest.raises(kwi.Refused) as caught:
        living.Mask.Pause()
    assert caught.value.code is kwi.Code.NOTHING_TO_ACT_ON and caught.value.path == "Mask/Pause"
    with pytest.warns(kwi.Limited) as warned:
        living.Horizontal.ReferencePoint = 12.3456789
    assert warned[0].filename == __file__
    for refused in (lambda: living.node("Horizontal/HardwareRight").deliver(1.0),
                    lambda: living.enable_history(False), lambda: living.control_mode):
        with pytest.raises(kwi.Refused) as caught:
            refused()
        assert caught.value.code is kwi.Code.NOT_AVAILABLE


def test_a_transaction_is_one_step_all_or_nothing(living):
    with living.transaction("Slow"):
        living.Horizontal.Scale = 1
        living.Vertical.Channel[0].Scale = 0.5
    assert living.undo_text == "Slow" and living.Horizontal.Scale == 1.0
    living.undo()
    assert living.Horizontal.Scale != 1.0 and living.Vertical.Channel[0].Scale == 1.0
    living.redo()
    with pytest.raises(kwi.RefusedValue) as caught, living.transaction("Bad"):
        living.Horizontal.Scale = 2
        living.Vertical.Channel[0].Scale = 1e99
    assert caught.value.path == "Vertical/Channel[0]/Scale" and living.Horizontal.Scale == 1.0
    with pytest.raises(ZeroDivisionError), living.transaction("Broken"):
        living.Horizontal.Scale = 2
        1 // 0
    assert living.Horizontal.Scale == 1.0 and living.undo_text == "Slow"
    living.preset()
    assert living.Horizontal.Scale == 1e-7
    living.save("one.xml")
    with pytest.raises(kwi.Refused):
        living.save("../one.xml")


def test_containers_are_lists_and_dicts(living):
    items = living.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
    items.insert("Engine").Identifier = 0x123
    items.copy("Engine", "Second")
    items.rename("Second", "Gearbox")
    items.active = "Gearbox"
    assert items.keys() == ["Engine", "Gearbox"] and items.active == "Gearbox"
    assert items["Gearbox"].Identifier == 0x123 and len(items) == 2 and items.is_dynamic
    del items["Engine"]
    assert "Engine" not in items and items.get("Engine") is None
    assert len(living.Vertical.Channel) == 4 and not living.Vertical.Channel.is_dynamic
    assert living.Vertical.Channel[-1].path == "Vertical/Channel[3]"


def test_who_waits_sees_changes_of_others(living, port):
    changes = living.Horizontal.changes()
    assert not changes.has_changed()

    def write() -> None:
        with kwi.connect(port=port) as other:
            other.Horizontal.Scale = 1.0

    thread = threading.Timer(0.2, write)
    thread.start()
    assert changes.wait(20)
    thread.join()
    assert not changes.wait(0.1)


def test_connections_break_as_connections_do(port):
    tree = kwi.connect(port=port)
    tree.close()
    with pytest.raises(kwi.Refused) as caught:
        tree.Horizontal.Scale
    assert caught.value.code is kwi.Code.DETACHED and not tree.is_open
    with pytest.raises(ConnectionError):
        kwi.connect(port=1)


def test_the_guide_prints_what_it_says(port, monkeypatch):
    monkeypatch.setattr(kwi, "connect", functools.partial(kwi.connect, port=port))
    guide = pathlib.Path(__file__).resolve().parents[2] / "docs/guides/use-from-python.md"
    block, = re.findall(r"```py\n(.*?)```", guide.read_text(encoding="utf-8"), re.S)
    printed = io.StringIO()
    with contextlib.redirect_stdout(printed):
        exec(compile(block, str(guide), "exec"), {})
    assert printed.getvalue().splitlines() == re.findall(r"print\(.*  # (.*)", block)
